#include "deviant/ChangeTrackingFixture.h"

#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

namespace tavtest {
namespace {

using ::testing::ElementsAre;

TEST_F(ChangeTrackingTest, NestedTransactionsNeedAllCommitsAndOneCancelEndsThemAll)
{
    Counter& c = make(1);
    Recorder& r = listener("o");
    root.registerObservingListener(holder(r));
    root.beginTransaction("outer");
    root.beginTransaction("inner");
    root.beginTransaction("innermost");
    c.setValue(root, 2);
    EXPECT_TRUE(root.commitTransaction());
    EXPECT_TRUE(root.commitTransaction());
    EXPECT_TRUE(root.isWithinTransaction());
    EXPECT_THAT(log, ElementsAre("o:begin"));
    r.then = [&](std::string const& phase) {
        EXPECT_EQ(phase, "observe");
        EXPECT_FALSE(root.isWithinTransaction()) << "observers run outside the transaction";
    };
    EXPECT_TRUE(root.commitTransaction());
    EXPECT_THAT(log, ElementsAre("o:begin", "o:observe", "o:end"));
    EXPECT_EQ(root.getUndoNameAt(0), "outer") << "the name of the first begin";
    EXPECT_EQ(r.lastReport, (std::vector<std::size_t>{0, 0, 1}));

    // Values, levels and created objects after a cancel are walked in
    // RandomHistoryAgreesWithSnapshots; what listeners hear is not.
    log.clear();
    root.beginTransaction();
    c.setValue(root, 2); // unchanged: nothing recorded
    EXPECT_TRUE(root.commitTransaction());
    for (int i = 0; i < 3; ++i)
        root.beginTransaction();
    c.setValue(root, 3);
    root.cancelTransaction();
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_THAT(log, ElementsAre("o:begin", "o:end", "o:begin", "o:end")) << "an empty commit or a cancel tells no report";
    EXPECT_RAISES(root.commitTransaction(), TAV::Exception, "transaction not started");
}

TEST_F(ChangeTrackingTest, RejectionRestoresStateReferredModelsAndLevelAndStopsLaterValidators)
{
    TAV::MetaPropertyDescription plain{};
    TAV::MetaPropertyDescription* rows[] = {&plain};
    TAV::IntrospectiveMethods methods{};
    methods.descriptions = rows;
    static ObjectIntf* sOtherModel;
    TAV::DeviantManager other;
    sOtherModel = &make();
    other.setModel(reinterpret_cast<TAV::NSInterface::ModelIntf*>(sOtherModel));
    auto& hooks = TAV::internal::classObjectHooks();
    auto const saved = hooks;
    hooks.modelObject = [](TAV::NSInterface::ModelIntf*) { return sOtherModel; };

    Counter& c = make(5);
    Recorder &m = listener("m"), &v1 = listener("v1"), &v2 = listener("v2"), &o = listener("o");
    root.registerModifierOnCommit(holder(m));
    root.registerValidatorOnCommit(holder(v1));
    root.registerValidatorOnCommit(holder(v2));
    root.registerObservingListener(holder(o));
    v1.verdict = false;
    root.setOrAddReferred(other.getRoot(), &methods, 0);
    root.beginTransaction();
    root.setOrAddReferred(other.getRoot(), &methods, 0);
    c.setValue(root, 6);
    EXPECT_FALSE(root.commitTransaction());
    EXPECT_EQ(c.getValue(root), 5);
    EXPECT_EQ(root.impl()->referredModels, (TAV::ReferredModels{{sOtherModel, 1u}})) << "as at begin";
    EXPECT_EQ(root.getCurrentChangeLevel(), 1);
    EXPECT_EQ(root.getUndoStackLength(), 0);
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_THAT(log, ElementsAre("o:begin", "m:modify", "v1:validate", "o:end"));
    hooks = saved;
}

// A listener that throws: swallowed under the default policy; under the
// propagating one the exception reaches the caller and the commit stands.
TEST_F(ChangeTrackingTest, ListenerExceptionsFollowThePolicy)
{
    struct Case {
        TAV::ListenerExceptionPolicy policy;
        std::string phase;
        bool propagates;
    };
    for (Case const& k : {Case{TAV::SwallowListenerExceptions, "modify", false},
                          Case{TAV::SwallowListenerExceptions, "observe", false},
                          Case{TAV::LetListenerExceptionsPass, "begin", false},
                          Case{TAV::LetListenerExceptionsPass, "end", false},
                          Case{TAV::LetListenerExceptionsPass, "modify", true},
                          Case{TAV::LetListenerExceptionsPass, "observe", true}}) {
        TAV::DeviantManager m;
        Deviant const d = m.getRoot();
        d.setExceptionPolicy(k.policy);
        Counters held;
        Counter& c = held.make(d);
        Recorder r(log, "r");
        d.registerModifierOnCommit(new Recorder::Holder(&r));
        d.registerObservingListener(new Recorder::Holder(&r));
        r.throwAt = k.phase;
        d.beginTransaction();
        c.setValue(d, 1);
        if (k.propagates)
            EXPECT_THROW(d.commitTransaction(), std::runtime_error) << k.phase;
        else
            EXPECT_NO_THROW(d.commitTransaction()) << k.phase;
        EXPECT_EQ(d.getUndoStackLength(), 1) << k.phase << ": the commit stands";
        EXPECT_EQ(d.getCurrentChangeLevel(), 2) << k.phase;
        EXPECT_FALSE(d.isWithinTransaction()) << k.phase;
        d.clearUndoStack();
    }
    write(make(), 1);
    EXPECT_RAISES(root.setExceptionPolicy(TAV::LetListenerExceptionsPass), TAV::Exception, "Model must be empty");
}

TEST_F(ChangeTrackingTest, ListenersMayUnregisterDuringAWalkAndRegistrationFollowsTheHint)
{
    Recorder &a = listener("a"), &b = listener("b"), &c = listener("c"), &first = listener("first");
    for (Recorder* r : {&a, &b, &c})
        EXPECT_TRUE(root.registerObservingListener(holder(*r)));
    auto* twice = holder(a);
    EXPECT_FALSE(root.registerObservingListener(twice)) << "one registration per listener";
    delete twice;
    EXPECT_TRUE(root.registerObservingListener(holder(first), TAV::ListenerNotifyHint{0}));
    EXPECT_TRUE(root.registerObservingListener(holder(listener("ignored")), TAV::ListenerNotifyHint{7}));
    a.then = [&](std::string const&) {
        root.unregisterObservingListener(&a);
        root.unregisterObservingListener(&c);
    };
    write(make(), 1);
    EXPECT_THAT(log, ElementsAre("first:begin", "a:begin", "b:begin", "first:observe", "b:observe", "first:end",
                                 "b:end"));
    EXPECT_FALSE(root.unregisterObservingListener(&a));
    EXPECT_RAISES(root.unregisterObservingListener(nullptr), TAV::Exception, "cannot unregister null listener with deviant");
}

TEST_F(ChangeTrackingTest, ModifiersWriteIntoTheChangeSetAndLaterHoldersSeeIt)
{
    Counter& c = make();
    Counter& d = make();
    Recorder &m = listener("m"), &v = listener("v");
    root.registerModifierOnCommit(holder(m));
    root.registerValidatorOnCommit(holder(v));
    m.then = [&](std::string const&) {
        EXPECT_TRUE(root.isWithinTransaction());
        d.setValue(root, 7);
    };
    write(c, 1);
    EXPECT_EQ(m.lastReport, (std::vector<std::size_t>{0, 0, 1}));
    EXPECT_EQ(v.lastReport, (std::vector<std::size_t>{0, 0, 2}));
    root.undo();
    EXPECT_EQ(d.getValue(root), 0) << "the modifier's write is part of the entry";
}

TEST_F(ChangeTrackingTest, DisabledUndoPushesNothingAndTellsOnlyTheEnd)
{
    Recorder& r = listener("r");
    root.registerModifierOnCommit(holder(r));
    root.registerValidatorOnCommit(holder(listener("v")));
    root.registerObservingListener(holder(listener("o")));
    root.disableUndo();
    EXPECT_FALSE(root.hasUndoStack());
    Counter& c = make();
    write(c, 4);
    EXPECT_EQ(c.getValue(root), 4);
    EXPECT_EQ(root.getUndoStackLength(), 0);
    EXPECT_THAT(log, ElementsAre("o:begin", "o:end"));
}

TEST_F(ChangeTrackingTest, NamedDeviantTransactionsAreApartFromRootsAndKeepNoHistory)
{
    Counter& c = make(1);
    alpha.beginTransaction();
    c.setValue(alpha, 9);
    alpha.cancelTransaction();
    EXPECT_TRUE(alpha.getObjectsDeviatingFromRoot()->empty()) << "a cancelled first write leaves no entry";
    root.beginTransaction();
    c.setValue(root, 2);
    write(c, 3, alpha);
    EXPECT_EQ(root.impl()->current.oldStates.size(), 1u);
    root.commitTransaction();
    EXPECT_EQ(c.getValue(alpha), 3);
    EXPECT_EQ(c.getValue(root), 2);
    EXPECT_EQ(alpha.getUndoStackLength(), 0);
    alpha.beginTransaction();
    c.setValue(alpha, 4);
    alpha.cancelTransaction();
    EXPECT_EQ(c.getValue(alpha), 3);
    EXPECT_RAISES(alpha.undo(), TAV::Exception, "undo on non-root deviant");
}

// Both classification tables, row by row: (target, present) -> kind.
TEST(ReportOfChangesTest, ClassificationFollowsTheTables)
{
    using TAV::ChangeKind;
    CounterState real;
    ObjectIntf *const r = &real, *const fb = Deviant::FallbackToRoot, *const inv = Deviant::InvalidObject;
    ObjectIntf* const slots[] = {nullptr, fb, inv, r};
    // Rows: target slot; columns: present slot, in the order of `slots`.
    ChangeKind const replay[4][4] = {
        {ChangeKind::None, ChangeKind::Modified, ChangeKind::None, ChangeKind::Removed},
        {ChangeKind::Added, ChangeKind::Modified, ChangeKind::Added, ChangeKind::Modified},
        {ChangeKind::None, ChangeKind::Removed, ChangeKind::None, ChangeKind::Removed},
        {ChangeKind::Added, ChangeKind::Modified, ChangeKind::Added, ChangeKind::Modified},
    };
    ChangeKind const assignment[4][4] = {
        {ChangeKind::None, ChangeKind::None, ChangeKind::None, ChangeKind::None},
        {ChangeKind::None, ChangeKind::None, ChangeKind::None, ChangeKind::None},
        {ChangeKind::None, ChangeKind::Removed, ChangeKind::None, ChangeKind::Removed},
        {ChangeKind::Added, ChangeKind::Modified, ChangeKind::Added, ChangeKind::Modified},
    };
    for (int t = 0; t < 4; ++t)
        for (int p = 0; p < 4; ++p) {
            EXPECT_EQ(TAV::classifyChange(slots[p], slots[t]), replay[t][p]) << "target " << t << " present " << p;
            EXPECT_EQ(TAV::classifyAssignment(slots[p], slots[t]), assignment[t][p]) << "target " << t << " present " << p;
        }
}

} // namespace
} // namespace tavtest
