#include "deviant/Counter.h"
#include "support/DeviantFixture.h"

#include <tav/kernel/deviant/ChangeMap.h>
#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>

namespace tavtest {
namespace {

using TAV::ChangeMap;
using ::testing::HasSubstr;

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

template <class F>
std::string failureOf(F&& f)
{
    try {
        f();
    } catch (TAV::Exception const& e) {
        return e.what();
    }
    return "no failure";
}

TEST_F(DeviationsTest, RootReadsItsOwnSlotAndNamedDeviantsReadThroughWithoutCopying)
{
    EXPECT_EQ(counter->deviations.read(root, root), counter->deviations.rootState);
    EXPECT_EQ(counter->getValue(alpha), 10);
    EXPECT_EQ(counter->getValue(beta), 10);
    EXPECT_EQ(copiesMade(), 0);
    EXPECT_TRUE(alpha.getObjectsDeviatingFromRoot()->empty());
}

TEST_F(DeviationsTest, NamedDeviantCopiesOnFirstWriteOnlyAndKeepsRootApart)
{
    {
        Transaction t(alpha);
        counter->setValue(alpha, 11);
        EXPECT_EQ(copiesMade(), 1) << "first write copies root's state into the deviant";
        counter->setValue(alpha, 12);
        counter->setValue(alpha, 13);
        EXPECT_EQ(copiesMade(), 1) << "later writes change the deviant's copy in place";
        EXPECT_EQ(alpha.getSavedOldStateOfObject(counter.get()), Deviant::FallbackToRoot)
            << "the deviant had no state of its own before";
    }
    EXPECT_EQ(counter->getValue(alpha), 13);
    EXPECT_EQ(counter->getValue(root), 10);
    EXPECT_EQ(counter->getValue(beta), 10);
    EXPECT_EQ(alpha.getObjectsDeviatingFromRoot()->size(), 1u);
    EXPECT_TRUE(beta.getObjectsDeviatingFromRoot()->empty());
}

TEST_F(DeviationsTest, UnchangedWriteCopiesNothing)
{
    Transaction t(alpha);
    counter->setValue(alpha, 10);
    EXPECT_EQ(copiesMade(), 0);
    EXPECT_TRUE(alpha.getObjectsDeviatingFromRoot()->empty());
}

TEST_F(DeviationsTest, OldStateIsSavedOncePerTransactionAndOnlyWithinOne)
{
    ObjectIntf* const live = counter->deviations.rootState;
    {
        Transaction t(root);
        counter->setValue(root, 20);
        counter->setValue(root, 21);
        EXPECT_EQ(copiesMade(), 1) << "one saved copy however many writes follow";
        EXPECT_EQ(counter->deviations.rootState, live) << "root changes its live state in place";
        auto const* saved = Counter::state(root.getSavedOldStateOfObject(counter.get()));
        ASSERT_NE(saved, nullptr);
        EXPECT_EQ(saved->value, 10);
    }
    TAV::DeviantAssertions::enableExceptionThrowing(false);
    counter->setValue(root, 30);
    EXPECT_EQ(counter->getValue(root), 30) << "with throwing off an unchecked write goes through";
    EXPECT_TRUE(root.impl()->current.oldStates.empty()) << "and outside a transaction nothing is saved";
    EXPECT_EQ(copiesMade(), 1);
}

TEST_F(DeviationsTest, WithoutUndoStackNothingIsSaved)
{
    root.impl()->maximumUndoLength = 0;
    Transaction t(root);
    counter->setValue(root, 20);
    EXPECT_EQ(copiesMade(), 0);
    EXPECT_EQ(root.getSavedOldStateOfObject(counter.get()), nullptr);
}

TEST_F(DeviationsTest, NamedDeviantDoesNotSeeRootsOpenTransaction)
{
    Transaction t(root);
    counter->setValue(root, 99);
    EXPECT_EQ(counter->getValue(root), 99);
    EXPECT_EQ(counter->getValue(alpha), 10);
    Transaction ta(alpha);
    counter->setValue(alpha, 50);
    EXPECT_EQ(counter->getValue(alpha), 50);
    EXPECT_EQ(counter->getValue(root), 99);
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

TEST_F(DeviationsTest, WritesOutsideATransactionNameDeviantAndObject)
{
    EXPECT_THAT(failureOf([&] { counter->setValue(alpha, 1); }),
                HasSubstr(" Deviant 'alpha' not opened for transactions.\n"
                          "Attempt to modify object of type 'Counter' [id = 7 ] "));
    EXPECT_THAT(failureOf([&] { Deviant().internal_assertWritable(counter.get()); }),
                HasSubstr("cannot operate on null deviant"));
    TAV::internal::classObjectHooks().metaClassName = nullptr;
    EXPECT_THAT(failureOf([&] { root.internal_assertWritable(counter.get()); }),
                HasSubstr("object without metaClass"));
}

TEST_F(DeviationsTest, StateFormOfWritableCheckAllowsReplayAndStopsPlainStatesEarly)
{
    ObjectIntf const* const state = counter->deviations.rootState;
    EXPECT_THAT(failureOf([&] { root.internal_assertWritable(state); }),
                HasSubstr(" Deviant 'root deviant' not opened for transactions.\n at "));
    root.impl()->withinUndoOrRedoOrCancel = true;
    EXPECT_EQ(failureOf([&] { root.internal_assertWritable(state); }), "no failure");
    EXPECT_THAT(failureOf([&] { counter->setValue(root, 1); }), HasSubstr("not opened"))
        << "an object's write ignores replay";
    root.impl()->withinUndoOrRedoOrCancel = false;
    EXPECT_THAT(failureOf([&] { root.internal_assertWritable(static_cast<ObjectIntf const*>(counter.get())); }),
                HasSubstr("Attempt to modify object of type 'Counter'"))
        << "a class object goes on to the object form";
}

// Every operation that takes an object refuses one of another model first,
// before any other check could let it through silently.
TEST_F(DeviationsTest, ForeignObjectsAreRefusedByEveryOperationThatTakesAnObject)
{
    TAV::DeviantManager otherModel;
    Counter foreign(otherModel.getRoot(), 3);
    ObjectIntf* const f = &foreign;
    std::function<void()> const operations[] = {
        [&] { root.getStateOfObject(f); },
        [&] { alpha.setStateOfObject(f, nullptr); },
        [&] { root.saveOldStateOfObject(f, nullptr); },
        [&] { root.getSavedOldStateOfObject(f); },
        [&] { root.markObjectCreated(f); },
        [&] { root.notifyObjectIsAboutToChange(f); },
        [&] { root.notifyObjectIsAboutToBeDeleted(f); },
        [&] { root.notifyObjectHasBeenAdded(f); },
        [&] { alpha.wasObjectAddedThisTransaction(f); },
    };
    for (std::size_t i = 0; i < std::size(operations); ++i)
        EXPECT_THAT(failureOf(operations[i]), HasSubstr("Unsafe cross-model interaction")) << "operation " << i;
}

TEST_F(DeviationsTest, SentinelsReportModelDestructionAndRemovedDeviants)
{
    {
        Transaction t(alpha);
        counter->setValue(alpha, 5);
    }
    manager.removeDeviantWithName("alpha");
    EXPECT_FALSE(alpha.isValid());
    EXPECT_EQ(alpha.getName(), "alpha") << "a removed deviant's handle stays usable";
    EXPECT_THAT(failureOf([&] { counter->getValue(alpha); }),
                HasSubstr("object accessed after its deviant has been removed"));

    Counter doomed(root, 9);
    doomed.deviant_markModelDestroyed();
    EXPECT_THAT(failureOf([&] { doomed.getValue(root); }), HasSubstr("object accessed after its model has been destroyed"));
    EXPECT_THAT(failureOf([&] { doomed.getValue(beta); }), HasSubstr("object accessed after its model has been destroyed"));
}

TEST_F(DeviationsTest, ObjectCreatedInRootTransactionIsAbsentElsewhere)
{
    Counter fresh(root, 12);
    Transaction t(root);
    root.markObjectCreated(&fresh);
    EXPECT_TRUE(root.wasObjectAddedThisTransaction(&fresh));
    EXPECT_FALSE(root.wasObjectAddedThisTransaction(counter.get()));
    EXPECT_EQ(alpha.getStateOfObject(&fresh), Deviant::InvalidObject);
    EXPECT_THAT(failureOf([&] { fresh.getValue(alpha); }),
                HasSubstr(" Deviant 'alpha' : \n object of type 'Counter' [id = 12 ] is not present"));
    EXPECT_THAT(failureOf([&] { root.markObjectCreated(&fresh); }),
                HasSubstr("object of type 'Counter' [id = 12 ] has already been created"));
    for (Deviant d : {alpha, beta})
        d.getObjectsDeviatingFromRoot()->erase(&fresh);
}

TEST_F(DeviationsTest, NamedDeviantSeesNothingOfAnObjectRootCreatedInAnOpenTransaction)
{
    Counter fresh(root, 13);
    beginTransaction(root);
    fresh.deviant_destroyState(fresh.deviations.rootState);
    fresh.deviations.rootState = nullptr;
    root.saveOldStateOfObject(&fresh, Deviant::InvalidObject);
    // beta has no own entry: it reads through to root's saved InvalidObject.
    EXPECT_THAT(failureOf([&] { fresh.getValue(beta); }), HasSubstr("is not present"));
    endTransaction(root);
}

TEST_F(DeviationsTest, ForeignDeviantActsOnRootButIsRefusedByDirectLookups)
{
    TAV::DeviantManager otherModel;
    Deviant foreign = otherModel.createDeviantWithName("alpha");
    EXPECT_EQ(counter->getValue(foreign), 10);
    EXPECT_EQ(counter->deviations.read(foreign, root), counter->deviations.rootState);
    EXPECT_THAT(failureOf([&] { foreign.getStateOfObject(counter.get()); }), HasSubstr("Unsafe cross-model interaction"));
}

TEST_F(DeviationsTest, NotificationsAreForRootOnly)
{
    EXPECT_THAT(failureOf([&] { Deviant().notifyObjectIsAboutToChange(counter.get()); }),
                HasSubstr("notifyObjectIsAboutToChange on null deviant"));
    Transaction ta(alpha);
    EXPECT_THAT(failureOf([&] { alpha.notifyObjectIsAboutToBeDeleted(counter.get()); }),
                HasSubstr("notifyObjectIsAboutToBeDeleted on non root deviant"));

    Transaction t(root);
    root.notifyObjectIsAboutToBeDeleted(counter.get());
    EXPECT_EQ(counter->deviations.rootState, Deviant::InvalidObject);
    EXPECT_EQ(Counter::state(root.getSavedOldStateOfObject(counter.get()))->value, 10);
    EXPECT_THAT(failureOf([&] { root.notifyObjectHasBeenAdded(counter.get()); }),
                HasSubstr("notifyObjectHasBeenAdded on object already in changeset"));
}

TEST_F(DeviationsTest, ModelObjectListRefusesModelsAndDoubleEntries)
{
    Counter second(root, 21);
    root.addObjectToModel(counter.get());
    alpha.addObjectToModel(&second);
    EXPECT_EQ(manager.objectCount(), 2u) << "every deviant enters into the one list of the model";
    EXPECT_THAT(failureOf([&] { root.addObjectToModel(counter.get()); }), HasSubstr("Re-addition of object to model"));
    EXPECT_THAT(failureOf([&] { Deviant().addObjectToModel(&second); }), HasSubstr("addObjectToModel on null deviant."));
    manager.removeObjectFromModel(&second);
    manager.removeObjectFromModel(&second);
    EXPECT_FALSE(manager.containsObject(&second));

    static ObjectIntf* sModel;
    sModel = &second;
    TAV::internal::classObjectHooks().isModel = [](ObjectIntf const* o) { return o == sModel; };
    EXPECT_THAT(failureOf([&] { root.addObjectToModel(&second); }),
                HasSubstr("Addition of model to model's object list"));
}

TEST_F(DeviationsTest, SlotReadsTheDeviantsOwnEntryWithoutReadingThrough)
{
    EXPECT_EQ(counter->deviations.slot(alpha, root), nullptr);
    {
        Transaction t(alpha);
        counter->setValue(alpha, 3);
    }
    EXPECT_EQ(counter->deviations.slot(alpha, root), alpha.getStateOfObject(counter.get()));
    TAV::DeviantManager otherModel;
    EXPECT_EQ(counter->deviations.slot(otherModel.getRoot(), root), counter->deviations.rootState)
        << "a foreign deviant reads the object's own root slot";
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
