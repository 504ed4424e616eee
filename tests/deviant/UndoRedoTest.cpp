#include "deviant/ChangeTrackingFixture.h"

namespace tavtest {
namespace {

using ::testing::ElementsAre;

// Levels, undo, redo and their level-wise forms are walked step by step in
// RandomHistoryAgreesWithSnapshots; here what it never asks.
TEST_F(ChangeTrackingTest, LevelQueriesAtTheEdges)
{
    write(make(), 1);
    EXPECT_EQ(root.getUndoChangeLevelAt(1), -1);
    EXPECT_EQ(root.getUndoChangeLevelAt(-1), -1);
    EXPECT_FALSE(root.isValidUndoChangeLevel(root.getCurrentChangeLevel()));
    EXPECT_TRUE(root.isValidUndoChangeLevel(1));
    root.undo();
    EXPECT_EQ(root.getRedoNameAt(0), "write");
    EXPECT_TRUE(root.isValidRedoChangeLevel(2));
    root.redoToChangeLevel(1); // already current: nothing
    EXPECT_EQ(root.getRedoStackLength(), 1);
}

TEST_F(ChangeTrackingTest, FailuresNameTheOperation)
{
    std::vector<std::pair<std::function<void()>, char const*>> const cases = {
        {[&] { root.beginTransaction(); root.undo(); }, "cannot undo within a transaction"},
        {[&] { root.undoToChangeLevel(7); }, "invalid change level for undoToChangeLevel"},
        {[&] { root.redoToChangeLevel(7); }, "invalid change level for redoToChangeLevel"},
        {[&] { Deviant::undoGroup({}); }, "empty change level list"},
        {[&] { TAV::UndoRedoChain chain{alpha, 1, nullptr}; root.executeChangeSetOnTop(true, &chain); },
         "chain traversal error"},
        {[&] { Deviant().redo(); }, "redo on null deviant"},
        {[&] { Deviant().getRedoNameAt(0); }, "getNameOfRedo on null deviant"},
        {[&] { alpha.setMaximumUndoStackLength(3); }, "setMaximumUndoStackLength on non-root deviant"},
        {[&] { root.clearRedoStackFromAndIncluding(1); }, "aChangeLevel > getCurrentChangeLevel()"},
    };
    for (auto const& row : cases) { // clang 14 cannot capture a structured binding
        EXPECT_RAISES(row.first(), TAV::Exception, row.second);
        root.cancelTransaction();
    }
}

TEST_F(ChangeTrackingTest, OldestEntryIsDroppedOnceTheStackIsFull)
{
    Counter& c = make();
    for (int i = 1; i <= 51; ++i)
        write(c, i);
    EXPECT_EQ(root.getUndoStackLength(), 50);
    EXPECT_FALSE(root.isValidUndoChangeLevel(1)) << "the oldest level is gone";
    EXPECT_TRUE(root.isValidUndoChangeLevel(2));
    root.undoToChangeLevel(2);
    EXPECT_EQ(c.getValue(root), 1);
    root.redoToChangeLevel(7);
    root.setMaximumUndoStackLength(10);
    EXPECT_EQ(root.getUndoStackLength(), 5) << "dropping from the front leaves the position as it was";
    EXPECT_EQ(root.getRedoStackLength(), 5);
    root.setMaximumUndoStackLength(-5);
    EXPECT_EQ(root.getMaximumUndoStackLength(), 0);
    EXPECT_FALSE(root.hasUndoStack());
}

TEST_F(ChangeTrackingTest, RedoBringsBackACreatedObjectWithItsIdentityAndState)
{
    Counter& c = make();
    Recorder& r = listener("o");
    root.registerObservingListener(holder(r));
    root.beginTransaction();
    root.markObjectCreated(&c);
    c.setValue(root, 8);
    root.commitTransaction();
    EXPECT_EQ(r.lastReport, (std::vector<std::size_t>{1, 0, 0})) << "added";
    root.undo();
    EXPECT_EQ(r.lastReport, (std::vector<std::size_t>{0, 1, 0})) << "removed";
    EXPECT_EQ(c.deviations.rootState, Deviant::InvalidObject);
    ObjectIntf* const copies = root.impl()->undoStack[0]->oldStates.find(&c);
    root.redo();
    root.undo();
    root.redo();
    EXPECT_EQ(root.impl()->undoStack[0]->oldStates.find(&c), Deviant::InvalidObject);
    EXPECT_EQ(root.impl()->undoStack[0]->newStates.find(&c), copies) << "copied once, at the first play";
    EXPECT_TRUE(c.deviant_isValid(root));
    EXPECT_EQ(c.getValue(root), 8);
}

TEST_F(ChangeTrackingTest, ChainOverTwoModelsTellsTheLaterModelFirst)
{
    TAV::DeviantManager second;
    Deviant const other = second.getRoot();
    Counter& a = make();
    Counter& b = objects.make(other);
    root.registerObservingListener(holder(listener("first")));
    other.registerObservingListener(holder(listener("second")));
    write(a, 1);
    write(a, 2);
    write(b, 1, other);
    log.clear();
    Deviant::undoGroup({{root, 1}, {other, 1}});
    EXPECT_EQ(a.getValue(root), 0);
    EXPECT_EQ(b.getValue(other), 0);
    EXPECT_THAT(log, ElementsAre("first:begin", "first:end", "first:begin", "second:begin", "second:observe",
                                 "second:end", "first:observe", "first:end"))
        << "the intermediate step tells no observer";
    Deviant::redoGroup({{root, 3}, {other, 2}});
    EXPECT_EQ(a.getValue(root), 2);
    EXPECT_EQ(b.getValue(other), 1);
    other.clearUndoStack();
    b.deviant_markModelDestroyed(); // as the end of b's model does, before `second` goes
}

} // namespace
} // namespace tavtest
