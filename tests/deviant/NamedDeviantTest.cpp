// Named deviants against root: assignment, synchronisation, removal and the
// manager's destroy.

#include "deviant/ChangeTrackingFixture.h"

namespace tavtest {
namespace {

using ::testing::ElementsAre;

int readOr(Counter& c, Deviant d, int absent)
{
    try {
        return c.getValue(d);
    } catch (TAV::Exception const&) {
        return absent;
    }
}

TEST_F(ChangeTrackingTest, AssignToRootCarriesCommittedStatesOnlyAndRootsUndoTakesThemBack)
{
    Counter &changed = make(1), &dropped = make(2), &born = make();
    write(changed, 5, alpha);
    alpha.beginTransaction("made and dropped");
    alpha.markObjectCreated(&born);
    born.internal_createDeviation(alpha);
    born.setValue(alpha, 8);
    alpha.saveOldStateOfObject(&dropped, nullptr);
    dropped.internal_destroyDeviation(alpha);
    EXPECT_TRUE(alpha.commitTransaction());
    EXPECT_EQ(readOr(born, root, -1), -1) << "created in alpha only";

    alpha.beginTransaction("open");
    changed.setValue(alpha, 6); // not committed: not assigned
    root.beginTransaction("assign");
    alpha.assignToRoot();
    EXPECT_EQ(changed.getValue(root), 5);
    EXPECT_EQ(born.getValue(root), 8) << "an object created in the named deviant is created in root";
    EXPECT_EQ(readOr(dropped, root, -1), -1) << "and one destroyed there is destroyed";
    EXPECT_TRUE(root.commitTransaction());
    EXPECT_TRUE(alpha.commitTransaction());

    root.undo();
    EXPECT_EQ(changed.getValue(root), 1);
    EXPECT_EQ(readOr(born, root, -1), -1);
    EXPECT_EQ(dropped.getValue(root), 2);
    EXPECT_EQ(changed.getValue(alpha), 6) << "root's undo leaves the named deviant alone";
    EXPECT_EQ(born.getValue(alpha), 8);
    root.redo();
    EXPECT_EQ(born.getValue(root), 8);

    EXPECT_RAISES(alpha.assignToRoot(), TAV::Exception, "assignToRoot outside a transaction");
    root.beginTransaction();
    EXPECT_RAISES(root.assignToRoot(), TAV::Exception, "assignToRoot on root deviant");
    EXPECT_RAISES(Deviant().assignToRoot(), TAV::Exception, "assignToRoot on null deviant");
}

TEST_F(ChangeTrackingTest, SyncFromRootDropsOwnStatesUntilCancelledAndTellsObservers)
{
    Counter& c = make(1);
    Recorder& r = listener("a");
    alpha.registerObservingListener(holder(r));
    write(c, 7, alpha);
    write(c, 9);
    EXPECT_EQ(c.getValue(alpha), 7) << "root's commit does not reach the named deviant";
    EXPECT_TRUE(alpha.hasObjectsDeviatingFromRoot());

    log.clear();
    alpha.beginTransaction("sync");
    alpha.syncFromRoot();
    EXPECT_EQ(c.getValue(alpha), 9);
    alpha.cancelTransaction();
    EXPECT_EQ(c.getValue(alpha), 7) << "a cancel gives the own state back";
    EXPECT_THAT(log, ElementsAre("a:begin", "a:end"));

    alpha.beginTransaction("sync");
    alpha.syncFromRoot();
    EXPECT_TRUE(alpha.commitTransaction());
    EXPECT_EQ(c.getValue(alpha), 9);
    EXPECT_TRUE(alpha.getObjectsDeviatingFromRoot()->empty()) << "fallbacks go at commit";
    EXPECT_FALSE(alpha.hasObjectsDeviatingFromRoot());

    EXPECT_RAISES(alpha.syncFromRoot(), TAV::Exception, "syncFromRoot outside a transaction");
    EXPECT_RAISES(root.syncFromRoot(), TAV::Exception, "syncFromRoot on root deviant");
}

struct SyncWatch : TAV::ListenerBase {
    using Holder = TAV::internal::ListenerHolder<ObjectIntf, SyncWatch>;
    void onSyncFromRoot() override { ++syncs; }
    void onDeviantDestroyed() override { ++destroyed; }
    int syncs = 0, destroyed = 0;
};

TEST_F(ChangeTrackingTest, DeviatingObjectsAreThoseWhoseOwnSlotIsNotRoots)
{
    Counter &written = make(1), &untouched = make(2), &rootMade = make();
    write(written, 3, alpha);
    root.beginTransaction();
    root.markObjectCreated(&rootMade); // InvalidObject in alpha, real in root
    root.commitTransaction();
    std::vector<ObjectIntf*> found;
    alpha.getObjectsDeviatingFromRoot(found);
    EXPECT_THAT(found, ElementsAre(&written, &rootMade));
    found.clear();
    root.getObjectsDeviatingFromRoot(found);
    EXPECT_TRUE(found.empty());
    EXPECT_FALSE(root.hasObjectsDeviatingFromRoot());
    EXPECT_FALSE(Deviant().hasObjectsDeviatingFromRoot());
    (void)untouched;

    SyncWatch watch;
    alpha.registerObservingListener(new SyncWatch::Holder(&watch));
    alpha.registerModifierOnCommit(new SyncWatch::Holder(&watch));
    alpha.beginTransaction();
    alpha.syncFromRoot();
    alpha.commitTransaction();
    EXPECT_EQ(watch.syncs, 1);
    EXPECT_EQ(readOr(rootMade, alpha, -1), 0) << "created in root, seen after the sync";

    write(written, 4, alpha);
    EXPECT_EQ(Counters::countsOn(written), 1) << "alpha's change map";
    manager.removeDeviantWithName("alpha");
    EXPECT_EQ(watch.destroyed, 1) << "a modifier that also observes hears once";
    EXPECT_EQ(Counters::countsOn(written), 0) << "the removed deviant's states and map are gone";
    EXPECT_FALSE(alpha.isValid());
    EXPECT_RAISES(written.getValue(alpha), TAV::Exception, "object accessed after its deviant has been removed");
    EXPECT_EQ(manager.createDeviantWithName("alpha").getDeviantId(), 3) << "ids are never used twice";
}

TEST(DeviantManagerDestroyTest, CommitsWhatIsOpenTellsNoReportAndMarksEveryObject)
{
    std::vector<std::string> log;
    Recorder observer(log, "o");
    {
        Counters objects;
        TAV::DeviantManager manager;
        Deviant const root = manager.getRoot(), named = manager.createDeviantWithName("n");
        for (int i = 0; i < 3; ++i)
            manager.addObjectToModel(&objects.make(root, i));
        root.registerObservingListener(new Recorder::Holder(&observer));
        named.beginTransaction();
        objects[0].setValue(named, 4);
        root.beginTransaction();
        root.beginTransaction();
        objects[1].setValue(root, 5);
        EXPECT_RAISES(manager.addObjectToModel(&objects[1]), TAV::Exception, "Re-addition of object to model");

        manager.destroy();
        for (Counter* c : objects) {
            EXPECT_EQ(c->deviations.rootState, Deviant::ModelDestroyed);
            EXPECT_EQ(Counters::countsOn(*c), 0) << "every map let go, and the passes give back what they took";
        }
        EXPECT_RAISES(objects[2].getValue(root), TAV::Exception, "object accessed after its model has been destroyed");
        EXPECT_EQ(manager.objectCount(), 0u);
    }
    EXPECT_THAT(log, ElementsAre("o:begin", "o:end", "o:begin", "o:end")) << "the open and the cleanup transaction";
}

} // namespace
} // namespace tavtest
