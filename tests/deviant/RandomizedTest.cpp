// Random operation sequences checked after every step against a plain
// reference model.

#include "deviant/Counter.h"
#include "support/DeviantFixture.h"

#include <tav/kernel/deviant/ChangeMap.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <optional>
#include <random>
#include <utility>
#include <vector>

namespace tavtest {
namespace {

using TAV::ChangeMap;

class RandomizedTest : public DeviantFixture {};

TEST_F(RandomizedTest, ChangeMapAgreesWithAnOrderedListOfPairs)
{
    std::deque<Counter> objects;
    for (int i = 0; i < 12; ++i)
        objects.emplace_back(root, i);
    // Distinct fake states: the map never dereferences them.
    std::vector<int> stateStorage(8);
    auto stateAt = [&](int i) { return reinterpret_cast<ObjectIntf*>(&stateStorage[i]); };

    std::mt19937 random(20261122);
    for (int round = 0; round < 20; ++round) {
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
                break;
            case 4:
                if (random() % 20 == 0) {
                    map.clear();
                    expected.clear();
                } else {
                    std::vector<std::pair<ObjectIntf*, ObjectIntf*>> walked;
                    for (ChangeMap::Entry const& e : map)
                        walked.emplace_back(e.object, e.state);
                    EXPECT_EQ(walked, expected);
                }
                break;
            }
            ASSERT_EQ(map.size(), expected.size()) << "round " << round << " step " << step;
            for (Counter const& c : objects)
                ASSERT_EQ(c.refCount, position(&c) == expected.end() ? 0 : 1) << "one count per entry";
        }
    }
}

// What each deviant must read: root's live value; root's value from before
// its open transaction for deviants without a state of their own; a
// deviant's own value once it wrote.
TEST_F(RandomizedTest, DeviantsReadTheirOwnWritesAndRootsCommittedValue)
{
    Counter counter(root, 1);
    int rootLive = 0;
    std::optional<int> rootBefore;
    std::map<int, int> own; // by deviant index: 1 alpha, 2 beta
    Deviant const deviants[] = {root, alpha, beta};

    std::mt19937 random(7);
    int next = 1;
    for (int step = 0; step < 2000; ++step) {
        int const which = random() % 3;
        Deviant const d = deviants[which];
        switch (random() % 5) {
        case 0: // root opens or closes its transaction
            if (root.isWithinTransaction()) {
                endTransaction(root);
                rootBefore.reset();
            } else {
                beginTransaction(root);
                rootBefore = rootLive;
            }
            break;
        case 1: { // write, within a transaction of that deviant
            if (which == 0 && !root.isWithinTransaction())
                break;
            int const value = next++;
            if (which != 0)
                beginTransaction(d);
            counter.setValue(d, value);
            if (which != 0)
                endTransaction(d);
            (which == 0 ? rootLive : own[which]) = value;
            break;
        }
        case 2: // a named deviant drops its own state, as a sync from root does
            if (which != 0) {
                counter.internal_setDeviation(d, Deviant::FallbackToRoot);
                own.erase(which);
            }
            break;
        default: {
            int const expected = which == 0 ? rootLive : own.count(which) ? own[which] : rootBefore.value_or(rootLive);
            ASSERT_EQ(counter.getValue(d), expected) << "step " << step << " deviant " << d.getName();
        }
        }
    }
    while (root.isWithinTransaction())
        endTransaction(root);
    EXPECT_GT(next, 300) << "the sequence did write";
    alpha.remove();
    beta.remove();
}

} // namespace
} // namespace tavtest
