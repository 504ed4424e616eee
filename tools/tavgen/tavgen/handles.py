"""Handles: ImmutableX and X, declarations, inline accessors and out-of-line conversions."""

from __future__ import annotations

from .common import Common, handle_header, indent
from .model import Type
from .plan import Op, himm, hmut, intf, sig_key


class HandleEmitter(Common):
    def handle_ops(self, cls: Type):
        """(declaring class, op) pairs of the read and write surfaces."""
        def once(pairs):
            # A redefinition is reached through the most derived declaration.
            seen = set()
            return [(c, op) for c, op in pairs if not (sig_key(op) in seen or seen.add(sig_key(op)))]
        read = once((c, op) for c in self.handle_read_classes(cls) if not c.handwritten
                    for op in self.P.own_ops(c) if op.on_handle and not op.mutating)
        write = once((c, op) for c in self.covered_by(cls) if not c.handwritten
                     for op in self.P.own_ops(c) if op.on_handle and op.mutating)
        return read, write

    def emit_handle(self, cls: Type) -> None:
        mm = self.mm
        I, M, X = himm(cls), hmut(cls), intf(cls)
        read, write = self.handle_ops(cls)
        chain = mm.first_chain(cls)
        nonchain = [a for a in mm.ancestors(cls) if a not in chain]
        fwd = set(self.handle_types_in([op for _, op in read + write])) | {a.name for a in mm.ancestors(cls)}
        fwd.discard(cls.name)
        vheaders = sorted(self.value_headers_in([op for _, op in read + write]))

        # declaration part
        d = [self.banner, "#pragma once\n"] + self.prelude_include()
        if cls.bases:
            d.append(f"#include <{self.R(cls.bases[0])}/detail/{cls.bases[0].name}_hdecl.h>")
        else:
            d.append("#include <tav/kernel/family/HandleBase.h>")
        for h in vheaders:
            d.append(f"#include <{h}>")
        d.append(f"\nnamespace {self.ns} {{\n")
        d.append(f"namespace NSInterface {{\nclass {X};\n}}\n")
        for n in self.own(fwd):
            d.append(f"class Immutable{n};\nclass {n};")
        base = f"Immutable{cls.bases[0].name}" if cls.bases else "HandleBase"
        body = [f"{I}() = default;",
                f"{I}(NSInterface::{X} const* aObject, Deviant aDeviant);"]
        if cls.bases:
            body.append("// Any handle, by the cooperative cast: empty if the object is no " + cls.name + ".")
            body.append(f"explicit {I}(ImmutableObject const& aOther);")
        for a in nonchain:
            body.append(f"operator Immutable{a.name}() const;")
        body.append(f"NSInterface::{X}* internal_intf() const;")
        body.append(f"friend bool operator==({I} const& a, {I} const& b) {{ return a.internal_sameObject(b); }}")
        for op in self.accessor_notes(op for _, op in read):
            body.append(op if isinstance(op, str) else self.handle_decl(op))
        d.append(f"\nclass TAV_EXPORT {I} : public {base} {{\npublic:\n{indent(chr(10).join(body))}\n}};\n")
        body = ["// Marks the mutable handles for the explicit conversions between them.",
                "using MutableHandleTag = void;",
                f"{M}() = default;",
                f"{M}(NSInterface::{X}* aObject, Deviant aDeviant);",
                "template <class H>",
                "    requires requires { typename H::MutableHandleTag; }",
                f"explicit {M}(H const& aOther) : {I}(static_cast<ImmutableObject const&>(aOther)) {{}}"]
        for a in mm.ancestors(cls):
            body.append(f"operator {a.name}() const;")
        for op in self.accessor_notes(op for _, op in write):
            body.append(op if isinstance(op, str) else self.handle_decl(op))
        d.append(f"class TAV_EXPORT {M} : public {I} {{\npublic:\n{indent(chr(10).join(body))}\n}};\n")
        d.append(f"}} // namespace {self.ns}\n")
        self.files[f"export/include/{self.root}/detail/{cls.name}_hdecl.h"] = "\n".join(d)

        # inline part
        n = [self.banner, "#pragma once\n", f"#include <{self.root}/detail/{cls.name}_hdecl.h>",
             f"#include <{self.root}/NSInterface/{X}.h>"]
        if cls.bases:
            n.append(f"#include <{self.R(cls.bases[0])}/detail/{cls.bases[0].name}_hinl.h>")
        for t in sorted(self.handle_types_in([op for _, op in read + write]) - {cls.name}):
            n.append(f"#include <{self.R(t)}/detail/{t}_hdecl.h>")
        n.append(f"\nnamespace {self.ns} {{\n")
        if cls.bases:
            n.append(f"inline NSInterface::{X}* {I}::internal_intf() const\n{{\n"
                     f"    return static_cast<NSInterface::{X}*>(Immutable{cls.bases[0].name}::internal_intf());\n}}\n")
        else:
            n.append(f"inline NSInterface::{X}* {I}::internal_intf() const\n{{\n"
                     f"    return static_cast<NSInterface::{X}*>(fObject);\n}}\n")
        src = self.handle_source_name(cls)
        for c, op in read:
            n.append(self.handle_def(cls, I, c, op, src, False))
        for c, op in write:
            n.append(self.handle_def(cls, M, c, op, src, True))
        n.append(f"}} // namespace {self.ns}\n")
        # Handles this one hands out are usable at once: their inline bodies come along.
        # Included last, so that a cycle finds this file's definitions already made.
        for t in sorted(self.handle_types_in([op for _, op in read + write]) - {cls.name}):
            n.append(f"#include <{self.R(t)}/detail/{t}_hinl.h>")
        self.files[f"export/include/{self.root}/detail/{cls.name}_hinl.h"] = "\n".join(n) + "\n"

        self.files[f"export/include/{self.root}/{handle_header(cls)}"] = (
            f"{self.banner}#pragma once\n\n#include <{self.root}/detail/{cls.name}_hdecl.h>\n"
            f"#include <{self.root}/detail/{cls.name}_hinl.h>\n")

        # out-of-line part
        s = [self.banner, f"#include <{self.root}/{handle_header(cls)}>"]
        for a in mm.ancestors(cls):
            s.append(f"#include <{self.R(a)}/{handle_header(a)}>")
        s.append(f"#include <tav/kernel/visitor/CooperativeVisitor.h>\n\nnamespace {self.ns} {{\n")
        canon = self.canonical_expr(cls, "p")
        s.append(f"{I}::{I}(NSInterface::{X} const* aObject, Deviant aDeviant)\n{{\n"
                 f"    if (aObject) {{\n"
                 f"        auto* p = const_cast<NSInterface::{X}*>(aObject);\n"
                 f"        acquire({canon});\n"
                 f"        // Several sub-objects may be {X}s; keep the one the cast names.\n"
                 f"        void* exact = p->cast(CooperativeVisitor::internal::classInfo<NSInterface::{X}>());\n"
                 f"        if (exact != static_cast<void*>(p)) {{\n"
                 f"            p = static_cast<NSInterface::{X}*>(exact);\n"
                 f"            reacquire(p ? {canon} : nullptr);\n"
                 f"        }}\n"
                 f"    }}\n"
                 f"    setDeviant(aDeviant);\n}}\n")
        if cls.bases:
            s.append(f"{I}::{I}(ImmutableObject const& aOther)\n{{\n"
                     f"    if (void* r = castFrom(aOther, CooperativeVisitor::internal::classInfo<NSInterface::{X}>())) {{\n"
                     f"        auto* p = static_cast<NSInterface::{X}*>(r);\n"
                     f"        acquire({canon});\n"
                     f"    }}\n}}\n")
        for a in nonchain:
            s.append(f"{I}::operator Immutable{a.name}() const\n{{\n"
                     f"    return Immutable{a.name}(static_cast<ImmutableObject const&>(*this));\n}}\n")
        s.append(f"{M}::{M}(NSInterface::{X}* aObject, Deviant aDeviant) : {I}(aObject, aDeviant) {{}}\n")
        for a in mm.ancestors(cls):
            s.append(f"{M}::operator {a.name}() const\n{{\n    return {a.name}(*this);\n}}\n")
        s.append(f"}} // namespace {self.ns}\n")
        self.files[f"{self.kern}/NSHandles/{cls.name}_h.cpp"] = "\n".join(s)

    def handle_decl(self, op: Op) -> str:
        ps = ", ".join(f"{t} {n}" for t, n in op.params[1:])
        return f"{op.ret} {op.name}({ps}) const;"

    def handle_def(self, cls: Type, H: str, decl: Type, op: Op, src: str, mutating: bool) -> str:
        ps = ", ".join(f"{t} {n}" for t, n in op.params[1:])
        target = self.up_chain("internal_intf()", self.mm.path_to(cls, decl))
        args = ", ".join(["fDeviant"] + [n for _, n in op.params[1:]])
        ret = "" if op.ret == "void" else "return "
        w = "    assertWritable();\n" if mutating else ""
        return (f"inline {op.ret} {H}::{op.name}({ps}) const\n{{\n"
                f"    if (!fObject)\n        nullReference(\"{src}\", __LINE__);\n{w}"
                f"    {ret}{target}->{op.name}({args});\n}}\n")
