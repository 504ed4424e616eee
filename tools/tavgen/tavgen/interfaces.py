"""Interfaces: XIntf, its declarations and its logic, casts and visits."""

from __future__ import annotations

from typing import List

from .common import RUNTIME_VERSION, Common, handle_header, indent
from .model import Type
from .plan import Op, intf, sig_key


class InterfaceEmitter(Common):
    def pair_decls(self, cls: Type, pure: bool, override: bool, ns: str = "") -> List[str]:
        out = []
        for a in [self.mm.by_name[n] for n in self.pair_classes(cls)]:
            A = intf(a)
            ov = " override" if (override or a is not cls) else ""
            p = " = 0" if pure else ""
            r = "ObjectIntf const*" if a.handwritten else f"{A} const*"
            w = "ObjectIntf*" if a.handwritten else f"{A}*"
            v = "" if ov else "virtual "
            out.append(f"{v}{ns}{r} getReadDeviantI(Deviant aDeviant, {ns}{A} const* aAsked) const{ov}{p};")
            out.append(f"{v}{ns}{w} getWriteDeviantI(Deviant aDeviant, {ns}{A} const* aAsked) const{ov}{p};")
        return out

    def redeclared(self, cls: Type):
        """Accessors of ancestors reached through two bases: name lookup needs them here."""
        out = []
        if len(cls.bases) < 2:
            return out
        seen = {sig_key(op) for op in self.P.own_ops(cls)}
        for a in self.mm.ancestors(cls):
            if not self.mm.is_shared_ancestor(cls, a):
                continue
            first = next(b for b in cls.bases if b is a or a in self.mm.ancestors(b))
            for op in self.P.own_ops(a):
                if op.static or sig_key(op) in seen:
                    continue
                seen.add(sig_key(op))
                out.append((a, first, op))
        return out

    def inherited_keys(self, cls: Type) -> set:
        return {sig_key(op) for a in self.mm.ancestors(cls) if not a.handwritten for op in self.P.own_ops(a)}

    def emit_intf(self, cls: Type) -> None:
        X = intf(cls)
        ops = self.P.own_ops(cls)
        red = self.redeclared(cls)
        d = [self.banner, "#pragma once\n"] + self.prelude_include()
        for b in cls.bases:
            d.append(f"#include <{self.R(b)}/NSInterface/{intf(b)}.h>")
        for h in sorted(self.value_headers_in(ops + [o for _, _, o in red])):
            d.append(f"#include <{h}>")
        if not cls.bases:
            d.append("#include <tav/TAV/NSInterface/ObjectIntf.h>")
        d.append("#include <tav/kernel/family/InterfaceCasts.h>")
        d.append("#include <tav/kernel/family/Version.h>\n")
        d.append(f"#if TAV_FAMILY_RUNTIME_VERSION != {RUNTIME_VERSION}\n"
                 f"#error \"generated for version {RUNTIME_VERSION} of the TAV family runtime: regenerate with this library's tavgen\"\n"
                 "#endif")
        d.append(f"\nnamespace {self.ns} {{\n")
        if not self.mm.packages:
            d.append("struct IntrospectiveMethods;")
        hts = self.handle_types_in(ops + [o for _, _, o in red]) | {cls.name}
        for n in self.own(hts):
            d.append(f"class Immutable{n};\nclass {n};")
        if not self.mm.packages:
            d.append("class RawRefList;\ntemplate <class V>\nclass SparseMap;")
        d.append("\nnamespace NSInterface {\n")
        bases = ", ".join(f"public {intf(b)}" for b in cls.bases)
        direct = ", ".join(intf(b) for b in cls.bases) or "ObjectIntf"
        body = [f"using BaseInterfaces = family::Bases<{direct}>;", "",
                "// This metaclass's rows, for reflection and the cross-model check.",
                "static const IntrospectiveMethods sIntrospectiveMethods;", ""]
        inherited = self.inherited_keys(cls)
        for op in self.accessor_notes(ops):
            body.append(op if isinstance(op, str) else self.intf_decl(op, override=sig_key(op) in inherited))
        if red:
            body.append("")
            body.append("// Reached through more than one base: one name for both.")
            for a, first, op in red:
                body.append(self.intf_decl(op, override=True))
        sparse = [pl for pl in self.P.props[cls.name] if pl.sparse_map]
        if sparse:
            body.append("")
            body.append("// Rarely set, so kept out of the states: keyed by the state.")
            for pl in sparse:
                v, name = pl.sparse_map
                body.append(f"static SparseMap<{v}>& {name}();")
        body += ["",
                 "void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;",
                 "CooperativeVisitor::VisitEntry getVisitMethod(CooperativeVisitor::DispatchTable const& aTable) const override;",
                 f"{cls.name} This(Deviant aDeviant);",
                 f"Immutable{cls.name} This(Deviant aDeviant) const;", ""]
        body += self.pair_decls(cls, pure=True, override=False)
        d.append(f"class TAV_EXPORT {X} : {bases} {{\npublic:\n{indent(chr(10).join(body))}\n}};\n")
        d.append(f"}} // namespace NSInterface\n}} // namespace {self.ns}\n")
        self.files[f"export/include/{self.root}/NSInterface/{X}.h"] = "\n".join(d)

    def intf_decl(self, op: Op, override: bool = False) -> str:
        pure = " = 0" if op.pure else ""
        if op.override:
            return f"{op.signature()} override{pure};"
        ov = " override" if override else ""
        return f"virtual {op.signature()}{ov}{pure};"

    def emit_intf_source(self, cls: Type) -> None:
        mm = self.mm
        X = intf(cls)
        ops = self.P.own_ops(cls)
        red = self.redeclared(cls)
        # Sequence.h: the reflective reads of every class object answer with a sequence.
        s = [self.banner, "#include <tav/kernel/family/Support.h>", "#include <tav/kernel/containers/sequence/Sequence.h>",
             f"#include <{self.root}/NSInterface/{X}.h>", f"#include <{self.root}/{handle_header(cls)}>"]
        for t in sorted(self.handle_types_in(ops) | {a.name for a in mm.ancestors(cls)}):
            s.append(f"#include <{self.R(t)}/{handle_header(mm.by_name[t])}>")
        s.append(f"\nnamespace {self.ns}::NSInterface {{\n")
        for op in ops:
            if op.logic is not None and not op.pure:
                s.append(f"{op.signature(X)}\n{{\n{indent(op.logic)}\n}}\n")
        for a, first, op in red:
            if op.pure:
                continue
            ret = "" if op.ret == "void" else "return "
            s.append(f"{op.signature(X)}\n{{\n    {ret}{intf(first)}::{op.name}({op.call_args()});\n}}\n")
        for pl in self.P.props[cls.name]:
            if pl.sparse_map:
                v, name = pl.sparse_map
                s.append(f"SparseMap<{v}>& {X}::{name}()\n{{\n"
                         f"    // Never freed: states may outlive static destruction order.\n"
                         f"    static auto* map = new SparseMap<{v}>();\n    return *map;\n}}\n")
        # Cast table: the class, then every ancestor once, nearest first, so that a visit
        # finds the closest bound class; each reached along the first path that contains it.
        entries = []
        for a in mm.by_distance(cls):
            path = mm.path_to(cls, a)
            expr = self.up_chain(f"static_cast<{X}*>(p)", path)
            A = intf(a)
            entries.append(f"{{CooperativeVisitor::internal::classInfo<{'NSInterface::' + A}>(), "
                           f"[](void* p) -> void* {{ return {expr}; }}}}")
        entries.append("{CooperativeVisitor::internal::classInfo<ReferenceCountingIntf>(), "
                       f"[](void* p) -> void* {{ return static_cast<ReferenceCountingIntf*>("
                       f"{self.up_chain(f'static_cast<{X}*>(p)', mm.first_chain(cls))}); }}}}")
        s.append(f"static CooperativeVisitor::internal::ClassMetaInfo const& metaInfo_{cls.name}()\n{{\n"
                 f"    static CooperativeVisitor::internal::ClassMetaInfo const info{{\n" +
                 ",\n".join("        " + e for e in entries) + "};\n    return info;\n}\n")
        s.append(f"void* {X}::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const\n{{\n"
                 f"    return metaInfo_{cls.name}().cast(this, aInfo);\n}}\n")
        s.append(f"CooperativeVisitor::VisitEntry {X}::getVisitMethod(CooperativeVisitor::DispatchTable const& aTable) const\n{{\n"
                 f"    return metaInfo_{cls.name}().visit(this, aTable);\n}}\n")
        s.append(f"{cls.name} {X}::This(Deviant aDeviant)\n{{\n    return {cls.name}(this, aDeviant);\n}}\n")
        s.append(f"Immutable{cls.name} {X}::This(Deviant aDeviant) const\n{{\n"
                 f"    return Immutable{cls.name}(this, aDeviant);\n}}\n")
        s.append(f"}} // namespace {self.ns}::NSInterface\n")
        self.files[f"{self.kern}/NSImplementation/{cls.name}Impl.cpp"] = "\n".join(s)
