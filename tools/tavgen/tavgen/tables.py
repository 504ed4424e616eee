"""Metamodel tables: property rows, the type table, the metaclass slots, the family header."""

from __future__ import annotations

from .common import Common, cstr, handle_header
from .model import UNLIMITED, Metamodel, Prop, Type
from .plan import intf


class TableEmitter(Common):
    def getter(self, t: Type) -> str:
        """The table of the package that declares t."""
        name = f"get_{t.home.package}_PackageIntrospectiveMethods"
        return name if t.home is self.mm else f"::{t.home.namespace}::{name}"

    def desc_name(self, p: Prop) -> str:
        return f"s{p.owner.name}_{p.name}"

    def emit_metaregistry(self, cls: Type) -> None:
        X = intf(cls)
        pk = self.mm.package
        getter = self.getter
        s = [self.banner, f"#include \"{self.kern}/NSMetaRegistry/{pk}MetaSlots.h\"",
             f"#include <{self.root}/NSInterface/{X}.h>", "#include <tav/kernel/util/IntrospectiveMethods.h>",
             f"\nnamespace {self.ns} {{\n", "namespace NSImplementation {\n"]
        for p in cls.props:
            refs = []
            for kind, lst in (("redefined", p.redefines), ("subsetted", p.subsets)):
                if lst:
                    rows = ", ".join(f"{{&{getter(r.target.owner)}, {r.target.owner.index}u, {r.target.id}u}}" for r in lst)
                    s.append(f"static MetaPropertyRef const {self.desc_name(p)}_{kind}[] = {{{rows}}};")
                    refs.append(f"{{{len(lst)}, {self.desc_name(p)}_{kind}}}")
                else:
                    refs.append("{0, nullptr}")
            flags = []
            for f, b in (("readonly", "kReadOnly"), ("derived", "kDerived"), ("union", "kDerivedUnion"),
                         ("composite", "kComposite"), ("ordered", "kOrdered")):
                if f in p.flags:
                    flags.append(f"MetaPropertyDescription::{b}")
            flags.append("MetaPropertyDescription::kUnique")
            if p.multi:
                flags.append("MetaPropertyDescription::kMultiValued")
            docs = ", ".join(cstr(d) for d in p.docs[:5])
            docs = f"{{{docs + ', ' if docs else ''}nullptr}}"
            if p.opposite:
                o = p.opposite.target
                opp = f"{{1, &{getter(o.owner)}, {o.owner.index}u, {o.id}u}}"
            else:
                opp = "{0, nullptr, 0u, 0u}"
            owned = f"{{{cstr(p.end)}}}" if p.end is not None else "{nullptr}"
            s.append(
                f"static MetaPropertyDescription {self.desc_name(p)} = {{\n"
                f"    nullptr, {cstr(p.name)}, &{getter(p.type)}, {p.type.index}u, {docs},\n"
                f"    static_cast<unsigned char>({' | '.join(flags)}),\n"
                f"    {cstr(p.default or '')}, {1 if 'private' in p.flags else 0}, {p.lower}, "
                f"{'0xFFFFFFFFu' if p.upper == UNLIMITED else str(p.upper) + 'u'}, "
                f"{1 if 'transient' in p.flags else 0}, {p.id}u,\n"
                f"    {cstr(p.association) if p.association else 'nullptr'}, {opp}, {owned},\n"
                f"    {refs[0]}, {refs[1]}}};\n")
        rows = ", ".join(["nullptr"] + [f"&{self.desc_name(p)}" for p in cls.props])
        s.append(f"// Entry i is the row with id i.\nstatic MetaPropertyDescription* s{cls.name}_table[{len(cls.props) + 1}] = {{{rows}}};\n")
        sup = ", ".join([f"{{&{getter(b)}, {b.index}u}}" for b in cls.bases] + ["{nullptr, 0u}"])
        s.append(f"static MetaClassRef const s{cls.name}_superClasses[] = {{{sup}}};\n")
        meta = "StereotypeIntf" if cls.stereotype else "ClassIntf"
        s.append(f"// The slot of the metaclass object; null until the meta-registry builds it.\n"
                 f"NSInterface::{meta}** staticGet{cls.name}Meta()\n{{\n"
                 f"    static NSInterface::{meta}* slot = nullptr;\n    return &slot;\n}}\n")
        s.append("} // namespace NSImplementation\n")
        s.append("extern PackageIntrospectiveMethods sPackageIntrospectiveMethods;\n")
        s.append(f"// The reflective functions come with reflection; until then they are null.\n"
                 f"const IntrospectiveMethods NSInterface::{X}::sIntrospectiveMethods = {{\n"
                 f"    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,\n"
                 f"    NSImplementation::s{cls.name}_table, NSImplementation::s{cls.name}_superClasses, nullptr,\n"
                 f"    &sPackageIntrospectiveMethods}};\n")
        s.append(f"}} // namespace {self.ns}\n")
        self.files[f"{self.kern}/NSMetaRegistry/{cls.name}MetaRegistry.cpp"] = "\n".join(s)

    def emit_package_table(self) -> None:
        pk = self.mm.package
        s = [self.banner, f"#include \"{self.kern}/NSMetaRegistry/{pk}MetaSlots.h\""]
        for c in self.classes_with_intf():
            s.append(f"#include <{self.root}/NSInterface/{intf(c)}.h>")
        s.append(f"#include <tav/kernel/util/IntrospectiveMethods.h>\n\nnamespace {self.ns} {{\n")
        s.append("extern TAV_EXPORT PackageIntrospectiveMethods sPackageIntrospectiveMethods;\n")
        slots = []
        for i in range(self.mm.slots):
            t = self.mm.type_at(i)
            if t and t.is_class and not t.handwritten:
                slots.append(f"    const_cast<IntrospectiveMethods*>(&NSInterface::{intf(t)}::sIntrospectiveMethods), // {i}")
            elif t:
                # Types without properties still carry the metaType that the meta-registry sets.
                s.append(f"static MetaPropertyDescription* s{t.name}_noRows[1] = {{nullptr}};\n"
                         f"static MetaClassRef const s{t.name}_noSupers[] = {{{{nullptr, 0u}}}};\n"
                         f"static IntrospectiveMethods s{t.name}_record = {{\n"
                         f"    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,\n"
                         f"    s{t.name}_noRows, s{t.name}_noSupers, nullptr, &sPackageIntrospectiveMethods}};\n")
                slots.append(f"    &s{t.name}_record, // {i} {t.name}")
            else:
                slots.append(f"    nullptr, // {i}")
        s.append(f"// The type table: slot i holds the type with index i.\n"
                 f"static IntrospectiveMethods* s{pk}Types[{self.mm.slots}] = {{\n" + "\n".join(slots) + "\n};\n")
        s.append(f"PackageIntrospectiveMethods sPackageIntrospectiveMethods = {{s{pk}Types, {self.mm.slots}}};\n")
        s.append(f"PackageIntrospectiveMethods* get_{pk}_PackageIntrospectiveMethods()\n{{\n"
                 f"    return &sPackageIntrospectiveMethods;\n}}\n")
        s.append(f"}} // namespace {self.ns}\n")
        self.files[f"{self.kern}/NSMetaRegistry/{pk}PackageMetaRegistry.cpp"] = "\n".join(s)

    def emit_meta_slots_header(self) -> None:
        """The metaclass slots, for the meta-registry that fills them."""
        pk = self.mm.package
        s = [self.banner, "#pragma once\n"] + self.prelude_include() + ["#include <tav/Export.h>\n",
             f"namespace {self.ns} {{\n"]
        if not self.mm.packages:
            s += ["struct PackageIntrospectiveMethods;"]
        s.append(f"TAV_EXPORT PackageIntrospectiveMethods* get_{pk}_PackageIntrospectiveMethods();\n")
        if not self.mm.packages:
            s += ["namespace NSInterface {\nclass ClassIntf;\nclass StereotypeIntf;\n}\n"]
        s.append("namespace NSImplementation {\n")
        for c in self.classes_with_intf():
            meta = "StereotypeIntf" if c.stereotype else "ClassIntf"
            s.append(f"TAV_EXPORT NSInterface::{meta}** staticGet{c.name}Meta();")
        s.append(f"\n}} // namespace NSImplementation\n}} // namespace {self.ns}\n")
        self.files[f"{self.kern}/NSMetaRegistry/{pk}MetaSlots.h"] = "\n".join(s)

    def emit_family_header(self) -> None:
        """One header naming every handle, for users who want the whole family."""
        s = [self.banner, "#pragma once\n"]
        for c in self.mm.classes:
            s.append(f"#include <{self.root}/{handle_header(c)}>")
        self.files[f"export/include/{self.root}/{self.mm.package}Handles.h"] = "\n".join(s) + "\n"
