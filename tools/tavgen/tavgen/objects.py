"""Objects and states: the class-dependent parts over family::ObjectBase and family::StateBase."""

from __future__ import annotations

from .common import Common, handle_header, indent
from .model import Type
from .plan import Op, flags_type, intf, sig_key, value_header


class ObjectEmitter(Common):
    def emit_impl(self, cls: Type) -> None:
        """The object class: the class-independent part is family::ObjectBase; here only the
        direct reads of its fields and the typed views of its state."""
        mm = self.mm
        X, Impl, St = intf(cls), f"{cls.name}Impl", f"{cls.name}DeviantImpl"
        bits = self.P.bits(cls)
        hand = self.P.hand_overrides(cls)
        direct = [(c, op) for c, op in self.all_ops(cls) if op.impl and sig_key(op) not in hand]
        h = [self.banner, "#pragma once\n",
             f"#include \"{self.kern}/NSImplementation/NSDeviant/{St}.h\"",
             "#include <tav/kernel/family/ObjectBase.h>"]
        for t in sorted(self.handle_types_in([op for _, op in direct])):
            h.append(f"#include <{self.R(t)}/{handle_header(mm.by_name[t])}>")
        h.append(f"\nnamespace {self.ns}::NSImplementation {{\n")
        body = [f"~{Impl}() override;", ""]
        for c, op in direct:
            body.append(f"{op.signature()} override\n{{\n    auto const* s = readState(aDeviant);\n"
                        f"{indent(self.fill(op.impl, bits, cls, c, op))}\n}}")
        body.append("")
        for a in self.pair_types(cls):
            body.append(f"NSInterface::{a[1]} const* getReadDeviantI(Deviant aDeviant, NSInterface::{a[0]} const*) const "
                        f"override {{ return readAs<NSInterface::{a[1]}>(aDeviant); }}")
            body.append(f"NSInterface::{a[1]}* getWriteDeviantI(Deviant aDeviant, NSInterface::{a[0]} const*) const "
                        f"override {{ return writeAs<NSInterface::{a[1]}>(aDeviant); }}")
        h.append(f"// The object: identity, count and states of a {cls.name}.\n"
                 f"class TAV_IMPL_EXPORT {Impl} final : public family::ObjectBase<NSInterface::{X}, {St}> {{\npublic:\n"
                 f"{indent(chr(10).join(body))}\n}};\n")
        h.append(f"}} // namespace {self.ns}::NSImplementation\n")
        self.files[f"{self.kern}/NSImplementation/{Impl}.h"] = "\n".join(h)

    def emit_state(self, cls: Type) -> None:
        """The state class: the class-independent part is family::StateBase; here its fields,
        their accessors, the copy between states and the typed views of itself."""
        mm = self.mm
        X, St = intf(cls), f"{cls.name}DeviantImpl"
        bits = self.P.bits(cls)
        nbits = len(bits)
        fields = self.P.fields(cls)
        sops = [(c, op) for c, op in self.all_ops(cls) if op.state]
        h = [self.banner, "#pragma once\n", f"#include \"{self.kern}/NSMetaRegistry/{mm.package}MetaSlots.h\"",
             f"#include <{self.root}/NSInterface/{X}.h>", "#include <tav/kernel/family/StateBase.h>"]
        for hh in sorted({value_header(pl.prop.type) for _, pl in fields if pl.prop.is_value}):
            h.append(f"#include <{hh}>")
        for t in sorted(self.handle_types_in([op for _, op in sops])):
            h.append(f"#include <{self.R(t)}/{handle_header(mm.by_name[t])}>")
        h.append(f"\n#include <cstdint>\n\nnamespace {self.ns}::NSInterface {{")
        own = {t.name: intf(t) for t in mm.classes}
        for n in sorted({pl.field.ctype[:-1] for _, pl in fields if pl.field.ctype.endswith("*")} & set(own.values())):
            h.append(f"class {n};")
        h.append(f"}}\n\nnamespace {self.ns}::NSImplementation {{\n")
        body = [f"static constexpr family::ClassIdentity kIdentity{{\"{mm.package}\", \"{cls.name}\"}};",
                f"static auto metaSlot() {{ return staticGet{cls.name}Meta(); }}", "",
                f"~{St}() override;",
                "void internal_deviationAssign(Deviant aDeviant, NSInterface::ObjectIntf* aSource, Deviant aSourceDeviant) override;",
                ""]
        for c, op in sops:
            used = self.fill(op.state, bits, cls, c, op)
            unnamed = Op(op.name, op.ret, [(t, n if n in used else "") for t, n in op.params], op.const)
            body.append(f"{unnamed.signature()} override {{ "
                        + " ".join(l.strip() for l in used.splitlines()) + " }")
        body.append("")
        for a in self.pair_types(cls):
            body.append(f"NSInterface::{a[1]} const* getReadDeviantI(Deviant, NSInterface::{a[0]} const*) const "
                        f"override {{ return as<NSInterface::{a[1]}>(); }}")
            body.append(f"NSInterface::{a[1]}* getWriteDeviantI(Deviant, NSInterface::{a[0]} const*) const "
                        f"override {{ return asWritable<NSInterface::{a[1]}>(); }}")
        body.append("")
        body.append(f"// Own properties first, then each ancestor's, depth-first.")
        for c, pl in fields:
            f = pl.field
            init = f"{{{f.init}}}" if f.init else ""
            body.append(f"{f.ctype if pl.prop.is_value or f.ctype == 'RawRefList' else 'NSInterface::' + f.ctype} {f.name}{init};")
        if nbits:
            body.append(f"// One bit per optional value: set means has.")
            body.append(f"{flags_type(nbits)} fSetFlags = {self.P.initial_flags(cls):#x};")
        h.append(f"// The values of a {cls.name} in one deviant.\n"
                 f"class TAV_IMPL_EXPORT {St} final : public family::StateBase<NSInterface::{X}, {St}> {{\npublic:\n"
                 f"{indent(chr(10).join(body))}\n}};\n")
        h.append(f"}} // namespace {self.ns}::NSImplementation\n")
        self.files[f"{self.kern}/NSImplementation/NSDeviant/{St}.h"] = "\n".join(h)

        frame = next(a for a in mm.ancestors(cls) if a.frame)
        sparse = self.P.sparse(cls)
        s = [self.banner, f"#include \"{self.kern}/NSImplementation/{cls.name}Impl.h\"",
             f"\nnamespace {self.ns}::NSImplementation {{\n", f"{cls.name}Impl::~{cls.name}Impl() = default;\n"]
        key = f"family::upcast<NSInterface::{intf(frame)}>(static_cast<NSInterface::{X}*>({{}}))"
        erase = "".join(f"    NSInterface::{intf(pl.prop.owner)}::{pl.sparse_map[1]}().erase(key);\n" for pl in sparse)
        if sparse:
            s.append(f"{St}::~{St}()\n{{\n    NSInterface::{intf(frame)} const* key = {key.format('this')};\n{erase}}}\n")
        else:
            s.append(f"{St}::~{St}() = default;\n")
        copies = "".join(f"    {pl.field.name} = source->{pl.field.name};\n" for _, pl in fields)
        if nbits:
            copies += "    fSetFlags = source->fSetFlags;\n"
        sp = ""
        if sparse:
            sp = (f"    NSInterface::{intf(frame)} const* key = {key.format('this')};\n"
                  f"    NSInterface::{intf(frame)} const* sourceKey = {key.format('source')};\n")
            for pl in sparse:
                sp += f"    family::copySparse(NSInterface::{intf(pl.prop.owner)}::{pl.sparse_map[1]}(), sourceKey, key);\n"
        s.append(f"void {St}::internal_deviationAssign(Deviant, NSInterface::ObjectIntf* aSource, Deviant)\n{{\n"
                 f"    if (!Deviant::isRealState(aSource))\n        return;\n"
                 f"    auto* source = static_cast<{St}*>(family::fromCanonical<NSInterface::{X}>(aSource));\n"
                 f"    if (source == this)\n        return;\n{copies}{sp}}}\n")
        s.append(f"}} // namespace {self.ns}::NSImplementation\n")
        # One source per class: the object's and the state's out-of-line parts, which anchor their tables.
        self.files[f"{self.kern}/NSImplementation/{cls.name}Impl_object.cpp"] = "\n".join(s)
