#include "deviant/Counter.h"
#include "support/DeviantFixture.h"
#include "support/Expect.h"

#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <functional>
#include <memory>

namespace tavtest {
namespace {

class DeviationsTest : public DeviantFixture {
protected:
    DeviationsTest()
    {
        auto& hooks = TAV::internal::classObjectHooks();
        hooks.isClassObject = [](ObjectIntf const* o) { return dynamic_cast<Counter const*>(o) != nullptr; };
        hooks.metaClassName = [](ObjectIntf const* o) {
            return std::string(dynamic_cast<Counter const*>(o) ? "Counter" : "");
        };
        hooks.objectIndex = [](ObjectIntf const* o, Deviant) -> long long {
            auto const* asCounter = dynamic_cast<Counter const*>(o);
            return asCounter ? asCounter->index : -1;
        };
        counter = std::make_unique<Counter>(root, 7);
        Transaction t(root);
        counter->setValue(root, 10);
        createdBefore = CounterState::sCreated;
    }

    // The counter does not live by its counts: drop every state that names
    // it before it goes.
    ~DeviationsTest() override
    {
        for (Deviant d : {root, alpha, beta}) {
            while (d.isWithinTransaction())
                endTransaction(d);
            if (d != root && d.isValid())
                d.remove();
        }
    }

    int copiesMade() const { return CounterState::sCreated - createdBefore; }

    std::unique_ptr<Counter> counter;
    int createdBefore = 0;
};

// Values across deviants are walked step by step in RandomizedTest; here
// what it cannot see: how many copies are made and which old state is saved.
TEST_F(DeviationsTest, ReadsCopyNothingAndWritesCopyOncePerDeviantAndTransaction)
{
    EXPECT_EQ(counter->deviations.read(root, root), counter->deviations.rootState);
    EXPECT_EQ(counter->getValue(beta), 10);
    EXPECT_EQ(copiesMade(), 0) << "reading through copies nothing";
    {
        Transaction t(alpha);
        counter->setValue(alpha, 11);
        counter->setValue(alpha, 12);
        EXPECT_EQ(copiesMade(), 1) << "the first write copies root's state, later ones change the copy";
        EXPECT_EQ(alpha.getSavedOldStateOfObject(counter.get()), Deviant::FallbackToRoot)
            << "the deviant had no state of its own before";
    }
    EXPECT_EQ(alpha.getObjectsDeviatingFromRoot()->size(), 1u);
    EXPECT_TRUE(beta.getObjectsDeviatingFromRoot()->empty());

    ObjectIntf* const live = counter->deviations.rootState;
    {
        Transaction t(root);
        counter->setValue(root, 20);
        counter->setValue(root, 21);
        EXPECT_EQ(copiesMade(), 2) << "one saved copy however many writes follow";
        EXPECT_EQ(counter->deviations.rootState, live) << "root changes its live state in place";
        EXPECT_EQ(Counter::state(root.getSavedOldStateOfObject(counter.get()))->value, 10);
    }
    root.impl()->maximumUndoLength = 0;
    {
        Transaction t(root);
        counter->setValue(root, 22);
        EXPECT_EQ(root.getSavedOldStateOfObject(counter.get()), nullptr) << "without an undo stack nothing is saved";
    }
    root.impl()->maximumUndoLength = 50;
    TAV::DeviantAssertions::enableExceptionThrowing(false);
    counter->setValue(root, 30);
    EXPECT_EQ(counter->getValue(root), 30) << "with throwing off an unchecked write goes through";
    EXPECT_TRUE(root.impl()->current.oldStates.empty()) << "and outside a transaction nothing is saved";
    EXPECT_EQ(copiesMade(), 2);
}

TEST_F(DeviationsTest, SaveOldStateRecordsOnlyInTransactionAndMarksNullAsFallback)
{
    Counter other(root, 8);
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
    Counter foreignObject(otherModel.getRoot(), 3);
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
        {[&] { foreign.getStateOfObject(counter.get()); }, crossModel},
        {[&] { counter->setValue(alpha, 1); },
         " Deviant 'alpha' not opened for transactions.\nAttempt to modify object of type 'Counter' [id = 7 ] "},
        {[&] { Deviant().internal_assertWritable(counter.get()); }, "cannot operate on null deviant"},
        {[&] { root.internal_assertWritable(static_cast<ObjectIntf const*>(counter->deviations.rootState)); },
         " Deviant 'root deviant' not opened for transactions.\n at "},
        {[&] { root.internal_assertWritable(static_cast<ObjectIntf const*>(counter.get())); },
         "Attempt to modify object of type 'Counter'"}, // a class object goes on to the object form
        {[&] { Deviant().notifyObjectIsAboutToChange(counter.get()); }, "notifyObjectIsAboutToChange on null deviant"},
        {[&] { beginTransaction(alpha), alpha.notifyObjectIsAboutToBeDeleted(counter.get()); },
         "notifyObjectIsAboutToBeDeleted on non root deviant"},
        {[&] { root.addObjectToModel(counter.get()), root.addObjectToModel(counter.get()); },
         "Re-addition of object to model"},
        {[&] { Deviant().addObjectToModel(counter.get()); }, "addObjectToModel on null deviant."},
        {[&] { TAV::internal::classObjectHooks().metaClassName = nullptr, root.internal_assertWritable(counter.get()); },
         "object without metaClass"},
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
    Counter fresh(root, 12);
    Transaction t(root);
    root.markObjectCreated(&fresh);
    EXPECT_TRUE(root.wasObjectAddedThisTransaction(&fresh));
    EXPECT_FALSE(root.wasObjectAddedThisTransaction(counter.get()));
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
    EXPECT_EQ(counter->deviations.slot(alpha, root), alpha.getStateOfObject(counter.get()));
}

TEST_F(DeviationsTest, DeletionInRootSavesTheStateAndRefusesALaterAddition)
{
    Transaction t(root);
    root.notifyObjectIsAboutToBeDeleted(counter.get());
    EXPECT_EQ(counter->deviations.rootState, Deviant::InvalidObject);
    EXPECT_EQ(Counter::state(root.getSavedOldStateOfObject(counter.get()))->value, 10);
    EXPECT_RAISES(root.notifyObjectHasBeenAdded(counter.get()), TAV::Exception,
                  "notifyObjectHasBeenAdded on object already in changeset");
}

TEST_F(DeviationsTest, ModelObjectListTakesEveryDeviantsObjectsButNoModel)
{
    Counter second(root, 21);
    root.addObjectToModel(counter.get());
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
