// Handles: the null check, deviant normalisation, counting and casts.

#include "FamilyFixture.h"

#include <tav/TAV/MultiplicityElement_h.h>
#include <tav/TAV/NamedElement_h.h>

namespace TAV::test {
namespace {

constexpr char kNullRef[] = "Cannot access NULL ref. Use isValid() before calling methods";

TEST_F(FamilyTest, EmptyHandlesAreEqualInvalidAndRefuseAccess)
{
    ImmutableProperty a;
    Property b;
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a.isValid());
    EXPECT_TAV_THROW(a.getDefault(), kNullRef);
    EXPECT_TAV_THROW(a.getDefault(), "export/include/tav/TAV/Property_h");
    EXPECT_TAV_THROW(b.setIsReadOnly(true), kNullRef);
    // Inherited and re-emitted accessors check too, naming their own header.
    EXPECT_TAV_THROW(a.getName(), "export/include/tav/TAV/NamedElement_h");
    EXPECT_TAV_THROW(a.getLower(), "export/include/tav/TAV/StructuralFeature_h");
    EXPECT_TAV_THROW(ImmutablePackage().getUri(), "export/include/tav/TAV/MPackage_h");
}

TEST_F(FamilyTest, ConstructionNormalisesTheDeviant)
{
    DeviantManager other;
    Deviant foreign = other.createDeviantWithName("foreign");
    Property p = newProperty();

    EXPECT_EQ(ImmutableProperty(p.internal_intf(), foreign).getDeviant(), root);
    EXPECT_EQ(ImmutableProperty(p.internal_intf(), Deviant()).getDeviant(), root);
    EXPECT_EQ(ImmutableProperty(p.internal_intf(), named).getDeviant(), named);

    ImmutableProperty h(p.internal_intf(), named);
    h.setDeviant(other.getRoot());
    EXPECT_EQ(h.getDeviant(), root);

    ImmutableProperty empty;
    empty.setDeviant(named);
    EXPECT_TRUE(empty.getDeviant().isNull());
}

TEST_F(FamilyTest, CountingFollowsHandles)
{
    Property p = newProperty();
    auto* object = impl(p);
    EXPECT_EQ(object->numRef(), 1);
    {
        ImmutableProperty copy = p;
        ImmutableNamedElement base = p;
        EXPECT_EQ(object->numRef(), 3);
    }
    EXPECT_EQ(object->numRef(), 1);

    // Same object, other deviant: the deviant moves, the count stays.
    ImmutableProperty other(p.internal_intf(), named);
    ImmutableProperty target = p;
    EXPECT_EQ(object->numRef(), 3);
    target = other;
    EXPECT_EQ(object->numRef(), 3);
    EXPECT_EQ(target.getDeviant(), named);

    // Another object: the old one is released.
    target = newProperty();
    EXPECT_EQ(object->numRef(), 2);
}

TEST_F(FamilyTest, DecrementingAtZeroIsRefused)
{
    NSImplementation::PropertyImpl object;
    EXPECT_TAV_THROW(object.decRef(), "Decrementing the ref count of a ref with count already 0");
    EXPECT_TAV_THROW(object.decRef(), "kernel/TAV/NSImplementation/PropertyImpl");
}

TEST_F(FamilyTest, CastsAcrossTwoBaseInterfaces)
{
    Property p = newProperty();

    // An unrelated class gives an empty handle that keeps the deviant.
    ImmutableProperty onNamed(p.internal_intf(), named);
    ImmutableAssociation none(onNamed);
    EXPECT_EQ(none.internal_intf(), nullptr);
    EXPECT_EQ(none.getDeviant(), named);

    // MultiplicityElement is the second base of StructuralFeature: another sub-object.
    ImmutableMultiplicityElement me = p;
    ASSERT_NE(me.internal_intf(), nullptr);
    EXPECT_NE(static_cast<void const*>(me.internal_intf()), static_cast<void const*>(p.internal_intf()));
    EXPECT_TRUE(me == ImmutableMultiplicityElement(ImmutableProperty(me)));
    EXPECT_TRUE(ImmutableProperty(me) == p);

    // The NamedElement of the second path, reached by slicing, is still the same object.
    ImmutableNamedElement first = p;
    ImmutableNamedElement second = me;
    EXPECT_NE(static_cast<void const*>(first.internal_intf()), static_cast<void const*>(second.internal_intf()));
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first == ImmutableNamedElement(newProperty()));

    // The root's members answer through a two-base interface too.
    EXPECT_EQ(p.internal_intf()->getRootDeviant(), root);
    EXPECT_EQ(me.internal_intf()->getRootDeviant(), root);

    // Mutable handles convert explicitly between each other, implicitly upwards.
    MultiplicityElement mme = p;
    Property back(mme);
    EXPECT_TRUE(back == p);
    Association wrong(mme);
    EXPECT_EQ(wrong.internal_intf(), nullptr);
}

// A visit reaches the function of the nearest bound class, with `this` adjusted to it.
TEST_F(FamilyTest, VisitFindsTheNearestBoundInterface)
{
    using namespace CooperativeVisitor;
    static DispatchTable table;
    int marker = 0;
    table.bind(CooperativeVisitor::internal::classInfo<NSInterface::MultiplicityElementIntf>(), &marker);

    Property p = newProperty();
    ImmutableMultiplicityElement me = p;
    VisitEntry entry = p.internal_intf()->getVisitMethod(table);
    EXPECT_EQ(entry.fn, &marker);
    EXPECT_EQ(entry.self, static_cast<void*>(me.internal_intf()));

    Class c = newClass();
    EXPECT_EQ(c.internal_intf()->getVisitMethod(table).fn, nullptr);
    table.bind(CooperativeVisitor::internal::classInfo<NSInterface::NamedElementIntf>(), &table);
    EXPECT_EQ(c.internal_intf()->getVisitMethod(table).fn, &table);
    EXPECT_EQ(p.internal_intf()->getVisitMethod(table).fn, &marker) << "a nearer base wins";
}

TEST_F(FamilyTest, WritesNeedATransaction)
{
    Property p = newProperty();
    EXPECT_TAV_THROW(p.setName("x"), "not opened for transactions");
    EXPECT_TAV_THROW(p.setName("x"), "Property");
    open(root);
    p.setName("x");
    close(root);
    EXPECT_EQ(p.getName(), String("x"));
}

} // namespace
} // namespace TAV::test
