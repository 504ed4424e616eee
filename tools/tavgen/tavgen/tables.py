"""Metamodel tables: property rows, the type table, the metaclass slots, the family header."""

from __future__ import annotations

from .common import cstr, handle_header
from .model import UNLIMITED, Metamodel, Prop, Type
from .plan import intf
from .printer import Printer
from .reflection import ReflectionEmitter


class TableEmitter(ReflectionEmitter):
    def getter(self, t: Type) -> str:
        """The table of the package that declares t."""
        name = f"get_{t.home.package}_PackageIntrospectiveMethods"
        return name if t.home is self.mm else f"::{t.home.namespace}::{name}"

    def desc_name(self, p: Prop) -> str:
        return f"s{p.owner.name}_{p.name}"

    def row_flags(self, p: Prop) -> str:
        flags = [b for f, b in (("readonly", "kReadOnly"), ("derived", "kDerived"), ("union", "kDerivedUnion"),
                                ("composite", "kComposite"), ("ordered", "kOrdered")) if f in p.flags]
        flags += ["kUnique"] + (["kMultiValued"] if p.multi else [])
        return " | ".join(f"MetaPropertyDescription::{f}" for f in flags)

    def emit_metaregistry(self, cls: Type) -> None:
        getter = self.getter
        p = Printer(X=intf(cls), cls=cls.name, NS=self.ns, K=self.kern, pk=self.mm.package, root=self.root,
                    banner=self.banner.rstrip("\n"), meta="StereotypeIntf" if cls.stereotype else "ClassIntf")
        p("$banner\n")
        p('#include "$K/NSMetaRegistry/${pk}MetaSlots.h"\n#include <$root/NSInterface/$X.h>')
        p.each(self.reflection_includes(cls))
        p("#include <tav/kernel/util/IntrospectiveMethods.h>\n\nnamespace $NS {\n\nnamespace NSImplementation {\n")
        for prop in cls.props:
            refs = []
            for kind, lst in (("redefined", prop.redefines), ("subsetted", prop.subsets)):
                if not lst:
                    refs.append("{0, nullptr}")
                    continue
                rows = ", ".join(f"{{&{getter(r.target.owner)}, {r.target.owner.index}u, {r.target.id}u}}" for r in lst)
                p.each([f"static MetaPropertyRef const {self.desc_name(prop)}_{kind}[] = {{{rows}}};"])
                refs.append(f"{{{len(lst)}, {self.desc_name(prop)}_{kind}}}")
            docs = "".join(cstr(d) + ", " for d in prop.docs[:5])
            o = prop.opposite.target if prop.opposite else None
            opp = f"{{1, &{getter(o.owner)}, {o.owner.index}u, {o.id}u}}" if o else "{0, nullptr, 0u, 0u}"
            upper = "0xFFFFFFFFu" if prop.upper == UNLIMITED else f"{prop.upper}u"
            with p.scope(f"static MetaPropertyDescription {self.desc_name(prop)} = {{", ""):
                p.each([f"nullptr, {cstr(prop.name)}, &{getter(prop.type)}, {prop.type.index}u, {{{docs}nullptr}},",
                        f"static_cast<unsigned char>({self.row_flags(prop)}),",
                        f"{cstr(prop.default or '')}, {int('private' in prop.flags)}, {prop.lower}, {upper}, "
                        f"{int('transient' in prop.flags)}, {prop.id}u,",
                        f"{cstr(prop.association) if prop.association else 'nullptr'}, {opp}, "
                        + (f"{{{cstr(prop.end)}}}" if prop.end is not None else "{nullptr}") + ",",
                        f"{refs[0]}, {refs[1]}}};"])
        rows = ", ".join(["nullptr"] + [f"&{self.desc_name(q)}" for q in cls.props] + ["nullptr"])
        p("// Entry i is the row with id i; a null entry ends the table.")
        p.each([f"static MetaPropertyDescription* s{cls.name}_table[{len(cls.props) + 2}] = {{{rows}}};", ""])
        sup = ", ".join([f"{{&{getter(b)}, {b.index}u}}" for b in cls.bases] + ["{nullptr, 0u}"])
        p.each([f"static MetaClassRef const s{cls.name}_superClasses[] = {{{sup}}};", ""])
        p("// The slot of the metaclass object; null until the meta-registry builds it.")
        with p.scope("NSInterface::$meta** staticGet${cls}Meta()\n{", "}\n"):
            p("static NSInterface::$meta* slot = nullptr;\nreturn &slot;")
        self.emit_reflection(p, cls)
        p("} // namespace NSImplementation\n\nextern PackageIntrospectiveMethods sPackageIntrospectiveMethods;\n")
        with p.scope("const IntrospectiveMethods NSInterface::$X::sIntrospectiveMethods = {", "\n} // namespace $NS"):
            p.each(self.reflection_table(cls).split("\n"))
            p("NSImplementation::s${cls}_table, NSImplementation::s${cls}_superClasses, nullptr,\n"
              "&sPackageIntrospectiveMethods};")
        self.files[f"{self.kern}/NSMetaRegistry/{cls.name}MetaRegistry.cpp"] = p.text()

    def emit_package_table(self) -> None:
        pk, slots = self.mm.package, self.mm.slots
        p = Printer(NS=self.ns, K=self.kern, pk=pk, n=str(slots), banner=self.banner.rstrip("\n"))
        p('$banner\n\n#include "$K/NSMetaRegistry/${pk}MetaSlots.h"')
        p.each(f"#include <{self.root}/NSInterface/{intf(c)}.h>" for c in self.classes_with_intf())
        p("#include <tav/kernel/util/IntrospectiveMethods.h>\n\nnamespace $NS {\n")
        p("extern TAV_EXPORT PackageIntrospectiveMethods sPackageIntrospectiveMethods;\n")
        entries = []
        for i in range(slots):
            t = self.mm.type_at(i)
            if t and t.is_class and not t.handwritten:
                entries.append(f"const_cast<IntrospectiveMethods*>(&NSInterface::{intf(t)}::sIntrospectiveMethods), // {i}")
            elif t:
                # Types without properties still carry the metaType that the meta-registry sets.
                p("static MetaPropertyDescription* s${t}_noRows[2] = {nullptr, nullptr};\n"
                  "static MetaClassRef const s${t}_noSupers[] = {{nullptr, 0u}};", t=t.name)
                with p.scope("static IntrospectiveMethods s${t}_record = {", "", t=t.name):
                    p("nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,\n"
                      "s${t}_noRows, s${t}_noSupers, nullptr, &sPackageIntrospectiveMethods};", t=t.name)
                entries.append(f"&s{t.name}_record, // {i} {t.name}")
            else:
                entries.append(f"nullptr, // {i}")
        p("// The type table: slot i holds the type with index i.")
        with p.scope("static IntrospectiveMethods* s${pk}Types[$n] = {", "};\n"):
            p.each(entries)
        p("PackageIntrospectiveMethods sPackageIntrospectiveMethods = {s${pk}Types, $n};\n")
        with p.scope("PackageIntrospectiveMethods* get_${pk}_PackageIntrospectiveMethods()\n{", "}\n"):
            p("return &sPackageIntrospectiveMethods;")
        p("} // namespace $NS")
        self.files[f"{self.kern}/NSMetaRegistry/{pk}PackageMetaRegistry.cpp"] = p.text()

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
