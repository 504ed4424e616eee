// Random operation sequences on deviants checked after every step against a
// plain reference model.

#include "deviant/ChangeTrackingFixture.h"
#include "deviant/Counter.h"
#include "support/DeviantFixture.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace tavtest {
namespace {

class RandomizedTest : public DeviantFixture {};

std::optional<int> readIn(Counter& c, Deviant d)
{
    try {
        return c.getValue(d);
    } catch (TAV::Exception const&) {
        return std::nullopt;
    }
}

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
// hundred objects, with a named deviant that writes, synchronises and is
// assigned to root, checked after every step against plain snapshots: each
// history entry is the whole model before and after its transaction, holds
// the level it leads to, as the deviant's entries do, and the objects it
// touched. The named deviant shows root as committed at its last sync plus
// its own writes; it holds a state of its own for what it wrote and for
// what root's commits, undos and redos touched since, and an assignment
// makes root's live value that of each of those.
TEST_F(ChangeTrackingTest, RandomHistoryAgreesWithSnapshots)
{
    using Snapshot = std::vector<std::optional<int>>;
    struct Entry {
        Snapshot before, after;
        int level;
        std::set<std::size_t> touched;
    };
    for (int i = 0; i < 300; ++i)
        make(i);
    Snapshot live(objects.size());
    for (std::size_t i = 0; i < live.size(); ++i)
        live[i] = static_cast<int>(i);
    Snapshot atBegin, alphaView = live;
    std::vector<Entry> history;
    int position = 0, level = 1, last = 1, depth = 0, assigned = 0;
    bool touched = false;
    std::set<std::size_t> touchedNow, alphaOwn;
    auto touch = [&](std::size_t i) {
        touched = true;
        touchedNow.insert(i);
    };
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
                alphaOwn.insert(history[position].touched.begin(), history[position].touched.end());
            }
        } else if (depth == 0 && op < 20 && position < static_cast<int>(history.size())) {
            int const target = position + static_cast<int>(random() % (history.size() - position));
            target == position ? root.redo() : root.redoToChangeLevel(history[target].level);
            for (; position <= target; ++position) {
                live = history[position].after;
                std::swap(history[position].level, level);
                alphaOwn.insert(history[position].touched.begin(), history[position].touched.end());
            }
        } else if (depth > 0 && op < 60) {
            if (auto i = existing(random)) {
                int const value = static_cast<int>(random() % 5);
                objects[*i].setValue(root, value);
                if (live[*i] != value)
                    touch(*i);
                live[*i] = value;
            }
        } else if (depth > 0 && op < 64) {
            Counter& c = make(0);
            root.markObjectCreated(&c);
            live.resize(objects.size());
            live.back() = 0;
            touch(objects.size() - 1);
            alphaOwn.insert(objects.size() - 1); // absent there at once
        } else if (depth > 0 && op < 68) {
            if (auto i = existing(random)) {
                root.notifyObjectIsAboutToBeDeleted(&objects[*i]);
                live[*i].reset();
                touch(*i);
            }
        } else if (depth > 0 && op < 72) {
            root.beginTransaction("nested");
            ++depth;
        } else if (depth > 0 && op < 85) {
            ASSERT_TRUE(root.commitTransaction());
            if (--depth == 0 && touched) {
                history.resize(position);
                history.push_back(Entry{atBegin, live, level, touchedNow});
                alphaOwn.insert(touchedNow.begin(), touchedNow.end());
                touchedNow.clear();
                if (history.size() > 50)
                    history.erase(history.begin());
                position = static_cast<int>(history.size());
                level = ++last;
            }
        } else if (depth > 0 && op < 90) {
            root.cancelTransaction();
            depth = 0;
            live = atBegin;
            touchedNow.clear();
        } else if (op >= 90 && op < 94) {
            std::size_t const i = random() % alphaView.size();
            int const value = static_cast<int>(random() % 5);
            if (alphaView[i]) {
                alpha.beginTransaction("alpha");
                objects[i].setValue(alpha, value);
                ASSERT_TRUE(alpha.commitTransaction());
                if (alphaView[i] != value)
                    alphaOwn.insert(i);
                alphaView[i] = value;
            }
        } else if (op >= 94 && op < 96) {
            alpha.beginTransaction("sync");
            alpha.syncFromRoot();
            ASSERT_TRUE(alpha.commitTransaction());
            alphaView = depth > 0 ? atBegin : live;
            alphaOwn.clear();
        } else if (op >= 96 && depth > 0) {
            alpha.assignToRoot();
            ++assigned;
            for (std::size_t i : alphaOwn) {
                if (alphaView[i] || live[i])
                    touch(i);
                live[i] = alphaView[i];
            }
        }
        live.resize(objects.size()); // snapshots from before an object was made lack it
        alphaView.resize(objects.size());
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
            // Absent objects raise: looked at now and then, as a throw costs.
            if (alphaView[i] || step % 16 == 0) {
                ASSERT_EQ(readIn(objects[i], alpha), alphaView[i]) << "step " << step << " object " << i << " in alpha";
            }
        }
    }
    EXPECT_GT(last, 40) << "the sequence did commit";
    EXPECT_GT(assigned, 30) << "and assign";
}

} // namespace
} // namespace tavtest
