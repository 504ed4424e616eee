// The generated metamodel tables, as reflection and the cross-model check read them.

#include "kernel/TAV/NSMetaRegistry/TAVMetaSlots.h"

#include <tav/TAV/NSInterface/ClassIntf.h>
#include <tav/TAV/NSInterface/PropertyIntf.h>
#include <tav/TAV/NSInterface/StereotypeIntf.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <gtest/gtest.h>

#include <string>

namespace TAV::test {
namespace {

using NSInterface::ClassIntf;
using NSInterface::PropertyIntf;

TEST(MetaTables, PackageTableHasARecordForEveryType)
{
    PackageIntrospectiveMethods* package = get_TAV_PackageIntrospectiveMethods();
    ASSERT_EQ(package->count, 63u);
    EXPECT_EQ(package->types[0], nullptr);
    EXPECT_EQ(package->types[62], nullptr);
    for (unsigned i = 1; i < 62; ++i) {
        ASSERT_NE(package->types[i], nullptr) << "slot " << i;
        EXPECT_EQ(package->types[i]->package, package) << "slot " << i;
        EXPECT_EQ(package->types[i]->metaType, nullptr) << "set by the meta-registry";
    }
    EXPECT_EQ(package->types[2], &PropertyIntf::sIntrospectiveMethods);
    EXPECT_EQ(package->types[25], &ClassIntf::sIntrospectiveMethods);
    EXPECT_EQ(package->types[29]->descriptions[0], nullptr) << "String has no rows";
    EXPECT_EQ(package->types[29]->superClasses[0].package, nullptr);
}

TEST(MetaTables, RowsAreIndexedByIdWithTheirAttributes)
{
    IntrospectiveMethods const& m = PropertyIntf::sIntrospectiveMethods;
    EXPECT_EQ(m.descriptions[0], nullptr);
    for (unsigned id = 1; id <= 15; ++id)
        EXPECT_EQ(m.descriptions[id]->id, id);

    MetaPropertyDescription const* cls = m.descriptions[11];
    EXPECT_EQ(std::string(cls->name), "class");
    EXPECT_EQ(cls->typeIndex, 25u);
    EXPECT_EQ(cls->flags, MetaPropertyDescription::kUnique);
    EXPECT_EQ(std::string(cls->association), "A_ownedAttribute_class");
    EXPECT_TRUE(cls->oppositeEnd.present);
    EXPECT_EQ(cls->oppositeEnd.typeIndex, 25u);
    EXPECT_EQ(cls->oppositeEnd.propertyId, 5u);
    ASSERT_EQ(cls->subsetted.count, 2u);
    EXPECT_EQ(cls->subsetted.items[0].typeIndex, 3u); // NamedElement.namespace
    EXPECT_EQ(cls->subsetted.items[0].propertyId, 4u);

    MetaPropertyDescription const* opposite = m.descriptions[13];
    EXPECT_FALSE(opposite->oppositeEnd.present);
    EXPECT_EQ(std::string(opposite->ownedEnd.name), "property");
    EXPECT_EQ(opposite->flags, MetaPropertyDescription::kDerived | MetaPropertyDescription::kUnique);

    MetaPropertyDescription const* storage = m.descriptions[5];
    EXPECT_EQ(storage->visibility, 1) << "private";
    EXPECT_EQ(storage->lower, 1);
    EXPECT_EQ(std::string(m.descriptions[6]->defaultValue), "false");

    MetaPropertyDescription const* subClass = ClassIntf::sIntrospectiveMethods.descriptions[3];
    EXPECT_EQ(subClass->persistence, 1) << "transient";
    EXPECT_EQ(subClass->upper, 0xFFFFFFFFu);
    EXPECT_TRUE(subClass->flags & MetaPropertyDescription::kMultiValued);
}

TEST(MetaTables, SuperclassListsEndWithANullGetter)
{
    MetaClassRef const* supers = NSInterface::StereotypeIntf::sIntrospectiveMethods.superClasses;
    EXPECT_EQ(supers[0].package, &get_TAV_PackageIntrospectiveMethods);
    EXPECT_EQ(supers[0].typeIndex, 25u);
    EXPECT_EQ(supers[1].package, nullptr);
    EXPECT_EQ(PropertyIntf::sIntrospectiveMethods.metaType, nullptr);
}

TEST(MetaTables, MetaclassSlotsStartEmpty)
{
    NSInterface::ClassIntf** slot = NSImplementation::staticGetPropertyMeta();
    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(*slot, nullptr);
    EXPECT_EQ(slot, NSImplementation::staticGetPropertyMeta());
    EXPECT_NE(static_cast<void*>(slot), static_cast<void*>(NSImplementation::staticGetClassMeta()));
    EXPECT_EQ(*NSImplementation::staticGetDynamicStereotypeObjectMeta(), nullptr);
}

} // namespace
} // namespace TAV::test
