"""Handles: ImmutableX and X, declarations, inline accessors and out-of-line conversions."""

from __future__ import annotations

from .common import Common, handle_header
from .model import Type
from .plan import Op, himm, hmut, intf, sig_key
from .printer import Printer


def immutable_element(op: Op) -> str:
    """What the immutable handle's sequences show: the immutable handle, or the value itself."""
    E = op.sequence
    return f"Immutable{E}" if E.handle is not None else str(E)


def handle_ret(op: Op, immutable: bool) -> str:
    """A sequence getter reads through ImmutableSequence on the immutable handle."""
    if op.sequence is None:
        return str(op.ret)
    return f"ImmutableSequence<{immutable_element(op)}>" if immutable else f"Sequence<{op.sequence}>"


class HandleEmitter(Common):
    def handle_ops(self, cls: Type):
        """(declaring class, op) pairs of the read and write surfaces. The mutable handle
        answers every sequence getter of the class and its ancestors with a Sequence."""
        def once(pairs):
            # A redefinition is reached through the most derived declaration.
            seen = set()
            return [(c, op) for c, op in pairs if not (sig_key(op) in seen or seen.add(sig_key(op)))]
        read = once((c, op) for c in self.handle_read_classes(cls) if not c.handwritten
                    for op in self.P.own_ops(c) if op.on_handle and not op.mutating)
        write = once((c, op) for c in self.covered_by(cls) if not c.handwritten
                     for op in self.P.own_ops(c) if op.on_handle and (op.mutating or op.sequence))
        return read, write

    def element_intfs(self, ops) -> list:
        """The interfaces of the handles that sequences hold: their typed views need them whole."""
        return sorted({op.sequence.handle.name for op in ops if op.sequence is not None and op.sequence.handle})

    def emit_handle(self, cls: Type) -> None:
        mm = self.mm
        I, M, X = himm(cls), hmut(cls), intf(cls)
        read, write = self.handle_ops(cls)
        every = [op for _, op in read + write]
        chain = mm.first_chain(cls)
        nonchain = [a for a in mm.ancestors(cls) if a not in chain]
        fwd = set(self.handle_types_in(every)) | {a.name for a in mm.ancestors(cls)}
        fwd.discard(cls.name)
        creatable = self.creatable(cls)
        if creatable:
            fwd.add("Model")
        sequences = any(op.sequence is not None for op in every)

        # declaration part
        d = Printer(I=I, M=M, X=X, NS=self.ns)
        d(self.banner)
        d("#pragma once\n")
        d.each(self.prelude_include())
        if cls.bases:
            d(f"#include <{self.R(cls.bases[0])}/detail/{cls.bases[0].name}_hdecl.h>")
        else:
            d("#include <tav/kernel/family/HandleBase.h>")
        d.each(f"#include <{h}>" for h in sorted(self.value_headers_in(every)))
        if sequences:
            d("#include <tav/kernel/containers/sequence/SequenceFwd.h>")
        d("\nnamespace $NS {\n\nnamespace NSInterface {\nclass $X;\n}\n")
        for n in self.own(fwd):
            d("class Immutable$n;\nclass $n;", n=n)
        d()
        base = f"Immutable{cls.bases[0].name}" if cls.bases else "HandleBase"
        with d.scope(f"class TAV_EXPORT $I : public {base} {{\npublic:", "};\n"):
            d("$I() = default;\n$I(NSInterface::$X const* aObject, Deviant aDeviant);")
            if cls.bases:
                d(f"// Any handle, by the cooperative cast: empty if the object is no {cls.name}.")
                d("explicit $I(ImmutableObject const& aOther);")
            d.each(f"operator Immutable{a.name}() const;" for a in nonchain)
            d("NSInterface::$X* internal_intf() const;")
            d("friend bool operator==($I const& a, $I const& b) { return a.internal_sameObject(b); }")
            d.each(op if isinstance(op, str) else self.handle_decl(op, True)
                   for op in self.accessor_notes(op for _, op in read))
        with d.scope("class TAV_EXPORT $M : public $I {\npublic:", "};\n"):
            d("// Marks the mutable handles for the explicit conversions between them.\n"
              "using MutableHandleTag = void;\n$M() = default;\n$M(NSInterface::$X* aObject, Deviant aDeviant);\n"
              "template <class H>\n    requires requires { typename H::MutableHandleTag; }\n"
              "explicit $M(H const& aOther) : $I(static_cast<ImmutableObject const&>(aOther)) {}")
            d.each(f"operator {a.name}() const;" for a in mm.ancestors(cls))
            if cls is mm.by_name.get("Model") and not cls.imported:
                d("// A new model with its root deviant, bound in the model cache under an untitled URI.\n"
                  "static $M create();")
            if creatable:
                d("// A new $M of the model, unparented, with the next index or the one given.\n"
                  "static $M create(Model const& aModel);\n"
                  "static $M createWithId(Model const& aModel, Integer const& aId);")
            d.each(op if isinstance(op, str) else self.handle_decl(op, False)
                   for op in self.accessor_notes(op for _, op in write))
        d("} // namespace $NS")
        self.files[f"export/include/{self.root}/detail/{cls.name}_hdecl.h"] = d.text()

        # inline part
        others = sorted(self.handle_types_in(every) - {cls.name})
        n = Printer(I=I, M=M, X=X, NS=self.ns, root=self.root, cls=cls.name)
        n(self.banner)
        n("#pragma once\n\n#include <$root/detail/${cls}_hdecl.h>\n#include <$root/NSInterface/$X.h>")
        if cls.bases:
            n(f"#include <{self.R(cls.bases[0])}/detail/{cls.bases[0].name}_hinl.h>")
        n.each(f"#include <{self.R(t)}/detail/{t}_hdecl.h>" for t in others)
        n.each(f"#include <{self.R(t)}/NSInterface/{intf(mm.by_name[t])}.h>" for t in self.element_intfs(every))
        if sequences:
            n("#include <tav/kernel/containers/sequence/Sequence.h>")
        n("\nnamespace $NS {\n")
        with n.scope("inline NSInterface::$X* $I::internal_intf() const\n{", "}\n"):
            if cls.bases:
                n(f"return static_cast<NSInterface::$X*>(Immutable{cls.bases[0].name}::internal_intf());")
            else:
                n("return static_cast<NSInterface::$X*>(fObject);")
        src = self.handle_source_name(cls)
        for c, op in read:
            self.handle_def(n, cls, I, c, op, src, immutable=True)
        for c, op in write:
            self.handle_def(n, cls, M, c, op, src, immutable=False)
        n("} // namespace $NS\n")
        # Handles this one hands out are usable at once: their inline bodies come along.
        # Included last, so that a cycle finds this file's definitions already made.
        n.each(f"#include <{self.R(t)}/detail/{t}_hinl.h>" for t in others)
        self.files[f"export/include/{self.root}/detail/{cls.name}_hinl.h"] = n.text()

        h = Printer(root=self.root, cls=cls.name)
        h(self.banner.rstrip("\n"))
        h("#pragma once\n\n#include <$root/detail/${cls}_hdecl.h>\n#include <$root/detail/${cls}_hinl.h>")
        self.files[f"export/include/{self.root}/{handle_header(cls)}"] = h.text()

        # out-of-line part
        s = Printer(I=I, M=M, X=X, NS=self.ns, canon=self.canonical_expr(cls, "p"))
        s(self.banner)
        s(f"#include <{self.root}/{handle_header(cls)}>")
        s.each(f"#include <{self.R(a)}/{handle_header(a)}>" for a in mm.ancestors(cls))
        if creatable:
            s(f'#include "{self.kern}/NSImplementation/{cls.name}Impl.h"\n#include <tav/kernel/family/ModelMembership.h>')
            s.each([f"#include <{self.R(self.mm.by_name['Model'])}/Model_h.h>"])
        s("#include <tav/kernel/visitor/CooperativeVisitor.h>\n\nnamespace $NS {\n")
        with s.scope("$I::$I(NSInterface::$X const* aObject, Deviant aDeviant)\n{", "}\n"):
            with s.scope("if (aObject) {", "}"):
                s("auto* p = const_cast<NSInterface::$X*>(aObject);\nacquire($canon);")
                s("// Several sub-objects may be ${X}s; keep the one the cast names.")
                s("void* exact = p->cast(CooperativeVisitor::internal::classInfo<NSInterface::$X>());")
                with s.scope("if (exact != static_cast<void*>(p)) {", "}"):
                    s("p = static_cast<NSInterface::$X*>(exact);\nreacquire(p ? $canon : nullptr);")
            s("setDeviant(aDeviant);")
        if cls.bases:
            with s.scope("$I::$I(ImmutableObject const& aOther)\n{", "}\n"):
                with s.scope("if (void* r = castFrom(aOther, CooperativeVisitor::internal::classInfo<NSInterface::$X>())) {",
                             "}"):
                    s("auto* p = static_cast<NSInterface::$X*>(r);\nacquire($canon);")
        for a in nonchain:
            with s.scope("$I::operator Immutable$A() const\n{", "}\n", A=a.name):
                s("return Immutable$A(static_cast<ImmutableObject const&>(*this));", A=a.name)
        s("$M::$M(NSInterface::$X* aObject, Deviant aDeviant) : $I(aObject, aDeviant) {}\n")
        for a in mm.ancestors(cls):
            with s.scope("$M::operator $A() const\n{", "}\n", A=a.name):
                s("return $A(*this);", A=a.name)
        if creatable:
            with s.scope("$M $M::create(Model const& aModel)\n{", "}\n"):
                s("return createWithId(aModel, family::nextObjectIndex(aModel));")
            with s.scope("$M $M::createWithId(Model const& aModel, Integer const& aId)\n{", "}\n"):
                s("return family::createObject<NSImplementation::${cls}Impl, $M>(aModel, aId);", cls=cls.name)
        s("} // namespace $NS")
        self.files[f"{self.kern}/NSHandles/{cls.name}_h.cpp"] = s.text()

    def creatable(self, cls: Type) -> bool:
        """Objects of concrete class-object metaclasses are made in a model; a model makes itself."""
        model = self.mm.by_name.get("Model")
        return (cls.concrete and model is not None and cls is not model
                and any(a.frame for a in [cls] + list(self.mm.ancestors(cls))))

    def handle_decl(self, op: Op, immutable: bool) -> str:
        ps = ", ".join(f"{t} {n}" for t, n in op.params[1:])
        return f"{handle_ret(op, immutable)} {op.name}({ps}) const;"

    def handle_def(self, p: Printer, cls: Type, H: str, decl: Type, op: Op, src: str, immutable: bool) -> None:
        ps = ", ".join(f"{t} {n}" for t, n in op.params[1:])
        target = self.up_chain("internal_intf()", self.mm.path_to(cls, decl))
        args = ", ".join(["fDeviant"] + [n for _, n in op.params[1:]])
        ret = handle_ret(op, immutable)
        with p.scope(f"inline {ret} {H}::{op.name}({ps}) const\n{{", "}\n"):
            p.each(["if (!fObject)", f"    nullReference(\"{src}\", __LINE__);"])
            if op.sequence is not None and immutable:
                # Reading needs no upkeep of the opposite end: the plain sequence serves.
                plain = op.name if op.name.endswith("WithoutAssociation") else op.name + "WithoutAssociation"
                p.each([f"Sequence<{op.sequence}> const s = {target}->{plain}(fDeviant);",
                        f"return {ret}(s.internal_pointer(), s.getDeviant());"])
                return
            if op.mutating:
                p("assertWritable();")
            p.each([f"{'' if op.ret == 'void' else 'return '}{target}->{op.name}({args});"])
