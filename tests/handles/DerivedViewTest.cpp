// Derived multi-valued properties: views over the stored lists, read afresh at each use,
// reached through the typed getters and the reflection table alike.

#include "handles/FamilyFixture.h"

#include "kernel/TAV/NSImplementation/ConstraintImpl.h"
#include "kernel/TAV/NSImplementation/ExtensionEndImpl.h"
#include "kernel/TAV/NSImplementation/PackageImpl.h"

#include <tav/TAV/Constraint_h.h>
#include <tav/TAV/ExtensionEnd_h.h>
#include <tav/TAV/MPackage_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <functional>
#include <vector>

namespace TAV::test {
namespace {

// An object reached along different bases is one object: compare the counted identity.
using Ids = std::vector<void const*>;

void const* id(ImmutableClassObject const& h)
{
    return h.internal_identity();
}

template <class T>
Ids idsOf(ImmutableSequence<T> const& s)
{
    Ids out;
    for (auto const& e : s)
        out.push_back(id(e));
    return out;
}

// A view made once, read again after each change.
template <class T>
std::function<Ids()> reader(ImmutableSequence<T> s)
{
    return [s] { return idsOf(s); };
}

// The sequence a table hands out for an id, as reflection and the storages see it.
Sequence<ImmutableClassObject> byTable(IntrospectiveMethods const& aTable, unsigned aId, ImmutableClassObject const& aObject)
{
    return {aTable.getMultiValued(aObject.internal_intf(), aObject.getDeviant(), aId, true), aObject.getDeviant()};
}

class DerivedViewTest : public FamilyTest {
protected:
    Constraint newConstraint() { return Constraint(make<NSImplementation::ConstraintImpl>(root), root); }
    Package newPackage() { return Package(make<NSImplementation::PackageImpl>(root), root); }
    Operation newOperation() { return Operation(make<NSImplementation::OperationImpl>(root), root); }
};

TEST_F(DerivedViewTest, ViewsMadeBeforeAChangeShowItEachElementOnce)
{
    Class c = newClass();
    Property p = newProperty();
    Operation op = newOperation();
    Constraint rule = newConstraint();
    struct Case {
        char const* name;
        std::function<Ids()> read;
        Ids filled;
    };
    std::vector<Case> const cases = {
        {"ownedMember", reader(c.getOwnedMembers()), {id(p), id(op), id(rule)}},
        {"ownedMember by the table", reader(byTable(NSInterface::NamespaceIntf::sIntrospectiveMethods, 4, c)),
         {id(p), id(op), id(rule)}},
        {"member: a stored list shown by two parts once", reader(c.getMembers()), {id(op), id(p), id(rule)}},
        {"feature", reader(c.getFeatures()), {id(op), id(p)}},
        {"attribute by the table", reader(byTable(NSInterface::ClassifierIntf::sIntrospectiveMethods, 1, c)), {id(p)}},
        {"ownedElement: the containees", reader(c.getOwnedElements()), {id(p), id(op), id(rule)}},
        {"ownedElement by the table", reader(byTable(NSInterface::ElementIntf::sIntrospectiveMethods, 2, c)),
         {id(p), id(op), id(rule)}},
        {"featuringClassifier of an attribute", reader(p.getFeaturingClassifiers()), {id(c)}},
        {"featuringClassifier of an operation", reader(byTable(NSInterface::FeatureIntf::sIntrospectiveMethods, 1, op)),
         {id(c)}},
        {"redefinitionContext of an operation", reader(op.getRedefinitionContexts()), {id(c)}},
    };
    for (Case const& k : cases)
        EXPECT_TRUE(k.read().empty()) << k.name;

    open(root);
    c.getOwnedAttributes().push_back(p);
    c.getOwnedOperations().push_back(op);
    c.getOwnedRules().push_back(rule);
    close(root);
    for (Case const& k : cases)
        EXPECT_EQ(k.read(), k.filled) << k.name;

    open(root);
    c.getOwnedAttributes().clear();
    c.getOwnedOperations().clear();
    c.getOwnedRules().clear();
    close(root);
    for (Case const& k : cases)
        EXPECT_TRUE(k.read().empty()) << k.name << " after clearing the parts";
}

TEST_F(DerivedViewTest, WritesThroughAUnionLandInThePartOfTheirClassWithTheOppositeEnd)
{
    Class c = newClass();
    Property p = newProperty(), q = newProperty();
    Operation op = newOperation();
    Constraint rule = newConstraint();
    open(root);
    Sequence<NamedElement> const members = c.getOwnedMembers();
    members.push_back(p);
    members.push_back(op);
    members.push_back(rule);
    c.getFeatures().push_back(q); // through attribute, a union inside the union
    EXPECT_EQ(idsOf(c.getOwnedAttributes()), (Ids{id(p), id(q)}));
    EXPECT_EQ(idsOf(c.getOwnedOperations()), Ids{id(op)});
    EXPECT_EQ(idsOf(c.getOwnedRules()), Ids{id(rule)});
    EXPECT_TRUE(p.getClass() == c && q.getClass() == c && op.getClass() == c);
    EXPECT_TRUE(rule.getContext() == ImmutableNamespace(c));

    EXPECT_EQ(members.removeAll(p), 1);
    EXPECT_FALSE(p.hasClass());
    byTable(NSInterface::NamespaceIntf::sIntrospectiveMethods, 4, c).clear();
    EXPECT_FALSE(q.hasClass() || op.hasClass() || rule.hasContext());
    EXPECT_TRUE(c.getContaineeTAVs().empty());
    EXPECT_TAV_THROW(members.push_back(newPackage()), "cannot insert value into the combined sequence");
    close(root);
}

TEST_F(DerivedViewTest, RestrictedListsShowTheirTypeAndWriteThroughTheListTheyRestrict)
{
    Package pkg = newPackage(), sub = newPackage();
    Class type = newClass(), other = newClass();
    Constraint rule = newConstraint();
    open(root);
    pkg.getPackagedElements().push_back(type);
    pkg.getPackagedElements().push_back(rule);
    pkg.getNestedPackages().push_back(sub);
    pkg.getOwnedTypes().push_back(other);
    EXPECT_EQ(idsOf(pkg.getPackagedElements()), (Ids{id(type), id(rule), id(sub), id(other)}));
    EXPECT_EQ(idsOf(pkg.getOwnedTypes()), (Ids{id(type), id(other)}));
    EXPECT_EQ(idsOf(pkg.getNestedPackages()), Ids{id(sub)});
    EXPECT_TRUE(sub.getNestingPackage() == pkg && other.getPackage() == pkg) << "the opposite end is kept";

    pkg.getNestedPackages().clear();
    EXPECT_EQ(idsOf(pkg.getPackagedElements()), (Ids{id(type), id(rule), id(other)})) << "only what it shows goes";
    EXPECT_FALSE(sub.hasNestingPackage());

    Class c = newClass();
    ExtensionEnd end(make<NSImplementation::ExtensionEndImpl>(root), root);
    c.getOwnedAttributes().push_back(newProperty());
    c.getOwnedExtensions().push_back(end);
    EXPECT_EQ(idsOf(c.getOwnedExtensions()), Ids{id(end)});
    EXPECT_TRUE(c.getOwnedAttributes().size() == 2 && end.getClass() == c);
    c.getOwnedAttributes().clear();
    close(root);
}

TEST_F(DerivedViewTest, ViewsWithNoWritablePartRefuseEveryWriteAndChangeNothing)
{
    Class c = newClass();
    Property p = newProperty();
    Association a = newAssociation();
    open(root);
    c.getOwnedAttributes().push_back(p);
    std::vector<std::function<void()>> const writes = {
        [&] { c.getOwnedElements().push_back(newProperty()); },
        [&] { c.getOwnedElements().clear(); },
        [&] { c.getOwnedElementsWithoutAssociation().erase(0); },
        [&] { p.getFeaturingClassifiers().clear(); },
        [&] { p.getFeaturingClassifiers().push_back(newClass()); },
        [&] { a.getAttributes().push_back(p); }, // a union with no part in this class
        [&] { byTable(NSInterface::ElementIntf::sIntrospectiveMethods, 2, c).removeAll(p); },
    };
    for (auto const& write : writes)
        EXPECT_TAV_THROW(write(), "This derived sequence is read-only!");
    close(root);
    EXPECT_EQ(idsOf(c.getOwnedElements()), Ids{id(p)});
    EXPECT_TRUE(p.getClass() == c && a.getAttributes().empty());
}

} // namespace
} // namespace TAV::test
