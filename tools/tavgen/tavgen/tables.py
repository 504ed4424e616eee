"""Metamodel tables: property rows, the type table, the metaclass slots, the family header."""

from __future__ import annotations

from .common import Common, cstr, handle_header
from .model import UNLIMITED, Metamodel, Prop, Type
from .plan import intf, plural
from .printer import Printer


class TableEmitter(Common):
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
        p('#include "$K/NSMetaRegistry/${pk}MetaSlots.h"\n#include <$root/NSInterface/$X.h>\n'
          "#include <tav/kernel/util/IntrospectiveMethods.h>")
        p.each(f"#include <{self.R(t)}/{handle_header(self.mm.by_name[t])}>" for t in self.association_entry_headers(cls))
        p("#include <tav/kernel/containers/sequence/Sequence.h>\n#include <tav/kernel/util/Asserter.h>\n")
        p("namespace $NS {\n\nnamespace NSImplementation {\n")
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
        rows = ", ".join(["nullptr"] + [f"&{self.desc_name(q)}" for q in cls.props])
        p("// Entry i is the row with id i.")
        p.each([f"static MetaPropertyDescription* s{cls.name}_table[{len(cls.props) + 1}] = {{{rows}}};", ""])
        sup = ", ".join([f"{{&{getter(b)}, {b.index}u}}" for b in cls.bases] + ["{nullptr, 0u}"])
        p.each([f"static MetaClassRef const s{cls.name}_superClasses[] = {{{sup}}};", ""])
        p("// The slot of the metaclass object; null until the meta-registry builds it.")
        with p.scope("NSInterface::$meta** staticGet${cls}Meta()\n{", "}\n"):
            p("static NSInterface::$meta* slot = nullptr;\nreturn &slot;")
        p("} // namespace NSImplementation\n\nextern PackageIntrospectiveMethods sPackageIntrospectiveMethods;\n")
        functions = self.emit_association_entries(p, cls)
        p("// The other reflective functions come with reflection; until then they are null.")
        with p.scope("const IntrospectiveMethods NSInterface::$X::sIntrospectiveMethods = {", "\n} // namespace $NS"):
            p.each([functions + ",",
                    f"NSImplementation::s{cls.name}_table, NSImplementation::s{cls.name}_superClasses, nullptr,",
                    "&sPackageIntrospectiveMethods};"])
        self.files[f"{self.kern}/NSMetaRegistry/{cls.name}MetaRegistry.cpp"] = p.text()

    # -- the entries association sequences need, until reflection emits all eight -----------
    def emit_association_entries(self, p: Printer, cls: Type) -> str:
        """Emits the table functions that association sequences call on the far end (writing
        one end of a single-valued property, reading a multi-valued one) and answers the eight
        table entries, null where reflection has not filled them. Reflection's emitter replaces
        this method whole."""
        plans = self.P.props[cls.name]

        def op_of(pl, name):
            return next((op for op in pl.ops if op.name == name), None)
        multi = [(pl, op_of(pl, f"get{plural(pl.prop.upper_name)}"),
                  op_of(pl, f"get{plural(pl.prop.upper_name)}WithoutAssociation"))
                 for pl in plans if op_of(pl, f"get{plural(pl.prop.upper_name)}WithoutAssociation")]
        single = [(pl, op_of(pl, f"setOnly{pl.prop.upper_name}"), op_of(pl, f"removeOnly{pl.prop.upper_name}"))
                  for pl in plans if pl.kind in ("ref", "container_end") and op_of(pl, f"setOnly{pl.prop.upper_name}")]
        if not multi and not single:
            return ", ".join(["nullptr"] * 8)
        dotted = f"{self.mm.package}.{cls.name}"
        src = f"{self.kern}/NSMetaRegistry/{cls.name}MetaRegistry"
        c = cls.name
        entries = ["nullptr"] * 8
        p("namespace {\n")
        with p.scope("NSInterface::$X* self_$cls(NSInterface::ClassObjectIntf const* aObject)\n{", "}\n"):
            p("void* self = aObject ? aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::$X>()) : nullptr;")
            p(f'if (!self)\n    ::TAV::Asserter::MakeAlways<::TAV::Exception>("illegal object").handle("{src}", __LINE__, "");')
            p("return static_cast<NSInterface::$X*>(self);")
        with p.scope("[[noreturn]] void illegal_$cls(char const* aFunction, unsigned aId)\n{", "}\n"):
            p(f'if (aId == 0)\n    ::TAV::Asserter::MakeAlways<::TAV::Exception>("{dotted}::%s on illegal property", aFunction)'
              f'.handle("{src}", __LINE__, "");')
            p(f'::TAV::Asserter::MakeAlways<::TAV::Exception>("{dotted}::%s on illegal property with id %d", aFunction, int(aId))'
              f'.handle("{src}", __LINE__, "");\n__builtin_unreachable();')

        def function(name, params, cases, slot, returns=False):
            with p.scope(f"{'::TAV::Generic::SequencePtr' if returns else 'void'} {name}_$cls(NSInterface::ClassObjectIntf* "
                         f"aObject, Deviant aDeviant, unsigned aId{params})\n{{", "}\n"):
                p("auto* self = self_$cls(aObject);")
                with p.scope("switch (aId) {", "}"):
                    for case in cases:
                        p.each(case)
                    p.each(["default:", "    break;"])
                p(f'illegal_$cls("{name}", aId);')
            entries[slot] = f"&{name}_{c}"
        if multi:
            for name, pick, slot in (("getMultiValued", 1, 6), ("getOnlyMultiValued", 2, 7)):
                # getMultiValued names the property without its id, whatever the id.
                function(name, ", bool", [[f"case {pl.prop.id}:",
                                            f"    return self->{(full, plain)[pick - 1].name}(aDeviant).internal_pointer();"]
                                           for pl, full, plain in multi], slot, returns=True)
        if single:
            function("setOnlySingleValued", ", Object const& aValue",
                     [[f"case {pl.prop.id}:",
                       f"    self->{setter.name}(aDeviant, {setter.params[1][0].replace(' const&', '')}(aValue));",
                       "    return;"] for pl, setter, _ in single], 3)
            function("removeOnlySingleValued", "",
                     [[f"case {pl.prop.id}:", f"    self->{remover.name}(aDeviant);", "    return;"]
                      for pl, _, remover in single], 5)
        p("} // namespace\n")
        return ", ".join(entries)

    def association_entry_headers(self, cls: Type) -> list:
        """What the entries above name: the handles they convert to and return."""
        ops = [op for pl in self.P.props[cls.name] for op in pl.ops if op.sequence is not None or
               (pl.kind in ("ref", "container_end") and op.name.startswith("setOnly"))]
        return sorted(self.handle_types_in(ops))

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
                p("static MetaPropertyDescription* s${t}_noRows[1] = {nullptr};\n"
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
