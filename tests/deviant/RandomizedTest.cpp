// Random operation sequences on deviants checked after every step against a
// plain reference model.

#include "deviant/ChangeTrackingFixture.h"
#include "deviant/Counter.h"
#include "support/DeviantFixture.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <utility>
#include <vector>

namespace tavtest {
namespace {

class RandomizedTest : public DeviantFixture {};

// What each deviant must read: root's live value; root's value from before
// its open transaction for deviants without a state of their own; a
// deviant's own value once it wrote.
TEST_F(RandomizedTest, DeviantsReadTheirOwnWritesAndRootsCommittedValue)
{
    Counters held;
    Counter& counter = held.make(root, 1);
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

// Random begin/write/create/destroy/commit/cancel/undo/redo on a few
// hundred objects, checked after every step against plain snapshots: each
// history entry is the whole model before and after its transaction, and
// holds the level it leads to, as the deviant's entries do.
TEST_F(ChangeTrackingTest, RandomHistoryAgreesWithSnapshots)
{
    using Snapshot = std::vector<std::optional<int>>;
    struct Entry {
        Snapshot before, after;
        int level;
    };
    for (int i = 0; i < 300; ++i)
        make(i);
    Snapshot live(objects.size());
    for (std::size_t i = 0; i < live.size(); ++i)
        live[i] = static_cast<int>(i);
    Snapshot atBegin;
    std::vector<Entry> history;
    int position = 0, level = 1, last = 1, depth = 0;
    bool touched = false;
    auto existing = [&](std::mt19937& random) -> std::optional<std::size_t> {
        for (int tries = 0; tries < 20; ++tries)
            if (std::size_t i = random() % live.size(); live[i])
                return i;
        return std::nullopt;
    };

    std::mt19937 random(20261123);
    for (int step = 0; step < 4000; ++step) {
        unsigned const op = random() % 100;
        if (depth == 0 && op < 10) {
            root.beginTransaction("t");
            depth = 1;
            atBegin = live;
            touched = false;
        } else if (depth == 0 && op < 15 && position > 0) {
            // Back to before a random entry, in one step or by its level.
            int const target = static_cast<int>(random() % position);
            target == position - 1 ? root.undo() : root.undoToChangeLevel(history[target].level);
            while (position > target) {
                live = history[--position].before;
                std::swap(history[position].level, level);
            }
        } else if (depth == 0 && op < 20 && position < static_cast<int>(history.size())) {
            int const target = position + static_cast<int>(random() % (history.size() - position));
            target == position ? root.redo() : root.redoToChangeLevel(history[target].level);
            for (; position <= target; ++position) {
                live = history[position].after;
                std::swap(history[position].level, level);
            }
        } else if (depth > 0 && op < 60) {
            if (auto i = existing(random)) {
                int const value = static_cast<int>(random() % 5);
                objects[*i].setValue(root, value);
                touched |= live[*i] != value;
                live[*i] = value;
            }
        } else if (depth > 0 && op < 64) {
            Counter& c = make(0);
            root.markObjectCreated(&c);
            live.resize(objects.size());
            live.back() = 0;
            touched = true;
        } else if (depth > 0 && op < 68) {
            if (auto i = existing(random)) {
                root.notifyObjectIsAboutToBeDeleted(&objects[*i]);
                live[*i].reset();
                touched = true;
            }
        } else if (depth > 0 && op < 72) {
            root.beginTransaction("nested");
            ++depth;
        } else if (depth > 0 && op < 85) {
            ASSERT_TRUE(root.commitTransaction());
            if (--depth == 0 && touched) {
                history.resize(position);
                history.push_back(Entry{atBegin, live, level});
                if (history.size() > 50)
                    history.erase(history.begin());
                position = static_cast<int>(history.size());
                level = ++last;
            }
        } else if (depth > 0 && op < 90) {
            root.cancelTransaction();
            depth = 0;
            live = atBegin;
        }
        live.resize(objects.size()); // snapshots from before an object was made lack it
        ASSERT_EQ(root.getCurrentChangeLevel(), level) << "step " << step;
        ASSERT_EQ(root.getUndoStackLength(), position) << "step " << step;
        ASSERT_EQ(root.getRedoStackLength(), static_cast<int>(history.size()) - position);
        ASSERT_EQ(root.getUndoChangeLevelAt(0), position > 0 ? history[position - 1].level : -1);
        ASSERT_EQ(root.getRedoChangeLevelAt(0), position < static_cast<int>(history.size()) ? history[position].level : -1);
        for (std::size_t i = 0; i < live.size(); ++i) {
            ObjectIntf* const state = objects[i].deviations.rootState;
            std::optional<int> const seen =
                Deviant::isRealState(state) ? std::optional<int>(valueOf(state)) : std::nullopt;
            ASSERT_EQ(seen, live[i]) << "step " << step << " object " << i;
        }
    }
    EXPECT_GT(last, 40) << "the sequence did commit";
}

} // namespace
} // namespace tavtest
