"""Tests of the generator: description errors, validation and what is emitted."""

import os
import subprocess
import sys
import tempfile
import textwrap
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
sys.path.insert(0, os.path.join(ROOT, "tools", "tavgen"))

from tavgen.cpp import Emitter  # noqa: E402
from tavgen.parser import DescriptionError, parse, parse_file  # noqa: E402
from tavgen.plan import Plans  # noqa: E402

SMALL = os.path.join(HERE, "data", "small.tavmeta")
KERNEL = os.path.join(ROOT, "kernel", "TAV", "TAV.tavmeta")

HEAD = "package P slots 20\nprimitive String = 1 cpp \"TAV::String\" header \"tav/TAV/String.h\"\n"


def error_of(text, name="bad.tavmeta"):
    try:
        parse(textwrap.dedent(text), name)
    except DescriptionError as e:
        return str(e)
    raise AssertionError("no error for:\n" + text)


class DescriptionErrors(unittest.TestCase):
    def test_unknown_type_names_file_line_and_property(self):
        msg = error_of(HEAD + "class A = 2\n  1 name : Strin [0..1]\n", "TAV.tavmeta")
        self.assertEqual(msg, "TAV.tavmeta:4: unknown type 'Strin' in property 'name'")

    def test_each_rule_names_its_line(self):
        cases = [
            (HEAD + "class A = 1\n", 3, "type index 1 of 'A' already used by 'String'"),
            (HEAD + "class A = 2 : B\n", 3, "unknown superclass 'B' of 'A'"),
            (HEAD + "class A = 2 : String\n", 3, "superclass 'String' of 'A' is not a class"),
            (HEAD + "class A = 2\n  2 x : String [0..1]\n", 4, "has id 2, expected 1"),
            (HEAD + "class A = 2\n  1 x : String [0..1]\n  2 x : String [0..1]\n", 5, "declared twice"),
            (HEAD + "class A = 2\n  1 x : String [2..1]\n", 4, "bad multiplicity '[2..1]'"),
            (HEAD + "class A = 2\n  1 x : String [0..1] shiny\n", 4, "unknown word 'shiny'"),
            (HEAD + "class A = 2 : A\n", 3, "inherits from itself"),
            (HEAD + "class A = 25\n", 3, "outside 1..19"),
            (HEAD + "enumeration E = 2\n", 3, "has no literals"),
            (HEAD + "class A = 2\n  1 x : A [0..1] association X opposite A.y\n", 4, "has no property 'y'"),
            (HEAD + "class A = 2\n  1 x : A [0..1] association X opposite Q.y\n", 4, "unknown class 'Q'"),
            (HEAD + "class A = 2\n  1 x : String [0..1] association X\n", 4, "non-class type 'String'"),
            (HEAD + "class A = 2\n  1 x : A [0..1] subsets A.nope\n", 4, "has no property 'nope'"),
            ("class A = 2\n", 1, "expected 'package NAME slots N'"),
            (HEAD + "  1 x : String [0..1]\n", 3, "property row in non-class 'String'"),
            (HEAD + "abstract class Frame = 2 frame\n", 3, "must be named 'ClassObject'"),
            (HEAD + "class A = 2\n  operation \"void f(int)\"\n", 4, "needs a type and a name"),
            (HEAD + "class A = 2\n  operation \"no signature\"\n", 4, "cannot read the signature"),
            (HEAD + "abstract class ClassObject = 2 frame\n  operation \"void f()\" pure\n", 4,
             "cannot be pure"),
            (HEAD + "abstract class ClassObject = 2 frame\n  operation \"void f()\"\n"
             "  operation \"int f() const\"\n", 5, "declared twice"),
            (HEAD + "class A = 2\n", 3, "no class is marked 'frame'"),
            (HEAD + "abstract class ClassObject = 2 frame\nclass A = 3\n", 4, "does not derive from the frame"),
            (HEAD + "abstract class O = 2 handwritten\n  1 x : String [0..1]\n", 3, "can have neither"),
            (HEAD + "abstract class ClassObject = 2 frame\nclass A = 3 : ClassObject\n"
             "  1 c : A [0..1] container\n", 5, "'container' marks"),
        ]
        for text, line, words in cases:
            with self.subTest(words=words):
                msg = error_of(text)
                self.assertTrue(msg.startswith(f"bad.tavmeta:{line}: "), msg)
                self.assertIn(words, msg)

    def test_opposites_must_point_back(self):
        text = HEAD + textwrap.dedent("""\
            class A = 2
              1 b : B [0..1] association X opposite B.a
              2 c : B [0..1] association X
            class B = 3
              1 a : A [0..*] association X opposite A.c
            """)
        msg = error_of(text)
        self.assertTrue(msg.startswith("bad.tavmeta:4: "), msg)
        self.assertIn("whose opposite is not 'A.b'", msg)

    def test_opposites_must_share_the_association(self):
        text = HEAD + textwrap.dedent("""\
            class A = 2
              1 b : B [0..1] association X opposite B.a
            class B = 3
              1 a : A [0..*] association Y opposite A.b
            """)
        self.assertIn("different associations", error_of(text))

    def test_command_line_fails_with_the_message(self):
        with tempfile.TemporaryDirectory() as d:
            path = os.path.join(d, "broken.tavmeta")
            with open(path, "w") as f:
                f.write(HEAD + "class A = 2\n  1 name : Strin [0..1]\n")
            run = subprocess.run([sys.executable, os.path.join(ROOT, "tools", "tavgen", "tavgen.py"), path, d],
                                 capture_output=True, text=True)
            self.assertNotEqual(run.returncode, 0)
            self.assertIn("broken.tavmeta:4: unknown type 'Strin' in property 'name'", run.stderr)
            self.assertFalse(os.path.exists(os.path.join(d, "export")))


class Fuzz(unittest.TestCase):
    """Damaged descriptions fail with a located message, never with a crash."""

    def test_mutated_kernel_description(self):
        import random
        with open(KERNEL) as f:
            lines = f.read().splitlines()
        rng = random.Random(20261122)
        words = ["class", "[0..*]", "[1..0]", ":", "opposite", "Property.class", "=", "7", "\"", "subsets",
                 "abstract", "literals", "end", "default", "Zzz", "Property.nope", "frame", "handwritten",
                 "container", "sparse", "deferred", "[1..1]", "Object", ","]
        failures = 0
        for _ in range(400):
            mutated = list(lines)
            for _ in range(rng.randint(1, 3)):
                i = rng.randrange(len(mutated))
                toks = mutated[i].split(" ")
                op = rng.randrange(4)
                if op == 0:
                    del mutated[i]
                elif op == 1:
                    mutated.insert(i, mutated[i])
                elif op == 2 and toks:
                    toks[rng.randrange(len(toks))] = rng.choice(words)
                    mutated[i] = " ".join(toks)
                else:
                    toks.insert(rng.randrange(len(toks) + 1), rng.choice(words))
                    mutated[i] = " ".join(toks)
            text = "\n".join(mutated)
            try:
                mm = parse(text, "TAV.tavmeta")
                Emitter(mm, "TAV.tavmeta").run()
            except DescriptionError as e:
                failures += 1
                self.assertRegex(str(e), r"^TAV\.tavmeta:\d+: ")
                self.assertLessEqual(e.line, len(mutated) + 1)
        self.assertGreater(failures, 100, "the mutations should mostly be caught")


class KernelDescription(unittest.TestCase):
    def test_counts_and_indices(self):
        mm = parse_file(KERNEL)
        self.assertEqual(len(mm.types), 61)
        self.assertEqual(len(mm.classes), 46)
        self.assertEqual(sum(len(c.props) for c in mm.classes), 127)
        self.assertEqual(len([c for c in mm.classes if c.concrete]), 27)
        self.assertIsNone(mm.type_at(62))
        self.assertEqual(mm.type_at(2).name, "Property")

    def test_property_state_matches_its_documented_layout(self):
        mm = parse_file(KERNEL)
        plans = Plans(mm)
        prop = mm.by_name["Property"]
        fields = [pl.field.name for _, pl in plans.fields(prop)]
        self.assertEqual(fields, [
            "fRedefinedProperty", "fRedefinerProperty", "fSubsettedProperty", "fSubsetterProperty",
            "fIsReadOnly", "fDefault", "fIsComposite", "fIsDerived", "fIsDerivedUnion", "fAssociation",
            "fName", "fVisibility", "fOwnedComment", "fModelTAV", "fContainer", "fContaineeTAV",
            "fIsOrdered", "fIsUnique", "fLower", "fUpper", "fType"])
        bits = plans.bits(prop)
        self.assertEqual(bits[("Property", "default")], 0)
        self.assertEqual(plans.initial_flags(prop), 0b1100000)

    def test_containment_ends_are_read_through_the_container(self):
        mm = parse_file(KERNEL)
        ends = {(c.name, p.name) for c in mm.classes for p in c.props if p.is_container_end}
        self.assertIn(("Property", "class"), ends)
        self.assertIn(("ElementImport", "importingNamespace"), ends)
        self.assertNotIn(("Property", "association"), ends)
        self.assertNotIn(("ClassObject", "containerTAV"), ends)


class KernelEmission(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.files = Emitter(parse_file(KERNEL), "TAV.tavmeta").run()

    def test_one_family_per_metaclass(self):
        impls = [n for n in self.files if n.startswith("kernel/TAV/NSImplementation/") and n.endswith("Impl.h")
                 and "/NSDeviant/" not in n]
        self.assertEqual(len(impls), 27)
        self.assertIn("export/include/tav/TAV/MPackage_h.h", self.files)
        self.assertNotIn("export/include/tav/TAV/Package_h.h", self.files)
        self.assertEqual(len([n for n in self.files if n.endswith("MetaRegistry.cpp")]), 46)

    def test_metaclass_slots(self):
        self.assertIn("NSInterface::StereotypeIntf** staticGetDynamicStereotypeObjectMeta()",
                      self.files["kernel/TAV/NSMetaRegistry/DynamicStereotypeObjectMetaRegistry.cpp"])
        self.assertIn("NSInterface::ClassIntf** staticGetPropertyMeta()",
                      self.files["kernel/TAV/NSMetaRegistry/PropertyMetaRegistry.cpp"])

    def test_transient_rows_are_marked(self):
        # The cross-model check lets transient ends through, by this field.
        src = self.files["kernel/TAV/NSMetaRegistry/ClassMetaRegistry.cpp"]
        row = src[src.index("sClass_subClass = {"):]
        self.assertIn("0, 0, 4294967295u, 1, 3u,", row[:row.index("};")].replace("0xFFFFFFFFu", "4294967295u"))


class Emission(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.mm = parse_file(SMALL)
        cls.files = Emitter(cls.mm, "small.tavmeta").run()

    def text(self, name):
        return self.files[name]

    def test_file_set(self):
        names = set(self.files)
        for cls in ("Item", "Box"):
            self.assertIn(f"kernel/TAV/NSImplementation/{cls}Impl.h", names)
            self.assertIn(f"kernel/TAV/NSImplementation/{cls}Impl_object.cpp", names)
        self.assertNotIn("kernel/TAV/NSImplementation/NamedImpl.h", names)
        self.assertIn("kernel/TAV/NSImplementation/NamedImpl.cpp", names, "abstract: interface logic only")
        self.assertNotIn("export/include/tav/TAV/NSInterface/ObjectIntf.h", names, "hand-written")
        self.assertIn("export/include/tav/TAV/Object_h.h", names)

    def test_state_fields_and_flags(self):
        h = self.text("kernel/TAV/NSImplementation/NSDeviant/ItemDeviantImpl.h")
        order = [h.index(f) for f in ("fWeight", "fName", "fContainer", "fCount", "fExact")]
        self.assertEqual(order, sorted(order), "own first, then ancestors depth-first")
        self.assertNotIn("fBlob", h, "a primitive without a C++ class is deferred")
        self.assertNotIn("fTag", h, "sparse values stay out of the state")
        # bits: weight 0, name 1, tag 2 (sparse, reserved), count 3 (default "1": set)
        self.assertIn("std::uint8_t fSetFlags = 0x8;", h)
        self.assertIn("TAV::Boolean fExact{true};", h)

    def test_two_base_interface_redeclares_shared_accessors(self):
        h = self.text("export/include/tav/TAV/NSInterface/ItemIntf.h")
        self.assertIn("class TAV_EXPORT ItemIntf : public NamedIntf, public CountedIntf", h)
        self.assertIn("virtual bool hasContainer(Deviant aDeviant) const override = 0;", h)
        self.assertIn("virtual void setTag(Deviant aDeviant, TAV::String const& aValue) override;", h)
        src = self.text("kernel/TAV/NSImplementation/ItemImpl.cpp")
        self.assertIn("NamedIntf::setTag(aDeviant, aValue);", src)
        for anc in ("ClassObjectIntf", "NamedIntf", "CountedIntf", "ItemIntf"):
            self.assertIn(f"getReadDeviantI(Deviant aDeviant, {anc} const* aAsked) const", h)

    def test_declared_operations(self):
        h = self.text("export/include/tav/TAV/NSInterface/ItemIntf.h")
        self.assertIn("virtual TAV::Boolean isHeavy(Deviant aDeviant, TAV::Integer const& aLimit) const;", h)
        # The hand-written root's members, named once for both bases.
        self.assertIn("virtual Deviant getRootDeviant() const override;", h)
        self.assertIn("virtual void destroy(Deviant aDeviant) override = 0;", h)
        src = self.text("kernel/TAV/NSImplementation/ItemImpl.cpp")
        self.assertIn("return NamedIntf::getRootDeviant();", src)
        self.assertNotIn("ItemIntf::isHeavy", src, "hand-maintained body")
        self.assertNotIn("isHeavy", self.text("export/include/tav/TAV/detail/Item_hdecl.h"))

    def test_value_accessors(self):
        src = self.text("kernel/TAV/NSImplementation/CountedImpl.cpp")
        self.assertIn("if (hasCount(aDeviant) && getCount(aDeviant) == aValue)\n        return;", src)
        self.assertIn("if (getExact(aDeviant) == aValue)", src, "mandatory: no has test")
        self.assertIn("bool CountedIntf::hasExact(Deviant aDeviant) const\n{\n    (void)aDeviant;\n    return true;",
                      src)

    def test_association_ends(self):
        src = self.text("kernel/TAV/NSImplementation/NamedImpl.cpp")
        self.assertIn("family::crossModelCheck(aDeviant, aValue.getDeviant(), &sIntrospectiveMethods, 2,", src)
        self.assertIn("internal_rawItemsForWrite(aDeviant))\n            list->push_back(", src)
        self.assertIn("return ImmutableBox(getContainer(aDeviant));", src)
        self.assertIn("setOnlyContainer(aDeviant, ImmutableClassObject(aValue));", src)

    def test_one_way_reference_counts_the_referred_model(self):
        src = self.text("kernel/TAV/NSImplementation/ItemImpl.cpp")
        # Mandatory, yet a reference can be absent: has and remove are real.
        self.assertIn("return s->fHome != nullptr;", self.text("kernel/TAV/NSImplementation/ItemImpl.h"))
        set_only = src[src.index("void ItemIntf::setOnlyHome"):]
        set_only = set_only[:set_only.index("\n}\n")]
        self.assertNotIn("crossModelCheck", set_only, "one-way: may cross models")
        self.assertLess(set_only.index("aDeviant.removeReferred(current.getDeviant(), &sIntrospectiveMethods, 3);"),
                        set_only.index("aDeviant.setOrAddReferred(aValue.getDeviant(), &sIntrospectiveMethods, 3);"))
        self.assertLess(set_only.index("setOrAddReferred"), set_only.index("getWriteDeviantI"))
        remove_only = src[src.index("void ItemIntf::removeOnlyHome"):]
        remove_only = remove_only[:remove_only.index("\n}\n")]
        self.assertIn("if (!current.internal_intf())\n        return;\n"
                      "    aDeviant.removeReferred(current.getDeviant(), &sIntrospectiveMethods, 3);\n"
                      "    getWriteDeviantI(aDeviant, this)->removeOnlyHome(aDeviant);", remove_only)

    def test_removing_a_containment_end_always_drops_the_container(self):
        src = self.text("kernel/TAV/NSImplementation/NamedImpl.cpp")
        body = src[src.index("void NamedIntf::removeOwner"):]
        body = body[:body.index("\n}\n")]
        self.assertNotIn("return;", body, "a container of another metaclass must go too")
        self.assertTrue(body.rstrip().endswith("removeContainer(aDeviant);"), "the slot keeps its list")

    def test_handles(self):
        decl = self.text("export/include/tav/TAV/detail/Item_hdecl.h")
        self.assertIn("class TAV_EXPORT ImmutableItem : public ImmutableNamed", decl)
        self.assertIn("operator ImmutableCounted() const;", decl, "the second base by the cast")
        self.assertIn("TAV::Integer getCount() const;", decl, "second base accessors re-emitted")
        self.assertIn("class TAV_EXPORT Item : public ImmutableItem", decl)
        self.assertIn("void setName(TAV::String const& aValue) const;", decl)
        inl = self.text("export/include/tav/TAV/detail/Item_hinl.h")
        self.assertIn('nullReference("export/include/tav/TAV/Item_h", __LINE__);', inl)
        self.assertIn("static_cast<NSInterface::CountedIntf*>(internal_intf())->getCount(fDeviant)", inl)

    def test_tables(self):
        src = self.text("kernel/TAV/NSMetaRegistry/BoxMetaRegistry.cpp")
        self.assertIn("static MetaPropertyDescription* sBox_table[3] = {nullptr, &sBox_item, &sBox_label};", src)
        self.assertIn("MetaPropertyDescription::kComposite | MetaPropertyDescription::kOrdered | "
                      "MetaPropertyDescription::kUnique | MetaPropertyDescription::kMultiValued", src)
        self.assertIn("{1, &get_Small_PackageIntrospectiveMethods, 7u, 2u}", src, "opposite Named.owner")
        pkg = self.text("kernel/TAV/NSMetaRegistry/SmallPackageMetaRegistry.cpp")
        self.assertIn("static IntrospectiveMethods* sSmallTypes[12]", pkg)
        self.assertIn("&sObject_record, // 5 Object", pkg)

    def test_output_is_deterministic(self):
        again = Emitter(parse_file(SMALL), "small.tavmeta").run()
        self.assertEqual(again, self.files)


if __name__ == "__main__":
    unittest.main()
