// The object side of the deviation contract as generated objects carry it:
// slots, copies, validity, model destruction and the commit of root.

#include "FamilyFixture.h"

#include "kernel/TAV/NSImplementation/OperationImpl.h"
#include "kernel/TAV/NSImplementation/PackageImpl.h"

#include <tav/TAV/MPackage_h.h>
#include <tav/TAV/MultiplicityElement_h.h>
#include <tav/TAV/Operation_h.h>

namespace TAV::test {
namespace {

TEST_F(FamilyTest, CopyOfDeviationIsIndependent)
{
    Property p = newProperty();
    open(root);
    p.setName("original");
    close(root);
    auto* object = impl(p);

    NSInterface::ObjectIntf* copy = object->deviant_getCopyOfDeviation(root);
    ASSERT_TRUE(Deviant::isRealState(copy));
    EXPECT_NE(copy, object->internal_getDeviation(root));
    open(root);
    p.setName("changed");
    close(root);
    // Put the copy back: the object reads the old value again.
    object->internal_setDeviation(root, copy);
    EXPECT_EQ(p.getName(), String("original"));

    EXPECT_EQ(object->deviant_getCopyOfDeviation(named), nullptr) << "nothing recorded in named";
    object->internal_destroyDeviation(named);
    EXPECT_EQ(object->deviant_getCopyOfDeviation(named), Deviant::InvalidObject);
}

TEST_F(FamilyTest, ValidityPerDeviant)
{
    Property p = newProperty();
    auto* object = impl(p);
    Property inNamed(p.internal_intf(), named);
    EXPECT_TRUE(inNamed.isValid()) << "read through to root";

    // Created in named only: absent from root.
    Property q(make<NSImplementation::PropertyImpl>(root), root);
    auto* other = impl(q);
    other->internal_createDeviation(named);
    other->internal_destroyDeviation(root);
    EXPECT_FALSE(q.isValid());
    EXPECT_TRUE(Property(q.internal_intf(), named).isValid());
    EXPECT_TAV_THROW(q.getName(), "is not present");

    // Destroyed in root: gone for a named deviant that reads through.
    object->internal_destroyDeviation(root);
    EXPECT_FALSE(inNamed.isValid());
}

TEST_F(FamilyTest, ModelDestructionCutsEveryRoad)
{
    Property p = newProperty();
    Property inNamed(p.internal_intf(), named);
    impl(p)->deviant_markModelDestroyed();
    EXPECT_TRUE(impl(p)->getRootDeviant().isNull());
    EXPECT_FALSE(p.isValid());
    EXPECT_TAV_THROW(p.getLower(), "object accessed after its model has been destroyed");
    EXPECT_TAV_THROW(inNamed.getName(), "object accessed after its model has been destroyed");
}

TEST_F(FamilyTest, RemovedDeviantRefusesAccess)
{
    Property p = newProperty();
    Property inNamed(p.internal_intf(), named);
    named.remove();
    EXPECT_TAV_THROW(inNamed.getName(), "object accessed after its deviant has been removed");
    EXPECT_FALSE(inNamed.isValid());
    EXPECT_FALSE(named.isValid());
    EXPECT_EQ(named.getName(), "alpha") << "a removed deviant's handle stays usable";
}

TEST_F(FamilyTest, RootCommitKeepsNamedDeviantsOnTheOldState)
{
    Property p = newProperty();
    open(root);
    p.setName("before");
    close(root);
    Property inNamed(p.internal_intf(), named);
    Deviant second = beta;
    Property inSecond(p.internal_intf(), second);
    open(second);
    inSecond.setName("own");
    close(second);

    manager.getDeviantWithName("ghost"); // a null entry in the walk, which must not take (and drop) a copy
    open(root);
    p.setName("after");
    EXPECT_EQ(inNamed.getName(), String("before")) << "isolation while root's transaction is open";
    impl(p)->deviant_commitTransientState(named);
    EXPECT_EQ(ownState(p, named), nullptr) << "a named deviant's commit does nothing here";
    impl(p)->deviant_commitTransientState(root);
    close(root);

    EXPECT_EQ(p.getName(), String("after"));
    EXPECT_EQ(inNamed.getName(), String("before"));
    EXPECT_TRUE(Deviant::isRealState(ownState(p, named)));
    EXPECT_EQ(inSecond.getName(), String("own")) << "an own state is left alone";
}

TEST_F(FamilyTest, TwoBaseObjectsAnswerThroughEveryPath)
{
    Operation op(make<NSImplementation::OperationImpl>(root), root);
    Package pkg(make<NSImplementation::PackageImpl>(root), root);
    Class c = newClass();
    Property attribute = newProperty();
    MultiplicityElement me = attribute; // StructuralFeature: Feature and MultiplicityElement
    open(root);
    me.setUpper(UnlimitedNatural(7));
    attribute.setName("run");
    op.setName("run");
    op.setClass(c);
    pkg.setUri("urn:p");
    c.setPackage(pkg);
    close(root);

    EXPECT_EQ(attribute.getUpper(), UnlimitedNatural(7));
    EXPECT_EQ(ImmutableNamedElement(me).getName(), String("run"));
    EXPECT_TRUE(op.getClass() == c);
    EXPECT_EQ(c.getOwnedOperations().size(), 1);
    EXPECT_TRUE(op.getNamespace() == ImmutableNamespace(c));
    EXPECT_TRUE(op.getDatatype().internal_intf() == nullptr);
    EXPECT_EQ(pkg.getUri(), String("urn:p"));
    EXPECT_TRUE(pkg.hasUri()) << "lower bound 1";
    EXPECT_TRUE(c.getPackage() == pkg) << "a containment end of the second base";
    EXPECT_TRUE(c.getOwner() == ImmutableElement(pkg));
}

} // namespace
} // namespace TAV::test
