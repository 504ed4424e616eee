#include "deviant/Counter.h"
#include "support/DeviantFixture.h"
#include "support/Expect.h"

#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <functional>

namespace tavtest {
namespace {

class DeviationsTest : public DeviantFixture {
protected:
    DeviationsTest()
    {
        Transaction t(root);
        counter->setValue(root, 10);
    }

    ~DeviationsTest() override
    {
        for (Deviant d : {root, alpha, beta}) {
            while (d.isWithinTransaction())
                endTransaction(d);
            if (d != root && d.isValid())
                d.remove();
        }
    }

    Counters held;
    Counter* const counter = &held.make(root, 7);
};

// Values across deviants are walked step by step in RandomizedTest; here
// what it cannot see: which state a write copies and which old state is saved.
TEST_F(DeviationsTest, ReadsCopyNothingAndWritesCopyOncePerDeviantAndTransaction)
{
    ObjectIntf* const live = counter->deviations.rootState;
    EXPECT_EQ(counter->deviations.read(root, root), live);
    EXPECT_EQ(counter->getValue(beta), 10);
    EXPECT_EQ(counter->deviations.slot(beta, root), nullptr) << "reading through copies nothing";
    {
        Transaction t(alpha);
        counter->setValue(alpha, 11);
        ObjectIntf* const copy = alpha.getStateOfObject(counter);
        counter->setValue(alpha, 12);
        EXPECT_NE(copy, live);
        EXPECT_EQ(alpha.getStateOfObject(counter), copy) << "the first write copies root's state, later ones change the copy";
        EXPECT_EQ(alpha.getSavedOldStateOfObject(counter), Deviant::FallbackToRoot)
            << "the deviant had no state of its own before";
    }
    EXPECT_EQ(alpha.getObjectsDeviatingFromRoot()->size(), 1u);
    EXPECT_TRUE(beta.getObjectsDeviatingFromRoot()->empty());
    {
        Transaction t(root);
        counter->setValue(root, 20);
        ObjectIntf* const saved = root.getSavedOldStateOfObject(counter);
        counter->setValue(root, 21);
        EXPECT_EQ(root.getSavedOldStateOfObject(counter), saved) << "one saved copy however many writes follow";
        EXPECT_EQ(valueOf(saved), 10);
        EXPECT_EQ(counter->deviations.rootState, live) << "root changes its live state in place";
    }
    root.impl()->maximumUndoLength = 0;
    {
        Transaction t(root);
        counter->setValue(root, 22);
        EXPECT_EQ(root.getSavedOldStateOfObject(counter), nullptr) << "without an undo stack nothing is saved";
    }
    root.impl()->maximumUndoLength = 50;
    TAV::DeviantAssertions::enableExceptionThrowing(false);
    counter->setValue(root, 30);
    EXPECT_EQ(counter->getValue(root), 30) << "with throwing off an unchecked write goes through";
    EXPECT_TRUE(root.impl()->current.oldStates.empty()) << "and outside a transaction nothing is saved";
}

TEST_F(DeviationsTest, SaveOldStateRecordsOnlyInTransactionAndMarksNullAsFallback)
{
    Counter& other = held.make(root, 8);
    root.saveOldStateOfObject(&other, nullptr);
    EXPECT_EQ(root.getSavedOldStateOfObject(&other), nullptr);
    EXPECT_TRUE(root.impl()->current.oldStates.empty());

    Transaction t(root);
    EXPECT_EQ(root.getSavedOldStateOfObject(&other), nullptr) << "not saved";
    root.saveOldStateOfObject(&other, nullptr);
    EXPECT_EQ(root.getSavedOldStateOfObject(&other), Deviant::FallbackToRoot) << "saved with no state";
}

// Every operation that takes an object refuses one of another model first,
// before any other check could let it through silently; the other rows are
// the texts of refused writes and notifications.
TEST_F(DeviationsTest, RefusalsNameWhatWasRefused)
{
    TAV::DeviantManager otherModel;
    Counters foreignHeld;
    Counter& foreignObject = foreignHeld.make(otherModel.getRoot(), 3);
    ObjectIntf* const f = &foreignObject;
    Deviant const foreign = otherModel.createDeviantWithName("alpha");
    char const* const crossModel = "Unsafe cross-model interaction";
    std::pair<std::function<void()>, char const*> const cases[] = {
        {[&] { root.getStateOfObject(f); }, crossModel},
        {[&] { alpha.setStateOfObject(f, nullptr); }, crossModel},
        {[&] { root.saveOldStateOfObject(f, nullptr); }, crossModel},
        {[&] { root.getSavedOldStateOfObject(f); }, crossModel},
        {[&] { root.markObjectCreated(f); }, crossModel},
        {[&] { root.notifyObjectIsAboutToChange(f); }, crossModel},
        {[&] { root.notifyObjectIsAboutToBeDeleted(f); }, crossModel},
        {[&] { root.notifyObjectHasBeenAdded(f); }, crossModel},
        {[&] { alpha.wasObjectAddedThisTransaction(f); }, crossModel},
        {[&] { foreign.getStateOfObject(counter); }, crossModel},
        {[&] { counter->setValue(alpha, 1); },
         " Deviant 'alpha' not opened for transactions.\nAttempt to modify object of type 'Counter' [id = 7 ] "},
        {[&] { Deviant().internal_assertWritable(counter); }, "cannot operate on null deviant"},
        // A class object, or a state of one, given as a plain object goes on to the class-object form.
        {[&] { root.internal_assertWritable(static_cast<ObjectIntf const*>(counter->deviations.rootState)); },
         " Deviant 'root deviant' not opened for transactions.\nAttempt to modify object of type 'Counter'"},
        {[&] { root.internal_assertWritable(static_cast<ObjectIntf const*>(counter)); },
         " Deviant 'root deviant' not opened for transactions.\nAttempt to modify object of type 'Counter' [id = 7 ] "},
        {[&] { Deviant().notifyObjectIsAboutToChange(counter); }, "notifyObjectIsAboutToChange on null deviant"},
        {[&] { beginTransaction(alpha), alpha.notifyObjectIsAboutToBeDeleted(counter); },
         "notifyObjectIsAboutToBeDeleted on non root deviant"},
        {[&] { root.addObjectToModel(counter), root.addObjectToModel(counter); },
         "Re-addition of object to model"},
        {[&] { Deviant().addObjectToModel(counter); }, "addObjectToModel on null deviant."},
        {[&] { TAV::internal::classObjectHooks().metaClassName = nullptr, root.internal_assertWritable(counter); },
         "object without metaClass"},
        // Without the family's hooks a state is a plain object, refused in the plain form.
        {[&] {
             TAV::internal::classObjectHooks().isClassObject = nullptr;
             root.internal_assertWritable(static_cast<ObjectIntf const*>(counter->deviations.rootState));
         },
         " Deviant 'root deviant' not opened for transactions.\n at "},
    };
    for (auto const& row : cases) { // clang 14 cannot capture a structured binding
        EXPECT_RAISES(row.first(), TAV::Exception, row.second);
        while (alpha.isWithinTransaction())
            endTransaction(alpha);
    }
}

TEST_F(DeviationsTest, ReplayMayWriteStatesButNotObjects)
{
    ObjectIntf const* const state = counter->deviations.rootState;
    root.impl()->withinUndoOrRedoOrCancel = true;
    EXPECT_NO_THROW(root.internal_assertWritable(state));
    EXPECT_RAISES(counter->setValue(root, 1), TAV::Exception, "not opened");
    root.impl()->withinUndoOrRedoOrCancel = false;
}

// markObjectCreated hides the object from named deviants by an entry of
// their own; one without that entry reads through to root's saved old state.
TEST_F(DeviationsTest, ObjectCreatedInRootTransactionIsAbsentElsewhere)
{
    Counter& fresh = held.make(root, 12);
    Transaction t(root);
    root.markObjectCreated(&fresh);
    EXPECT_TRUE(root.wasObjectAddedThisTransaction(&fresh));
    EXPECT_FALSE(root.wasObjectAddedThisTransaction(counter));
    EXPECT_EQ(alpha.getStateOfObject(&fresh), Deviant::InvalidObject);
    EXPECT_RAISES(fresh.getValue(alpha), TAV::Exception,
                  " Deviant 'alpha' : \n object of type 'Counter' [id = 12 ] is not present");
    EXPECT_RAISES(root.markObjectCreated(&fresh), TAV::Exception,
                  "object of type 'Counter' [id = 12 ] has already been created");
    beta.getObjectsDeviatingFromRoot()->erase(&fresh);
    EXPECT_RAISES(fresh.getValue(beta), TAV::Exception, " Deviant 'beta' : \n object of type 'Counter' [id = 12 ] is not present");
    alpha.getObjectsDeviatingFromRoot()->erase(&fresh);
}

// A foreign deviant acts on root (refused by direct lookups, above); slot()
// reads a deviant's own entry without reading through.
TEST_F(DeviationsTest, ForeignDeviantsReadRootAndSlotsReadOnlyTheirOwnEntry)
{
    TAV::DeviantManager otherModel;
    Deviant const foreign = otherModel.createDeviantWithName("alpha");
    EXPECT_EQ(counter->getValue(foreign), 10);
    EXPECT_EQ(counter->deviations.read(foreign, root), counter->deviations.rootState);
    EXPECT_EQ(counter->deviations.slot(otherModel.getRoot(), root), counter->deviations.rootState);
    EXPECT_EQ(counter->deviations.slot(alpha, root), nullptr);
    {
        Transaction t(alpha);
        counter->setValue(alpha, 3);
    }
    EXPECT_EQ(counter->deviations.slot(alpha, root), alpha.getStateOfObject(counter));
}

TEST_F(DeviationsTest, DeletionInRootSavesTheStateAndRefusesALaterAddition)
{
    Transaction t(root);
    root.notifyObjectIsAboutToBeDeleted(counter);
    EXPECT_EQ(counter->deviations.rootState, Deviant::InvalidObject);
    EXPECT_EQ(valueOf(root.getSavedOldStateOfObject(counter)), 10);
    EXPECT_RAISES(root.notifyObjectHasBeenAdded(counter), TAV::Exception,
                  "notifyObjectHasBeenAdded on object already in changeset");
}

TEST_F(DeviationsTest, ModelObjectListTakesEveryDeviantsObjectsButNoModel)
{
    Counter& second = held.make(root, 21);
    root.addObjectToModel(counter);
    alpha.addObjectToModel(&second);
    EXPECT_EQ(manager.objectCount(), 2u) << "every deviant enters into the one list of the model";
    manager.removeObjectFromModel(&second);
    manager.removeObjectFromModel(&second);
    EXPECT_FALSE(manager.containsObject(&second));

    static ObjectIntf* sModel;
    sModel = &second;
    TAV::internal::classObjectHooks().isModel = [](ObjectIntf const* o) { return o == sModel; };
    EXPECT_RAISES(root.addObjectToModel(&second), TAV::Exception, "Addition of model to model's object list");
}

TEST_F(DeviationsTest, CrossModelLinksDependOnModelAndPersistence)
{
    TAV::MetaPropertyDescription plain{};
    TAV::MetaPropertyDescription transient{};
    transient.persistence = 1;
    TAV::MetaPropertyDescription* rows[] = {nullptr, &plain, &transient};
    TAV::IntrospectiveMethods methods{};
    methods.descriptions = rows;

    TAV::DeviantManager otherModel;
    EXPECT_FALSE(root.isInDifferentModel(alpha, &methods, 1));
    EXPECT_TRUE(root.isInDifferentModel(otherModel.getRoot(), &methods, 1));
    EXPECT_FALSE(root.isInDifferentModel(otherModel.getRoot(), &methods, 2));
}

} // namespace
} // namespace tavtest
