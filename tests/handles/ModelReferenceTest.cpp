// The object's model reference, counting of references into other models,
// and the guarded way from an immutable handle back to a mutable one.

#include "FamilyFixture.h"

#include "kernel/TAV/NSImplementation/ElementImportImpl.h"
#include "kernel/TAV/NSImplementation/ModelImpl.h"
#include "kernel/TAV/NSImplementation/PackageImpl.h"

#include <tav/TAV/ElementImport_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/TAV/MPackage_h.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

namespace TAV::test {
namespace {

constexpr unsigned kModelTAV = 2;     // transient
constexpr unsigned kContainerTAV = 3; // persistent

class ModelReferenceTest : public FamilyTest {
protected:
    ModelReferenceTest() { manager.setModel(model.internal_intf()); }
    // These models stand in for real ones and go before their managers: objects freed
    // with the managers' deviants must find no model to leave.
    ~ModelReferenceTest() override
    {
        manager.setModel(nullptr);
        otherManager.setModel(nullptr);
    }

    static Model newModel(DeviantManager& aManager)
    {
        Model m(make<NSImplementation::ModelImpl>(aManager.getRoot()), aManager.getRoot());
        aManager.setModel(m.internal_intf());
        return m;
    }

    static NSInterface::ObjectIntf* key(Model const& m)
    {
        return static_cast<NSInterface::ObjectIntf*>(static_cast<NSInterface::ClassObjectIntf*>(m.internal_intf()));
    }

    // The count held for `m`, 0 when it has no entry.
    static unsigned referred(Deviant d, Model const& m)
    {
        auto const& map = d.impl()->referredModels;
        auto const it = map.find(key(m));
        return it == map.end() ? 0u : it->second;
    }

    static IntrospectiveMethods const* methods() { return &NSInterface::ClassObjectIntf::sIntrospectiveMethods; }

    Model model{make<NSImplementation::ModelImpl>(root), root};
    // Declared after the fixture's manager, so it goes first: its objects only live in root states.
    DeviantManager otherManager;
    Model otherModel = newModel(otherManager);
    Deviant otherRoot = otherManager.getRoot();
};

TEST_F(ModelReferenceTest, ModelReferenceIsSetReadAndRemoved)
{
    Property p = newProperty();
    EXPECT_FALSE(p.hasModelTAV()) << "mandatory, but unset until written";
    EXPECT_EQ(p.getModelTAV().internal_intf(), nullptr);

    open(root);
    p.setModelTAV(model);
    close(root);
    EXPECT_TRUE(p.hasModelTAV());
    EXPECT_TRUE(p.getModelTAV() == model);

    // Another model is allowed: the end is one-way.
    open(root);
    p.setModelTAV(otherModel);
    close(root);
    EXPECT_TRUE(p.getModelTAV() == otherModel);
    EXPECT_EQ(referred(root, otherModel), 0u) << "a transient reference ties no models together";

    open(root);
    p.removeModelTAV();
    close(root);
    EXPECT_FALSE(p.hasModelTAV());
    EXPECT_EQ(p.getModelTAV().internal_intf(), nullptr);

    open(root);
    p.setModelTAV(model);
    p.setModelTAV(ImmutableModel());
    close(root);
    EXPECT_FALSE(p.hasModelTAV()) << "an empty value removes";
}

TEST_F(ModelReferenceTest, UnchangedModelReferenceCopiesNoState)
{
    Property p = newProperty();
    open(root);
    p.setModelTAV(model);
    close(root);

    Property inNamed(p.internal_intf(), named);
    open(named);
    inNamed.setModelTAV(model);
    EXPECT_EQ(ownState(inNamed, named), nullptr);
    inNamed.setModelTAV(otherModel);
    EXPECT_NE(ownState(inNamed, named), nullptr);
    close(named);
    EXPECT_TRUE(inNamed.getModelTAV() == otherModel);
    EXPECT_TRUE(p.getModelTAV() == model) << "root keeps its own";
}

TEST_F(ModelReferenceTest, DeviantKnowsItsModel)
{
    EXPECT_EQ(root.getModel(), model.internal_intf());
    EXPECT_EQ(alpha.getModel(), model.internal_intf());
    EXPECT_EQ(otherRoot.getModel(), otherModel.internal_intf());
    EXPECT_EQ(Deviant().getModel(), nullptr);
    DeviantManager modelless;
    EXPECT_EQ(modelless.getRoot().getModel(), nullptr);
}

TEST_F(ModelReferenceTest, ReferencesIntoTheSameModelOrThroughTransientPropertiesAreNotCounted)
{
    root.setOrAddReferred(root, methods(), kContainerTAV);
    root.setOrAddReferred(alpha, methods(), kContainerTAV);
    alpha.setOrAddReferred(beta, methods(), kContainerTAV);
    root.setOrAddReferred(Deviant(), methods(), kContainerTAV);
    Deviant().setOrAddReferred(otherRoot, methods(), kContainerTAV);
    root.setOrAddReferred(otherRoot, methods(), kModelTAV);
    EXPECT_TRUE(root.impl()->referredModels.empty());
    EXPECT_TRUE(alpha.impl()->referredModels.empty());

    DeviantManager modelless;
    root.setOrAddReferred(modelless.getRoot(), methods(), kContainerTAV);
    EXPECT_TRUE(root.impl()->referredModels.empty()) << "no model to refer to";
}

TEST_F(ModelReferenceTest, ReferredModelsAreCountedPerModel)
{
    Deviant otherNamed = otherManager.createDeviantWithName("other named");
    root.setOrAddReferred(otherRoot, methods(), kContainerTAV);
    root.setOrAddReferred(otherNamed, methods(), kContainerTAV);
    EXPECT_EQ(referred(root, otherModel), 2u) << "any deviant of the other model counts for it";
    EXPECT_EQ(referred(alpha, otherModel), 0u) << "counted per deviant";

    root.removeReferred(otherRoot, methods(), kContainerTAV);
    EXPECT_EQ(referred(root, otherModel), 1u);
    root.removeReferred(otherRoot, methods(), kModelTAV);
    EXPECT_EQ(referred(root, otherModel), 1u) << "transient removals don't count either";
    root.removeReferred(otherNamed, methods(), kContainerTAV);
    EXPECT_EQ(root.impl()->referredModels.count(key(otherModel)), 0u) << "the entry goes at zero";

    root.removeReferred(otherRoot, methods(), kContainerTAV);
    EXPECT_TRUE(root.impl()->referredModels.empty()) << "an absent model is ignored";
}

TEST_F(ModelReferenceTest, GeneratedReferenceKeepsTheCount)
{
    ElementImport import(make<NSImplementation::ElementImportImpl>(root), root);
    Package foreign(make<NSImplementation::PackageImpl>(otherRoot), otherRoot);
    Package foreign2(make<NSImplementation::PackageImpl>(otherRoot), otherRoot);
    Package local(make<NSImplementation::PackageImpl>(root), root);

    open(root);
    import.setImportedElement(foreign);
    EXPECT_EQ(referred(root, otherModel), 1u);
    import.setImportedElement(foreign);
    EXPECT_EQ(referred(root, otherModel), 1u) << "an unchanged write counts nothing";
    import.setImportedElement(foreign2);
    EXPECT_EQ(referred(root, otherModel), 1u) << "the replaced value is released";
    import.setImportedElement(local);
    EXPECT_TRUE(root.impl()->referredModels.empty());

    import.setImportedElement(foreign);
    import.removeImportedElement();
    EXPECT_FALSE(import.hasImportedElement());
    EXPECT_TRUE(root.impl()->referredModels.empty());
    close(root);
}

TEST_F(ModelReferenceTest, ToMutableOnlyForLiveObjectsOfThisModel)
{
    Property own = newProperty();
    Property foreign = newProperty();
    Property orphan = newProperty();
    open(root);
    own.setModelTAV(model);
    foreign.setModelTAV(otherModel);
    close(root);

    NSInterface::ModelIntf* m = model.internal_intf();
    ClassObject back = m->toMutable(root, ImmutableClassObject(ImmutableProperty(own)));
    EXPECT_TRUE(back == own);
    EXPECT_EQ(back.getDeviant(), root);

    Property ownInNamed(own.internal_intf(), named);
    ClassObject backInNamed = m->toMutable(root, ImmutableClassObject(ownInNamed));
    EXPECT_TRUE(backInNamed == own);
    EXPECT_EQ(backInNamed.getDeviant(), named) << "the object's deviant, not the asking one";

    EXPECT_EQ(m->toMutable(root, ImmutableClassObject(foreign)).internal_intf(), nullptr);
    EXPECT_TRUE(otherModel.internal_intf()->toMutable(otherRoot, ImmutableClassObject(foreign)) == foreign);
    EXPECT_EQ(m->toMutable(root, ImmutableClassObject(orphan)).internal_intf(), nullptr);
    EXPECT_EQ(m->toMutable(root, ImmutableClassObject()).internal_intf(), nullptr);

    // Gone from one deviant: no mutable handle there.
    own.internal_intf()->internal_setDeviation(beta, Deviant::InvalidObject);
    Property ownInBeta(own.internal_intf(), beta);
    EXPECT_FALSE(ownInBeta.isValid());
    EXPECT_EQ(m->toMutable(root, ImmutableClassObject(ownInBeta)).internal_intf(), nullptr);
}

} // namespace
} // namespace TAV::test
