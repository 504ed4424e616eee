// Random operation sequences on a ChangeMap checked after every step against
// a plain ordered list of pairs, and what a random walk over a dozen objects
// cannot reach.

#include "deviant/Counter.h"
#include "support/DeviantFixture.h"

#include <tav/kernel/deviant/ChangeMap.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

namespace tavtest {
namespace {

using TAV::ChangeMap;

class ChangeMapTest : public DeviantFixture {
protected:
    ChangeMapTest()
    {
        for (int i = 0; i < 12; ++i)
            objects.make(root, i);
    }

    Counters objects;
};

// Covers first-insertion order, in-place replacement, a re-entered key going
// last, the lookup cache after every kind of change, and one count per entry
// through insert, erase, clear, moves and destruction, except for a model,
// which is never counted: it would keep itself alive.
TEST_F(ChangeMapTest, AgreesWithAnOrderedListOfPairs)
{
    static Counter* sModel;
    sModel = &objects[0];
    TAV::internal::classObjectHooks().isModel = [](ObjectIntf const* o) { return o == sModel; };
    // Distinct fake states: the map never dereferences them.
    std::vector<int> stateStorage(8);
    auto stateAt = [&](int i) { return reinterpret_cast<ObjectIntf*>(&stateStorage[i]); };

    std::mt19937 random(20261122);
    for (int round = 0; round < 20; ++round) {
        {
            ChangeMap map;
            std::vector<std::pair<ObjectIntf*, ObjectIntf*>> expected;
            auto position = [&](ObjectIntf const* o) {
                return std::find_if(expected.begin(), expected.end(), [&](auto const& e) { return e.first == o; });
            };
            for (int step = 0; step < 300; ++step) {
                ObjectIntf* const object = &objects[random() % objects.size()];
                ObjectIntf* const state = stateAt(random() % stateStorage.size());
                auto const it = position(object);
                switch (random() % 5) {
                case 0:
                case 1: {
                    ObjectIntf* const previous = map.insert(object, state);
                    if (it == expected.end()) {
                        EXPECT_EQ(previous, nullptr);
                        expected.emplace_back(object, state);
                    } else {
                        EXPECT_EQ(previous, it->second);
                        it->second = state;
                    }
                    break;
                }
                case 2:
                    EXPECT_EQ(map.erase(object), it == expected.end() ? nullptr : it->second);
                    if (it != expected.end())
                        expected.erase(it);
                    break;
                case 3:
                    EXPECT_EQ(map.find(object), it == expected.end() ? nullptr : it->second);
                    EXPECT_EQ(map.contains(object), it != expected.end());
                    break;
                case 4:
                    if (unsigned const r = random() % 40; r == 0) {
                        map.clear();
                        expected.clear();
                    } else if (r == 1) {
                        map = ChangeMap();
                        expected.clear();
                    } else if (r == 2) {
                        ChangeMap moved(std::move(map));
                        map = std::move(moved);
                    } else {
                        std::vector<std::pair<ObjectIntf*, ObjectIntf*>> walked;
                        for (ChangeMap::Entry const& e : map)
                            walked.emplace_back(e.object, e.state);
                        EXPECT_EQ(walked, expected);
                    }
                    break;
                }
                ASSERT_EQ(map.size(), expected.size()) << "round " << round << " step " << step;
                ASSERT_EQ(map.empty(), expected.empty());
                for (Counter const* c : objects)
                    ASSERT_EQ(Counters::countsOn(*c), c != sModel && position(c) != expected.end() ? 1 : 0)
                        << "one count per entry";
            }
        }
        for (Counter const* c : objects)
            ASSERT_EQ(Counters::countsOn(*c), 0) << "the map's destructor releases";
    }
}

TEST_F(ChangeMapTest, HashKeepsLoadAtMostOne)
{
    ChangeMap map;
    EXPECT_GE(map.bucketCount(), 53u);
    Counters many;
    for (int i = 0; i < 500; ++i)
        map.insert(&many.make(root, i), nullptr);
    EXPECT_GE(map.bucketCount(), map.size());
    map.clear();
}

} // namespace
} // namespace tavtest
