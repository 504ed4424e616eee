"""Objects and states: the class-dependent parts over family::ObjectBase and family::StateBase."""

from __future__ import annotations

from .common import Common, handle_header
from .model import Type
from .plan import Op, flags_type, intf, sig_key, value_header
from .printer import Printer


class ObjectEmitter(Common):
    def printer(self, cls: Type) -> Printer:
        X = intf(cls)
        return Printer(X=X, Impl=f"{cls.name}Impl", St=f"{cls.name}DeviantImpl", NS=self.ns, K=self.kern,
                       cls=cls.name, banner=self.banner.rstrip("\n"))

    def emit_impl(self, cls: Type) -> None:
        """The object class: the class-independent part is family::ObjectBase; here only the
        direct reads of its fields and the typed views of its state."""
        bits = self.P.bits(cls)
        hand = self.P.hand_overrides(cls)
        direct = [(c, op) for c, op in self.all_ops(cls) if op.impl and sig_key(op) not in hand]
        p = self.printer(cls)
        p("$banner\n\n#pragma once\n")
        p('#include "$K/NSImplementation/NSDeviant/$St.h"\n#include <tav/kernel/family/ObjectBase.h>')
        p.each(f"#include <{self.R(t)}/{handle_header(self.mm.by_name[t])}>"
               for t in sorted(self.handle_types_in([op for _, op in direct])))
        p.each(f'#include "{h}"' for _, h in cls.holds)
        p("\nnamespace $NS::NSImplementation {\n")
        p("// The object: identity, count and states of a $cls.")
        p("class TAV_IMPL_EXPORT $Impl final : public family::ObjectBase<NSInterface::$X, $St> {\npublic:")
        p.depth += 1
        p("~$Impl() override;\n")
        for c, op in direct:
            with p.scope(f"{op.signature()} override\n{{", "}"):
                p("auto const* s = readState(aDeviant);").each(self.fill(op.impl, bits, cls, c, op).split("\n"))
        p()
        for asked, answered in self.pair_types(cls):
            p("NSInterface::$A const* getReadDeviantI(Deviant aDeviant, NSInterface::$Q const*) const "
              "override { return readAs<NSInterface::$A>(aDeviant); }", A=answered, Q=asked)
            p("NSInterface::$A* getWriteDeviantI(Deviant aDeviant, NSInterface::$Q const*) const "
              "override { return writeAs<NSInterface::$A>(aDeviant); }", A=answered, Q=asked)
        if cls.holds:
            p("\n// Hand-maintained members of the object; destroyed first, while the object is whole.")
            p.each(f"{decl};" for decl, _ in cls.holds)
        p.depth -= 1
        p("};\n\n} // namespace $NS::NSImplementation")
        self.files[f"{self.kern}/NSImplementation/{cls.name}Impl.h"] = p.text()

    def emit_state(self, cls: Type) -> None:
        """The state class: the class-independent part is family::StateBase; here its fields,
        their accessors, the copy between states and the typed views of itself."""
        mm = self.mm
        bits = self.P.bits(cls)
        fields = self.P.fields(cls)
        sops = [(c, op) for c, op in self.all_ops(cls) if op.state]
        p = self.printer(cls)
        p("$banner\n\n#pragma once\n")
        p('#include "$K/NSMetaRegistry/${pkg}MetaSlots.h"\n#include <$root/NSInterface/$X.h>\n'
          "#include <tav/kernel/family/StateBase.h>", pkg=mm.package, root=self.root)
        p.each(f"#include <{h}>" for h in sorted({value_header(pl.prop.type) for _, pl in fields if pl.prop.is_value}))
        p.each(f"#include <{self.R(t)}/{handle_header(mm.by_name[t])}>"
               for t in sorted(self.handle_types_in([op for _, op in sops])))
        if any(op.sequence is not None for _, op in sops):
            p("#include <tav/kernel/containers/sequence/MultiIndexImpl.h>\n"
              "#include <tav/kernel/containers/sequence/Sequence.h>")
        p("\n#include <cstdint>\n\nnamespace $NS::NSInterface {")
        own = {intf(t) for t in mm.classes}
        p.each(f"class {n};" for n in sorted({pl.field.ctype[:-1] for _, pl in fields if pl.field.ctype.endswith("*")} & own))
        p("}\n\nnamespace $NS::NSImplementation {\n")
        p("// The values of a $cls in one deviant.")
        p("class TAV_IMPL_EXPORT $St final : public family::StateBase<NSInterface::$X, $St> {\npublic:")
        p.depth += 1
        p('static constexpr family::ClassIdentity kIdentity{"$pkg", "$cls"};', pkg=mm.package)
        p("static auto metaSlot() { return staticGet${cls}Meta(); }\n")
        p("$St();\n~$St() override;")
        p("void internal_deviationAssign(Deviant aDeviant, NSInterface::ObjectIntf* aSource, Deviant aSourceDeviant) override;\n")
        for c, op in sops:
            used = self.fill(op.state, bits, cls, c, op)
            unnamed = Op(op.name, op.ret, [(t, n if n in used else "") for t, n in op.params], op.const)
            p.each([f"{unnamed.signature()} override {{ " + " ".join(l.strip() for l in used.splitlines()) + " }"])
        p()
        for asked, answered in self.pair_types(cls):
            p("NSInterface::$A const* getReadDeviantI(Deviant, NSInterface::$Q const*) const "
              "override { return as<NSInterface::$A>(); }", A=answered, Q=asked)
            p("NSInterface::$A* getWriteDeviantI(Deviant, NSInterface::$Q const*) const "
              "override { return asWritable<NSInterface::$A>(); }", A=answered, Q=asked)
        p("\n// Own properties first, then each ancestor's, depth-first.")
        for _, pl in fields:
            f = pl.field
            # References are raw interface pointers; lists hold their storage by value.
            ctype = "NSInterface::" + f.ctype if f.ctype.endswith("*") else f.ctype
            p.each([f"{ctype} {f.name}{{{f.init}}};" if f.init else f"{ctype} {f.name};"])
        if bits:
            p("// One bit per optional value: set means has.")
            p.each([f"{flags_type(len(bits))} fSetFlags = {self.P.initial_flags(cls):#x};"])
        p.depth -= 1
        p("};\n\n} // namespace $NS::NSImplementation")
        self.files[f"{self.kern}/NSImplementation/NSDeviant/{cls.name}DeviantImpl.h"] = p.text()
        self.emit_object_source(cls)

    def emit_object_source(self, cls: Type) -> None:
        """One source per class: the object's and the state's out-of-line parts, which anchor their tables."""
        frame = next(a for a in self.mm.ancestors(cls) if a.frame)
        sparse = self.P.sparse(cls)
        fields = self.P.fields(cls)
        p = self.printer(cls)
        key = f"family::upcast<NSInterface::{intf(frame)}>(static_cast<NSInterface::{intf(cls)}*>({{}}))"
        p("$banner\n\n#include \"$K/NSImplementation/${cls}Impl.h\"\n\nnamespace $NS::NSImplementation {\n")
        p("${cls}Impl::~${cls}Impl() = default;\n")
        p("$St::$St() = default;\n")
        if sparse:
            with p.scope("$St::~$St()\n{", "}\n"):
                p.each([f"NSInterface::{intf(frame)} const* key = {key.format('this')};"])
                p.each(f"NSInterface::{intf(pl.prop.owner)}::{pl.sparse_map[1]}().erase(key);" for pl in sparse)
        else:
            p("$St::~$St() = default;\n")
        with p.scope("void $St::internal_deviationAssign(Deviant, NSInterface::ObjectIntf* aSource, Deviant)\n{", "}\n"):
            p("if (!Deviant::isRealState(aSource))\n    return;")
            p("auto* source = static_cast<$St*>(family::fromCanonical<NSInterface::$X>(aSource));")
            p("if (source == this)\n    return;")
            p.each(f"{pl.field.name} = source->{pl.field.name};" for _, pl in fields)
            if self.P.bits(cls):
                p("fSetFlags = source->fSetFlags;")
            if sparse:
                p.each([f"NSInterface::{intf(frame)} const* key = {key.format('this')};",
                        f"NSInterface::{intf(frame)} const* sourceKey = {key.format('source')};"])
                p.each(f"family::copySparse(NSInterface::{intf(pl.prop.owner)}::{pl.sparse_map[1]}(), sourceKey, key);"
                       for pl in sparse)
        p("} // namespace $NS::NSImplementation")
        self.files[f"{self.kern}/NSImplementation/{cls.name}Impl_object.cpp"] = p.text()
