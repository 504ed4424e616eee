// Change tracking on generated objects: the model's forwards and the
// composition-cycle check.

#include "handles/FamilyFixture.h"
#include <tav/kernel/family/Support.h>
#include "kernel/TAV/NSImplementation/ModelImpl.h"

#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/deviant/Listeners.h>

#include <functional>

namespace TAV::test {
namespace {

TEST_F(FamilyTest, ModelForwardsChangeTrackingToTheDeviantGiven)
{
    Model model(make<NSImplementation::ModelImpl>(root), root);
    manager.setModel(model.internal_intf());
    NSInterface::ModelIntf* const m = model.internal_intf();
    Property p = newProperty();
    m->beginTransaction(root, String("rename"));
    p.setName(String("a"));
    EXPECT_TRUE(bool(m->commitTransaction(root)));
    EXPECT_EQ(root.getUndoNameAt(0), "rename");
    EXPECT_EQ(m->getCurrentChangeLevel(root), Integer(2));
    m->undo(root);
    EXPECT_FALSE(p.hasName());
    EXPECT_EQ(m->getRedoStackLength(root), Integer(1));
    EXPECT_TRUE(bool(m->isValidRedoChangeLevel(root, Integer(2))));
    m->redoToChangeLevel(root, Integer(2));
    EXPECT_EQ(p.getName(), String("a"));
    m->setLastSavedChangeLevel(root, Integer(2));
    EXPECT_EQ(m->getLastSavedChangeLevel(root), Integer(2));
    m->beginTransaction(root);
    p.setName(String("b"));
    m->commitTransaction(root);
    EXPECT_EQ(root.getUndoNameAt(0), "") << "the unnamed form";
    EXPECT_TAV_THROW(m->allowExceptions(root, Boolean(true)), "Model must be empty");
    root.clearUndoStack();
    manager.setModel(nullptr);
}

TEST_F(FamilyTest, ModelForwardsNamedDeviantWork)
{
    Model model(make<NSImplementation::ModelImpl>(root), root);
    manager.setModel(model.internal_intf());
    NSInterface::ModelIntf* const m = model.internal_intf();
    Deviant const gamma = m->createDeviantWithName(String("gamma"));
    EXPECT_EQ(gamma.getDeviantId(), 4) << "after alpha and beta";
    EXPECT_EQ(m->getDeviantName(gamma), String("gamma"));
    Property p = newProperty();
    open(alpha);
    Property(p.internal_intf(), alpha).setName(String("x"));
    close(alpha);
    EXPECT_TRUE(bool(m->hasObjectsDeviatingFromRoot(alpha)));
    EXPECT_FALSE(bool(m->hasObjectsDeviatingFromRoot(gamma)));
    Sequence<ClassObject> deviating = m->getObjectsDeviatingFromRoot(alpha);
    ASSERT_EQ(deviating.size(), 1u);
    EXPECT_TRUE(deviating.front().internal_sameObject(p));
    EXPECT_EQ(deviating.front().getDeviant(), alpha) << "handles on the deviant asked";

    EXPECT_TAV_THROW(m->removeDeviantWithName(alpha, String("gamma")), "removeDeviantWithName called on non-root deviant");
    m->removeDeviantWithName(root, String("gamma"));
    EXPECT_FALSE(gamma.isValid());
    manager.setModel(nullptr);
}

TEST_F(FamilyTest, CompositionCyclesFollowTheContainerChain)
{
    Class a = newClass();
    Class b = newClass();
    NSInterface::ClassObjectIntf* const ia = family::selfCanonical(a.internal_intf());
    NSInterface::ClassObjectIntf* const ib = family::selfCanonical(b.internal_intf());
    open(root);
    ia->setContainerTAV(root, b);
    close(root);
    EXPECT_TRUE(root.willCauseCompositionCycles(ia, ia));
    EXPECT_TRUE(root.willCauseCompositionCycles(ia, ib)) << "a is in b";
    EXPECT_FALSE(root.willCauseCompositionCycles(ib, ia));
    EXPECT_TAV_THROW(root.willCauseCompositionCycles(nullptr, ia),
                     "null objects passed to Deviant::willCauseCompositionCycles");
    open(root);
    ia->removeContainerTAV(root);
    close(root);
}

TEST_F(FamilyTest, ObjectDeletionListenersHearOfRemovalsAndMayUnregisterOthers)
{
    struct Deletions : ObjectDeletionListener {
        std::vector<NSInterface::ClassObjectIntf*> seen;
        std::function<void()> then;
        void onObjectDeleted(NSInterface::ClassObjectIntf* object) override
        {
            seen.push_back(object);
            if (then)
                then();
        }
    } first, second;
    Class c = newClass();
    NSInterface::ClassObjectIntf* const object = family::selfCanonical(c.internal_intf());
    root.addObjectToModel(object);
    root.registerObjectDeletionListener(&first);
    root.registerObjectDeletionListener(&second);
    first.then = [&] { root.unregisterObjectDeletionListener(&second); };
    root.removeObjectFromModel(object);
    EXPECT_FALSE(manager.containsObject(object));
    EXPECT_EQ(first.seen, std::vector<NSInterface::ClassObjectIntf*>{object});
    EXPECT_TRUE(second.seen.empty()) << "unregistered during the walk";
    root.unregisterObjectDeletionListener(&first);
}

} // namespace
} // namespace TAV::test
