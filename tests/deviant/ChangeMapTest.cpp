#include "deviant/Counter.h"
#include "support/DeviantFixture.h"

#include <tav/kernel/deviant/ChangeMap.h>

#include <gmock/gmock.h>

#include <deque>
#include <vector>

namespace tavtest {
namespace {

using TAV::ChangeMap;

class ChangeMapTest : public DeviantFixture {
protected:
    ChangeMapTest()
    {
        for (int i = 0; i < 4; ++i)
            objects.emplace_back(root, i);
    }

    std::vector<ObjectIntf*> walk(ChangeMap const& map)
    {
        std::vector<ObjectIntf*> order;
        for (ChangeMap::Entry const& entry : map)
            order.push_back(entry.object);
        return order;
    }

    ObjectIntf* state(int i) { return objects[i].deviations.rootState; }

    std::deque<Counter> objects;
};

TEST_F(ChangeMapTest, WalksInFirstInsertionOrderAndReplacesInPlace)
{
    ChangeMap map;
    map.insert(&objects[2], nullptr);
    map.insert(&objects[0], nullptr);
    map.insert(&objects[3], nullptr);
    EXPECT_EQ(map.insert(&objects[2], state(1)), nullptr) << "replacing null hands back null";
    EXPECT_EQ(map.insert(&objects[2], state(2)), state(1)) << "replacing hands back the previous state";
    EXPECT_EQ(walk(map), (std::vector<ObjectIntf*>{&objects[2], &objects[0], &objects[3]}));
    EXPECT_EQ(map.find(&objects[2]), state(2));

    EXPECT_EQ(map.erase(&objects[0]), nullptr);
    EXPECT_EQ(map.erase(&objects[2]), state(2));
    EXPECT_EQ(map.erase(&objects[1]), nullptr) << "absent keys erase nothing";
    map.insert(&objects[2], state(3));
    EXPECT_EQ(walk(map), (std::vector<ObjectIntf*>{&objects[3], &objects[2]})) << "a re-entered key goes last";
}

TEST_F(ChangeMapTest, LookupCacheNeverServesAStaleEntry)
{
    ChangeMap map;
    map.insert(&objects[0], state(0));
    map.insert(&objects[1], state(1));
    EXPECT_EQ(map.find(&objects[0]), state(0));
    map.insert(&objects[0], state(2));
    EXPECT_EQ(map.find(&objects[0]), state(2));
    map.erase(&objects[0]);
    EXPECT_EQ(map.find(&objects[0]), nullptr);
    EXPECT_FALSE(map.contains(&objects[0]));
    EXPECT_EQ(map.find(&objects[1]), state(1));
    map.clear();
    EXPECT_EQ(map.find(&objects[1]), nullptr);
    EXPECT_TRUE(map.empty());
}

TEST_F(ChangeMapTest, CountsNewKeysOnceAndReleasesOnEraseClearAndDestruction)
{
    {
        ChangeMap map;
        map.insert(&objects[0], nullptr);
        map.insert(&objects[0], state(0));
        map.insert(&objects[1], nullptr);
        EXPECT_EQ(objects[0].refCount, 1);
        EXPECT_EQ(objects[1].refCount, 1);
        map.erase(&objects[1]);
        EXPECT_EQ(objects[1].refCount, 0);
        map.insert(&objects[2], nullptr);
        map.clear();
        EXPECT_EQ(objects[0].refCount, 0);
        EXPECT_EQ(objects[2].refCount, 0);
        map.insert(&objects[3], nullptr);
    }
    EXPECT_EQ(objects[3].refCount, 0) << "the map's destructor releases";
}

TEST_F(ChangeMapTest, ModelsAreNotCounted)
{
    static Counter* sModel;
    sModel = &objects[0];
    TAV::internal::classObjectHooks().isModel = [](ObjectIntf const* o) { return o == sModel; };
    ChangeMap map;
    map.insert(&objects[0], nullptr);
    map.insert(&objects[1], nullptr);
    EXPECT_EQ(objects[0].refCount, 0);
    EXPECT_EQ(objects[1].refCount, 1);
    map.clear();
    EXPECT_EQ(objects[0].refCount, 0) << "clearing does not release what was never counted";
    EXPECT_EQ(objects[1].refCount, 0);
}

TEST_F(ChangeMapTest, MovedMapTakesEntriesAndCounts)
{
    ChangeMap source;
    source.insert(&objects[0], state(0));
    ChangeMap target(std::move(source));
    EXPECT_EQ(target.find(&objects[0]), state(0));
    EXPECT_EQ(objects[0].refCount, 1);
    target = ChangeMap();
    EXPECT_EQ(objects[0].refCount, 0);
}

TEST_F(ChangeMapTest, HashKeepsLoadAtMostOne)
{
    ChangeMap map;
    EXPECT_GE(map.bucketCount(), 53u);
    std::deque<Counter> many;
    for (int i = 0; i < 500; ++i) {
        many.emplace_back(root, i);
        map.insert(&many.back(), nullptr);
    }
    EXPECT_EQ(map.size(), 500u);
    EXPECT_GE(map.bucketCount(), map.size());
    for (Counter& c : many)
        EXPECT_TRUE(map.contains(&c));
    map.clear();
}

} // namespace
} // namespace tavtest
