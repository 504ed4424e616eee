// Property storages and the reflective operations of class objects that go through them.

#include "handles/FamilyFixture.h"

#include "kernel/TAV/NSImplementation/StereotypeImpl.h"

#include <tav/TAV/DynamicStereotypeObject_h.h>
#include <tav/TAV/Stereotype_h.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/util/IntrospectiveMethods.h>
#include <tav/kernel/util/TAVCast.h>
#include <tav/kernel/util/propertystorage/MultiValuedPropertyManager.h>
#include <tav/kernel/util/propertystorage/PropertyStorage.h>
#include <tav/kernel/util/propertystorage/PropertyStorageType.h>
#include <tav/kernel/util/propertystorage/SingleValuedPropertyManager.h>
#include <tav/kernel/util/propertystorage/StaticExtensionStorage.h>

#include <BRIX/ErrorHolder.h>

namespace TAV::test {
namespace {

IntrospectiveMethods const& properties = NSInterface::PropertyIntf::sIntrospectiveMethods;

// A table whose only multi-valued property is one free-standing list, so that the
// manager is seen apart from the generated getters; the flag of the last fetch is kept.
struct FakeMultiTable {
    static inline Sequence<Property> list;
    static inline bool lastFlag = false;
    static IntrospectiveMethods::SequencePtr fetch(NSInterface::ClassObjectIntf*, Deviant, unsigned, bool aFlag)
    {
        lastFlag = aFlag;
        return IntrospectiveMethods::SequencePtr(list.internal_sequence());
    }
    static IntrospectiveMethods const* table()
    {
        static IntrospectiveMethods m = properties;
        m.getMultiValued = m.getOnlyMultiValued = &fetch;
        return &m;
    }
};

class PropertyStorageTest : public FamilyTest { };

TEST_F(PropertyStorageTest, SingleValuedManagerAnswersThroughTheTable)
{
    PropertyStorage byDefault(new SingleValuedPropertyManager(&properties, 7, 0)); // default : String [0..1]
    PropertyStorage readOnly(new SingleValuedPropertyManager(&properties, 6, 1)); // isReadOnly [1..1]
    Property p = newProperty();

    EXPECT_FALSE(byDefault.has(p));
    EXPECT_FALSE(byDefault.getOne(p).internal_intf()) << "unset: the null object, no failure";
    EXPECT_TRUE(readOnly.has(p)) << "lower bound 1: has reads the value";
    EXPECT_EQ(TAVCast<Boolean>(readOnly.getOne(p)), Boolean(false));

    open(root);
    byDefault.setOrAdd(p, String("x"));
    EXPECT_EQ(p.getDefault(), String("x"));
    EXPECT_EQ(TAVCast<String>(byDefault.getOne(p)), String("x"));
    byDefault.remove(p, String("something else"));
    EXPECT_FALSE(p.hasDefault()) << "a single value is removed whatever value is named";
    byDefault.setOrAddEndOnly(p, String("y"));
    byDefault.removeOneEndOnly(p);
    EXPECT_FALSE(p.hasDefault());
    close(root);

    EXPECT_TAV_THROW(
        byDefault.has(ImmutableClassObject()), "Cannot access NULL ref. Use isValid() before calling methods");
    EXPECT_TAV_THROW(PropertyStorage().has(p), "Cannot access NULL ref. Use isValid() before calling methods");
}

TEST_F(PropertyStorageTest, MultiValuedManagerWorksOnTheSequenceItFetches)
{
    FakeMultiTable::list = MakeSequence<Property>({root, STD_VECTOR});
    PropertyStorage storage(new MultiValuedPropertyManager(FakeMultiTable::table(), 1));
    Property owner = newProperty(), a = newProperty(), b = newProperty();

    EXPECT_FALSE(storage.has(owner)) << "empty";
    EXPECT_FALSE(FakeMultiTable::lastFlag) << "has reads";
    EXPECT_FALSE(storage.getOne(owner).internal_intf());
    storage.setOrAdd(owner, Object(a));
    storage.setOrAddEndOnly(owner, Object(b));
    EXPECT_TRUE(FakeMultiTable::lastFlag) << "a write fetches for writing";
    EXPECT_TRUE(storage.has(owner));
    EXPECT_TRUE(storage.getOne(owner) == Object(a));
    EXPECT_EQ(static_cast<PropertyStorage const&>(storage).get(owner).size(), 2);

    storage.removeOne(owner);
    EXPECT_TRUE(FakeMultiTable::list.front() == b) << "the first goes";
    storage.setOrAdd(owner, Object(a));
    storage.remove(owner, Object(b));
    ASSERT_EQ(FakeMultiTable::list.size(), 1);
    EXPECT_TRUE(FakeMultiTable::list.front() == a);
    storage.removeEndOnly(owner);
    EXPECT_TRUE(FakeMultiTable::list.empty());
    FakeMultiTable::list = Sequence<Property>();
}

TEST_F(PropertyStorageTest, StaticExtensionHoldsOneInstanceOfItsStereotypeAndTakesStereotypeObjectsOnly)
{
    Stereotype mine(make<NSImplementation::StereotypeImpl>(root), root);
    Stereotype theirs(make<NSImplementation::StereotypeImpl>(root), root);
    auto instanceOf = [&](Stereotype const& s) {
        DynamicStereotypeObject o(make<NSImplementation::DynamicStereotypeObjectImpl>(root), root);
        o.setMetadata(s);
        return o;
    };
    PropertyStorage storage(new StaticExtensionStorage(mine));
    PropertyStorage others(new StaticExtensionStorage(theirs));
    Property p = newProperty();
    open(root);
    DynamicStereotypeObject const first = instanceOf(mine), second = instanceOf(mine), foreign = instanceOf(theirs);
    others.setOrAdd(p, Object(foreign));
    storage.setOrAdd(p, Object(first));
    storage.setOrAdd(p, Object(second));
    close(root);
    EXPECT_TRUE(storage.getOne(p) == Object(second)) << "the second replaces the first";
    EXPECT_EQ(static_cast<PropertyStorage const&>(storage).get(p).size(), 1);
    ASSERT_EQ(p.getAppliedStereotypeInstances().size(), 2) << "another stereotype's instance stays";
    EXPECT_TRUE(p.getAppliedStereotypeInstances().contains(foreign));
    EXPECT_FALSE(p.getContaineeTAVs().contains(first)) << "the first leaves the containees too";
    EXPECT_TRUE(second.getBase_ClassObject() == p);

    Property plain = newProperty();
    EXPECT_TAV_THROW(storage.setOrAdd(p, Object(plain)), "Only Stereotypes can be added to this property!");
    EXPECT_TAV_THROW(storage.remove(p, Object(plain)), "Only Stereotypes can be added to this property!");
    EXPECT_TAV_THROW(storage.setOrAddEndOnly(p, String("x")), "Only Stereotypes can be added to this property!");
    EXPECT_TRUE(storage.getOne(p) == Object(second)) << "a refused value leaves the instance";
    open(root);
    p.getAppliedStereotypeInstances().clear(); // the two ends hold counts on each other
    close(root);
}

TEST_F(PropertyStorageTest, StorageTravelsAsAValueWithoutText)
{
    PropertyStorage storage(new SingleValuedPropertyManager(&properties, 7, 0));
    EXPECT_EQ(storage->numRef(), 1);
    BRIX::TypeInfo const& type = PropertyStorage::getTypeInfo();
    EXPECT_EQ(type.convertToString(BRIX::any(storage)), "");
    BRIX::ErrorHolder errors;
    EXPECT_FALSE(BRIX::any_cast<PropertyStorage>(type.convertFromString("anything", errors)).isValid());
    EXPECT_FALSE(BRIX::any_cast<PropertyStorage>(type.defaultConstruct()).isValid());
    EXPECT_TRUE(TypeInfoRegistry::hasType("TAV.PropertyStorage"));

    Object carried = storage;
    EXPECT_TRUE(TAVCast<PropertyStorage>(carried) == storage);
    EXPECT_EQ(storage->numRef(), 2) << "the value object holds a count";

    Property p = newProperty(); // the Property's own field, written through its table
    open(root);
    properties.setSingleValued(ImmutableClassObject(p).internal_intf(), root, 5, carried);
    close(root);
    EXPECT_TRUE(p.getStorage() == storage);
}

TEST_F(PropertyStorageTest, ReflectiveOperationsGoThroughThePropertysStorage)
{
    // A Property describing Property.default, with the storage the meta-registry would give it.
    Property meta = newProperty();
    open(root);
    meta.setStorage(PropertyStorage(new SingleValuedPropertyManager(&properties, 7, 0)));
    close(root);
    Property p = newProperty();
    NSInterface::ClassObjectIntf* object = ImmutableClassObject(p).internal_intf();

    EXPECT_FALSE(object->has(root, meta));
    open(root);
    object->setOrAdd(root, meta, String("v"));
    EXPECT_EQ(p.getDefault(), String("v"));
    EXPECT_TRUE(object->has(root, meta));
    EXPECT_EQ(TAVCast<String>(object->getOne(root, meta)), String("v"));
    object->removeOne(root, meta);
    EXPECT_FALSE(p.hasDefault());
    object->setOrAddOnly(root, meta, String("w"));
    object->removeOnly(root, meta, String("w"));
    EXPECT_FALSE(p.hasDefault());
    close(root);

    ImmutableProperty none;
    EXPECT_FALSE(object->getOne(root, none).internal_intf());
    EXPECT_FALSE(object->has(root, none));
    EXPECT_TAV_THROW(object->get(root, none), "Trying to get invalid property!");
    EXPECT_TAV_THROW(object->remove(root, none), "Trying to set invalid property!");
    EXPECT_TAV_THROW(object->removeOneOnly(root, none), "Trying to set invalid property!");
    EXPECT_TAV_THROW(object->setOrAdd(root, none, String("x")), "Trying to set invalid property!");
    EXPECT_RAISES(object->has(root, String("default")), UnImplementedException, "is not available yet");
}

} // namespace
} // namespace TAV::test
