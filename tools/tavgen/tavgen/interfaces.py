"""Interfaces: XIntf, its declarations and its logic, casts and visits."""

from __future__ import annotations

from typing import List

from .common import RUNTIME_VERSION, Common, handle_header
from .model import Type
from .plan import Op, intf, sig_key
from .printer import Printer


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
        every = ops + [o for _, _, o in red]
        p = Printer(X=X, NS=self.ns, V=str(RUNTIME_VERSION))
        p(self.banner)
        p("#pragma once\n")
        p.each(self.prelude_include())
        p.each(f"#include <{self.R(b)}/NSInterface/{intf(b)}.h>" for b in cls.bases)
        p.each(f"#include <{h}>" for h in sorted(self.value_headers_in(every)))
        if not cls.bases:
            p("#include <tav/TAV/NSInterface/ObjectIntf.h>")
        if any(op.sequence for op in every):
            p("#include <tav/kernel/containers/sequence/SequenceFwd.h>")
        p("#include <tav/kernel/family/InterfaceCasts.h>\n#include <tav/kernel/family/Version.h>\n")
        p("#if TAV_FAMILY_RUNTIME_VERSION != $V\n"
          "#error \"generated for version $V of the TAV family runtime: regenerate with this library's tavgen\"\n"
          "#endif\n\nnamespace $NS {\n")
        if not self.mm.packages:
            p("struct IntrospectiveMethods;")
        for n in self.own(self.handle_types_in(every) | {cls.name}):
            p("class Immutable$n;\nclass $n;", n=n)
        if not self.mm.packages:
            p("template <class V>\nclass SparseMap;\nnamespace family {\ntemplate <class T>\nclass SparseSequence;\n}")
        p("\nnamespace NSInterface {\n")
        bases = ", ".join(f"public {intf(b)}" for b in cls.bases)
        direct = ", ".join(intf(b) for b in cls.bases) or "ObjectIntf"
        with p.scope(f"class TAV_EXPORT $X : {bases} {{\npublic:", "};\n"):
            p(f"using BaseInterfaces = family::Bases<{direct}>;\n")
            p("// This metaclass's rows, for reflection and the cross-model check.\n"
              "static const IntrospectiveMethods sIntrospectiveMethods;\n")
            inherited = self.inherited_keys(cls)
            for op in self.accessor_notes(ops):
                p.each([op if isinstance(op, str) else self.intf_decl(op, override=sig_key(op) in inherited)])
            if red:
                p("\n// Reached through more than one base: one name for both.")
                p.each(self.intf_decl(op, override=True) for _, _, op in red)
            sparse = [pl for pl in self.P.props[cls.name] if pl.sparse_map]
            if sparse:
                p("\n// Rarely set, so kept out of the states: keyed by the state.")
                p.each(f"static SparseMap<{v}>& {name}();" for v, name in (pl.sparse_map for pl in sparse))
            p("\nvoid* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;\n"
              "CooperativeVisitor::VisitEntry getVisitMethod(CooperativeVisitor::DispatchTable const& aTable) const override;\n"
              "$cls This(Deviant aDeviant);\nImmutable$cls This(Deviant aDeviant) const;\n", cls=cls.name)
            p.each(self.pair_decls(cls, pure=True, override=False))
        p("} // namespace NSInterface\n} // namespace $NS")
        self.files[f"export/include/{self.root}/NSInterface/{X}.h"] = p.text()

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
        p = Printer(X=X, NS=self.ns, cls=cls.name)
        p(self.banner)
        # Sequence.h: the reflective reads of every class object answer with a sequence.
        p("#include <tav/kernel/family/Support.h>\n#include <tav/kernel/containers/sequence/Sequence.h>")
        if any(q.is_container_slot for q in cls.props):
            p("#include <tav/kernel/family/ModelMembership.h>")
        p(f"#include <{self.root}/NSInterface/$X.h>\n#include <{self.root}/{handle_header(cls)}>")
        viewed = {t for op in ops if op.view_of for t in op.view_of}
        p.each(f"#include <{self.R(t)}/{handle_header(mm.by_name[t])}>"
               for t in sorted(self.handle_types_in(ops) | viewed | {a.name for a in mm.ancestors(cls)}))
        if viewed:
            p("#include <tav/kernel/containers/sequence/views/Views.h>")
        p("\nnamespace $NS::NSInterface {\n")
        for op in ops:
            if op.logic is not None and not op.pure:
                with p.scope(op.signature(X) + "\n{", "}\n"):
                    p.each(op.logic.splitlines())
        for a, first, op in red:
            if op.pure:
                continue
            ret = "" if op.ret == "void" else "return "
            with p.scope(op.signature(X) + "\n{", "}\n"):
                p.each([f"{ret}{intf(first)}::{op.name}({op.call_args()});"])
        for pl in self.P.props[cls.name]:
            if pl.sparse_map:
                v, name = pl.sparse_map
                with p.scope(f"SparseMap<{v}>& $X::{name}()\n{{", "}\n"):
                    p("// Never freed: states may outlive static destruction order.")
                    p.each([f"static auto* map = new SparseMap<{v}>();", "return *map;"])
        # Cast table: the class, then every ancestor once, nearest first, so that a visit
        # finds the closest bound class; each reached along the first path that contains it.
        entries = []
        for a in mm.by_distance(cls):
            expr = self.up_chain(f"static_cast<{X}*>(p)", mm.path_to(cls, a))
            entries.append(f"{{CooperativeVisitor::internal::classInfo<NSInterface::{intf(a)}>(), "
                           f"[](void* p) -> void* {{ return {expr}; }}}}")
        entries.append("{CooperativeVisitor::internal::classInfo<ReferenceCountingIntf>(), "
                       f"[](void* p) -> void* {{ return static_cast<ReferenceCountingIntf*>("
                       f"{self.up_chain(f'static_cast<{X}*>(p)', mm.first_chain(cls))}); }}}}")
        with p.scope("static CooperativeVisitor::internal::ClassMetaInfo const& metaInfo_$cls()\n{", "}\n"):
            with p.scope("static CooperativeVisitor::internal::ClassMetaInfo const info{", "};"):
                p.each(",\n".join(entries).split("\n"))
            p("return info;")
        with p.scope("void* $X::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const\n{", "}\n"):
            p("return metaInfo_$cls().cast(this, aInfo);")
        with p.scope("CooperativeVisitor::VisitEntry $X::getVisitMethod(CooperativeVisitor::DispatchTable const& aTable) const\n{",
                     "}\n"):
            p("return metaInfo_$cls().visit(this, aTable);")
        with p.scope("$cls $X::This(Deviant aDeviant)\n{", "}\n"):
            p("return $cls(this, aDeviant);")
        with p.scope("Immutable$cls $X::This(Deviant aDeviant) const\n{", "}\n"):
            p("return Immutable$cls(this, aDeviant);")
        p("} // namespace $NS::NSInterface")
        self.files[f"{self.kern}/NSImplementation/{cls.name}Impl.cpp"] = p.text()
