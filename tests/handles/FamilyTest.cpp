// Generated accessors: read-through, copy on write, has/remove, association
// upkeep, containment read by casting, sparse properties, object-only operations.

#include "FamilyFixture.h"

#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/TAV/NSInterface/ElementIntf.h>
#include <tav/TAV/Namespace_h.h>
#include <tav/kernel/family/SparseMap.h>

#include <algorithm>

namespace TAV::test {
namespace {

using NSImplementation::PropertyDeviantImpl;

NSInterface::ClassObjectIntf* canonical(ImmutableClassObject const& h)
{
    return h.internal_intf();
}

TEST_F(FamilyTest, NamedDeviantReadsThroughUntilItsFirstWrite)
{
    Property p = newProperty();
    open(root);
    p.setName("root name");
    close(root);

    Property inNamed(p.internal_intf(), named);
    EXPECT_EQ(inNamed.getName(), String("root name"));
    EXPECT_EQ(ownState(p, named), nullptr);

    open(named);
    inNamed.setName("named name");
    NSInterface::ObjectIntf* copy = ownState(p, named);
    ASSERT_TRUE(Deviant::isRealState(copy));
    inNamed.setIsComposite(true);
    EXPECT_EQ(ownState(p, named), copy) << "a second write reuses the deviant's state";
    close(named);

    EXPECT_EQ(inNamed.getName(), String("named name"));
    EXPECT_EQ(p.getName(), String("root name"));
    EXPECT_TRUE(inNamed.isComposite());
    EXPECT_FALSE(p.isComposite());
}

TEST_F(FamilyTest, UnchangedWriteCopiesNothing)
{
    Property p = newProperty();
    Property inNamed(p.internal_intf(), named);
    open(named);
    inNamed.setIsReadOnly(false);
    inNamed.setLower(1);
    inNamed.removeDefault();
    EXPECT_EQ(ownState(p, named), nullptr);
    inNamed.setIsReadOnly(true);
    EXPECT_NE(ownState(p, named), nullptr);
    close(named);
}

TEST_F(FamilyTest, OptionalValuesTrackHas)
{
    Property p = newProperty();
    EXPECT_FALSE(p.hasDefault());
    EXPECT_EQ(p.getDefault(), String());
    open(root);
    p.setDefault(String());
    EXPECT_TRUE(p.hasDefault()) << "setting the empty string is a value";
    p.removeDefault();
    EXPECT_FALSE(p.hasDefault());

    // lower and upper start out set, at their defaults.
    EXPECT_TRUE(p.hasLower());
    EXPECT_EQ(p.getLower(), Integer(1));
    p.setLower(0);
    p.removeLower();
    EXPECT_FALSE(p.hasLower());
    EXPECT_EQ(p.getLower(), Integer(1));
    EXPECT_TRUE(p.hasUpper());

    EXPECT_FALSE(p.hasName());
    p.setName("n");
    EXPECT_TRUE(p.hasName());
    EXPECT_FALSE(p.hasDefault()) << "bits of different properties stay apart";
    close(root);
}

TEST_F(FamilyTest, MandatoryValuesAlwaysHaveOne)
{
    Property p = newProperty();
    open(root);
    p.setIsReadOnly(true);
    p.removeIsReadOnly();
    close(root);
    EXPECT_TRUE(p.hasIsReadOnly());
    EXPECT_TRUE(p.isReadOnly()) << "remove does nothing at lower bound 1";
    EXPECT_TRUE(p.isUnique());
}

TEST_F(FamilyTest, ContainmentEndKeepsTheOppositeListAndTheContainees)
{
    Property p = newProperty();
    Class c1 = newClass();
    Class c2 = newClass();
    Association a = newAssociation();
    auto attributes = [&](Class const& c) { return std::size_t(c.getOwnedAttributes().contains(p)); };
    auto containees = [&](ClassObject const& c) { return std::size_t(c.getContaineeTAVs().contains(p)); };

    open(root);
    p.setClass(c1);
    EXPECT_TRUE(p.getClass() == c1);
    EXPECT_TRUE(p.getContainerTAV() == ImmutableClassObject(c1));
    EXPECT_EQ(attributes(c1), 1u);
    EXPECT_EQ(containees(c1), 1u);

    p.setClass(c1); // unchanged: neither list grows
    EXPECT_EQ(attributes(c1), 1u);
    EXPECT_EQ(containees(c1), 1u);

    p.setClass(c2);
    EXPECT_EQ(attributes(c1) + containees(c1), 0u);
    EXPECT_EQ(attributes(c2), 1u);
    EXPECT_EQ(containees(c2), 1u);
    EXPECT_TRUE(p.getNamespace() == ImmutableNamespace(c2));
    EXPECT_TRUE(p.getOwner() == ImmutableElement(c2));

    // The slot itself, and the writable owner end, keep the containees too.
    p.setContainerTAV(a);
    EXPECT_EQ(attributes(c2) + containees(c2), 1u) << "the slot leaves the other end's list alone";
    EXPECT_EQ(containees(a), 1u);
    p.setOwner(c1);
    EXPECT_EQ(containees(a), 0u);
    EXPECT_EQ(containees(c1), 1u);
    p.removeOwner();
    EXPECT_EQ(containees(c1), 0u);
    EXPECT_FALSE(p.hasContainerTAV());

    p.setClass(c2);
    p.removeClass();
    EXPECT_EQ(attributes(c2) + containees(c2), 0u) << "the stale entry was the one removed: the list is unique";
    EXPECT_FALSE(p.hasClass());
    close(root);
}

TEST_F(FamilyTest, OppositeListsAreCopiedWithTheirState)
{
    Property p = newProperty();
    Property q = newProperty();
    Class c = newClass();
    open(root);
    p.setClass(c);
    close(root);

    Property qInNamed(q.internal_intf(), named);
    open(named);
    qInNamed.setClass(c);
    close(named);
    EXPECT_EQ(Class(c.internal_intf(), named).getOwnedAttributes().size(), 2);
    EXPECT_EQ(c.getOwnedAttributes().size(), 1) << "root's list untouched";
    EXPECT_FALSE(q.hasClass());
}

TEST_F(FamilyTest, ContainerOfAnotherMetaclassReadsAsEmptyAndRemoveClearsIt)
{
    Property p = newProperty();
    Association a = newAssociation();
    open(root);
    p.setOwningAssociation(a);
    EXPECT_EQ(a.getOwnedEnds().size(), 1);
    close(root);
    EXPECT_EQ(p.getClass().internal_intf(), nullptr);
    EXPECT_FALSE(p.hasClass());
    EXPECT_TRUE(p.getOwningAssociation() == a);

    // The container is one slot: removing through any end empties it, and the
    // association's list is left alone since this end never held it.
    open(root);
    p.removeClass();
    close(root);
    EXPECT_FALSE(p.hasContainerTAV());
    EXPECT_FALSE(p.hasOwningAssociation());
    EXPECT_EQ(a.getOwnedEnds().size(), 1);
}

TEST_F(FamilyTest, AssociationEndUpkeepAndCrossModelCheck)
{
    Property p = newProperty();
    Association a = newAssociation();
    open(root);
    p.setAssociation(a);
    EXPECT_TRUE(p.getAssociation() == a);
    EXPECT_EQ(a.getMemberEnds().size(), 1);
    p.setOnlyAssociation(ImmutableAssociation());
    EXPECT_FALSE(p.hasAssociation());
    EXPECT_EQ(a.getMemberEnds().size(), 1) << "setOnly leaves the other end";
    close(root);

    DeviantManager other;
    Deviant otherRoot = other.getRoot();
    Association foreign(make<NSImplementation::AssociationImpl>(otherRoot), otherRoot);
    open(root);
    EXPECT_TAV_THROW(p.setAssociation(foreign), "Cross-model bi-directional associations are currently disallowed!");
    close(root);
    EXPECT_FALSE(p.hasAssociation());
}

TEST_F(FamilyTest, SparsePropertiesLiveOutsideTheState)
{
    Property p = newProperty();
    EXPECT_FALSE(p.hasExternalId());
    EXPECT_EQ(p.getExternalId(), String());
    EXPECT_EQ(p.getPersistence(), PersistenceKind(0));

    // An entry with an empty list is no applied stereotype.
    auto const* state = impl(p)->getReadDeviantI(root, canonical(p));
    auto& applied = NSInterface::ClassObjectIntf::appliedStereotypeInstance_sparse();
    applied[state];
    EXPECT_FALSE(p.hasAppliedStereotypeInstances());
    StereotypeObject applied1(make<NSImplementation::DynamicStereotypeObjectImpl>(root), root);
    open(root);
    p.getAppliedStereotypeInstancesWithoutAssociation().push_back(applied1);
    close(root);
    EXPECT_TRUE(p.hasAppliedStereotypeInstances());

    open(root);
    p.setExternalId("ext");
    close(root);
    Property inNamed(p.internal_intf(), named);
    open(named);
    inNamed.setName("copy");
    inNamed.setExternalId("ext2");
    close(named);
    EXPECT_EQ(inNamed.getExternalId(), String("ext2"));
    EXPECT_TRUE(inNamed.hasAppliedStereotypeInstances()) << "copied with the state";
    EXPECT_EQ(p.getExternalId(), String("ext"));

    auto& ids = NSInterface::ClassObjectIntf::externalId_sparse();
    std::size_t before = ids.size();
    impl(p)->internal_destroyDeviation(named);
    EXPECT_EQ(ids.size(), before - 1) << "a dying state takes its entries along";
    open(root);
    p.removeExternalId();
    close(root);
    EXPECT_FALSE(p.hasExternalId());
    applied.erase(state);
}

TEST_F(FamilyTest, StatesRefuseObjectOperations)
{
    PropertyDeviantImpl state;
    EXPECT_TAV_THROW(state.internal_destroyDeviation(root), "this code should not be hit");
    EXPECT_TAV_THROW(state.setObjectIndex(root, 3),
                     "kernel/TAV/NSImplementation/NSDeviant/PropertyDeviantImpl");
    EXPECT_TRUE(state.getRootDeviant().isNull());
    EXPECT_EQ(state.getObjectIndex(root), Integer(-1));
}

TEST_F(FamilyTest, RootFactoryWantsTheRootDeviant)
{
    Property p = newProperty();
    auto* object = impl(p);
    EXPECT_TAV_THROW(object->sStateFactory.createRoot(named),
                     "no root deviant passed to PropertyImpl::createRootDeviation");
    auto* state = object->internal_createDeviation(named);
    ASSERT_NE(state, nullptr);
    EXPECT_EQ(object->internal_createDeviation(named), nullptr) << "a real state is left alone";
    EXPECT_EQ(object->internal_getDeviation(named), state);
    EXPECT_EQ(object->internal_createDeviation(root), nullptr);
}

TEST_F(FamilyTest, ObjectIndexLivesOnTheObject)
{
    Property p = newProperty();
    EXPECT_TRUE(p.hasObjectIndex()) << "constantly true";
    p.internal_intf()->setObjectIndex(root, 7);
    EXPECT_EQ(ImmutableProperty(p.internal_intf(), named).getObjectIndex(), Integer(7));
    p.internal_intf()->removeObjectIndex(named);
    EXPECT_EQ(p.getObjectIndex(), Integer(0));
    EXPECT_TRUE(p.hasObjectIndex());
    EXPECT_EQ(p.getMetaClass().internal_intf(), nullptr) << "no metaclass before the meta-registry";
}

TEST_F(FamilyTest, RootModelIsTheModelAndCannotBeRemoved)
{
    Property p = newProperty();
    EXPECT_FALSE(p.hasRootModel());
    EXPECT_EQ(p.getRootModel().internal_intf(), nullptr);
    open(root);
    for (auto remove : {&Property::removeRootModel, &Property::removeOnlyRootModel})
        EXPECT_TAV_THROW((p.*remove)(), "rootModel is a derived property and thus cannot have the remove method implemented");
    close(root);
}

TEST_F(FamilyTest, OperationMultiplicityAndTypeAreThoseOfItsReturnParameter)
{
    Operation op(make<NSImplementation::OperationImpl>(root), root);
    Parameter in(make<NSImplementation::ParameterImpl>(root), root);
    Parameter result(make<NSImplementation::ParameterImpl>(root), root);
    Class type = newClass();
    open(root);
    op.setType(type);
    op.setLower(0);
    EXPECT_FALSE(op.hasType()) << "no return parameter: nothing to write to";
    EXPECT_EQ(op.getLower(), Integer(1));
    EXPECT_FALSE(op.isUnique());

    result.setDirection(ParameterDirectionKind::Return);
    op.getOwnedParametersWithoutAssociation().push_back(in);
    op.getOwnedParametersWithoutAssociation().push_back(result);
    op.setType(type);
    op.setUpper(UnlimitedNatural(0xFFFFFFFFu));
    op.setIsOrdered(true);
    close(root);

    EXPECT_TRUE(op.internal_intf()->returnResult(root) == result);
    EXPECT_TRUE(result.getType() == ImmutableType(type));
    EXPECT_FALSE(in.hasType());
    EXPECT_TRUE(op.getType() == ImmutableType(type));
    EXPECT_EQ(op.getUpper(), UnlimitedNatural(0xFFFFFFFFu));
    EXPECT_TRUE(op.isOrdered());
    EXPECT_TRUE(op.isUnique()) << "the parameter's default";
    EXPECT_TRUE(op.hasLower()) << "the parameter's default lower is set";
}

TEST_F(FamilyTest, StateLayoutFollowsTheDescription)
{
    PropertyDeviantImpl state;
    EXPECT_EQ(state.fSetFlags, 0x60) << "lower and upper start out set";
    EXPECT_EQ(state.fLower, Integer(1));
    EXPECT_EQ(state.fIsUnique, Boolean(true));
    EXPECT_EQ(state.fContainer, nullptr);
}

} // namespace
} // namespace TAV::test
