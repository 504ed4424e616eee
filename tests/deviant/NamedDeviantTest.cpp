// Named deviants against root, beyond what the randomized history walks:
// open transactions, cancelled syncs, removal and the manager's destroy.

#include "deviant/ChangeTrackingFixture.h"

namespace tavtest {
namespace {

using ::testing::ElementsAre;

struct Watch : TAV::ListenerBase {
    using Holder = TAV::internal::ListenerHolder<ObjectIntf, Watch>;
    void onSyncFromRoot() override { ++syncs; }
    void onDeviantDestroyed() override { ++destroyed; }
    int syncs = 0, destroyed = 0;
};

TEST_F(ChangeTrackingTest, AssignTakesCommittedStatesAndACancelledSyncGivesOwnOnesBack)
{
    Counter &c = make(1), &born = make();
    write(c, 5, alpha);
    alpha.beginTransaction();
    alpha.markObjectCreated(&born); // gone from root, made in alpha
    born.internal_createDeviation(alpha);
    alpha.commitTransaction();
    alpha.beginTransaction();
    c.setValue(alpha, 6);
    root.beginTransaction();
    alpha.assignToRoot();
    EXPECT_EQ(c.getValue(root), 5) << "alpha's open transaction is not assigned";
    EXPECT_TRUE(born.deviant_isValid(root)) << "what alpha made is made in root";
    root.commitTransaction();
    alpha.commitTransaction();

    Watch watch;
    alpha.registerObservingListener(new Watch::Holder(&watch));
    write(c, 9);
    alpha.beginTransaction();
    alpha.syncFromRoot();
    EXPECT_EQ(c.getValue(alpha), 9);
    alpha.cancelTransaction();
    EXPECT_EQ(c.getValue(alpha), 6);
    EXPECT_EQ(watch.syncs, 1);

    struct Refusal {
        std::function<void()> call;
        char const* text;
    } const refusals[] = {
        {[&] { alpha.assignToRoot(); }, "assignToRoot outside a transaction"},
        {[&] { alpha.syncFromRoot(); }, "syncFromRoot outside a transaction"},
        {[&] { root.syncFromRoot(); }, "syncFromRoot on root deviant"},
        {[&] { root.assignToRoot(); }, "assignToRoot on root deviant"},
        {[&] { Deviant().assignToRoot(); }, "assignToRoot on null deviant"},
    };
    for (Refusal const& r : refusals)
        EXPECT_RAISES(r.call(), TAV::Exception, r.text);
}

TEST_F(ChangeTrackingTest, DeviatingObjectsAndRemoval)
{
    Counter &written = make(1), &rootMade = make();
    write(written, 3, alpha);
    root.beginTransaction();
    root.markObjectCreated(&rootMade); // InvalidObject in alpha
    root.commitTransaction();
    std::vector<ObjectIntf*> found;
    alpha.getObjectsDeviatingFromRoot(found);
    EXPECT_THAT(found, ElementsAre(&written, &rootMade));
    EXPECT_FALSE(root.hasObjectsDeviatingFromRoot());

    Watch watch; // a modifier that also observes hears once
    alpha.registerObservingListener(new Watch::Holder(&watch));
    alpha.registerModifierOnCommit(new Watch::Holder(&watch));
    EXPECT_EQ(Counters::countsOn(written), 1) << "alpha's change map";
    manager.removeDeviantWithName("alpha");
    EXPECT_EQ(watch.destroyed, 1);
    EXPECT_EQ(Counters::countsOn(written), 0) << "the removed deviant's states and map are gone";
    EXPECT_RAISES(written.getValue(alpha), TAV::Exception, "object accessed after its deviant has been removed");
    EXPECT_EQ(manager.createDeviantWithName("alpha").getDeviantId(), 3) << "ids are never used twice";
}

TEST(DeviantManagerDestroyTest, CommitsWhatIsOpenTellsNoReportAndMarksEveryObject)
{
    std::vector<std::string> log;
    Recorder observer(log, "o");
    Counters objects;
    TAV::DeviantManager manager;
    Deviant const root = manager.getRoot(), named = manager.createDeviantWithName("n");
    for (int i = 0; i < 3; ++i)
        manager.addObjectToModel(&objects.make(root, i));
    EXPECT_RAISES(manager.addObjectToModel(&objects[1]), TAV::Exception, "Re-addition of object to model");
    root.registerObservingListener(new Recorder::Holder(&observer));
    named.beginTransaction();
    objects[0].setValue(named, 4);
    root.beginTransaction();
    root.beginTransaction();
    objects[1].setValue(root, 5);

    manager.destroy();
    for (Counter* c : objects) {
        EXPECT_EQ(c->deviations.rootState, Deviant::ModelDestroyed);
        EXPECT_EQ(Counters::countsOn(*c), 0) << "every map let go, and the passes give back what they took";
    }
    EXPECT_RAISES(objects[2].getValue(root), TAV::Exception, "object accessed after its model has been destroyed");
    EXPECT_THAT(log, ElementsAre("o:begin", "o:end", "o:begin", "o:end")) << "the open and the cleanup transaction";
}

} // namespace
} // namespace tavtest
