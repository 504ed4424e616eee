// Random operation sequences on every implementation, against a std::vector
// model: contents, iteration and reference counts compared after each step.

#include "SequenceFixture.h"

#include <algorithm>
#include <random>

namespace TAV::test {
namespace {

constexpr int kPool = 6;
constexpr int kSteps = 400;

// The model of one sequence: pool indices in order.
using Model = std::vector<int>;

template <class T>
class Driver {
public:
    Driver(Deviant aRoot, SequenceKind const& aKind, std::vector<T> aPool, std::vector<Sequence<T>> aSequences)
        : root(aRoot), kind(aKind), pool(std::move(aPool)), sequences(std::move(aSequences)), models(sequences.size()),
          extra(pool.size(), 0)
    {
        if constexpr (std::is_same_v<T, Property>)
            for (T const& p : pool)
                baseline.push_back(implOf(p)->numRef());
    }

    void step(std::mt19937& rng)
    {
        auto pick = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
        std::size_t const which = static_cast<std::size_t>(pick(static_cast<int>(sequences.size())));
        Sequence<T> const& s = sequences[which];
        Model& m = models[which];
        int const v = pick(kPool);
        int const size = static_cast<int>(m.size());
        auto iteratorAt = [&](int k) {
            auto it = s.begin();
            while (k-- > 0)
                ++it;
            return it;
        };
        auto add = [&](int at) {
            if (!(kind.unique && contains(m, v)))
                m.insert(m.begin() + at, v);
        };

        switch (pick(12)) {
        case 0: s.push_back(pool[v]); add(size); break;
        case 1: s.push_front(pool[v]); add(0); break;
        case 2: { int const at = pick(size + 1); s.insert(at, pool[v]); add(at); break; }
        case 3: {
            int const at = pick(size + 1);
            auto const it = s.insert(iteratorAt(at), pool[v]);
            add(at);
            EXPECT_TRUE(*it == pool[v]) << "insert answers the new or the existing element";
            break;
        }
        case 4: if (size) { int const at = pick(size); s.erase(at); m.erase(m.begin() + at); } break;
        case 5:
            if (size) {
                int const at = pick(size);
                auto const next = s.erase(iteratorAt(at));
                m.erase(m.begin() + at);
                EXPECT_TRUE(next == iteratorAt(at)) << "erase answers the element after";
            }
            break;
        case 6: {
            int const first = pick(size + 1), last = first + pick(size - first + 1);
            s.erase(iteratorAt(first), iteratorAt(last));
            m.erase(m.begin() + first, m.begin() + last);
            break;
        }
        case 7: if (size) { s.pop_back(); m.pop_back(); } break;
        case 8: if (size) { s.pop_front(); m.erase(m.begin()); } break;
        case 9:
            if (size) {
                int const at = pick(size);
                s.replace(at, pool[v]);
                replace(m, at, v);
            }
            break;
        case 10: {
            auto const expected = static_cast<int>(std::count(m.begin(), m.end(), v));
            // Odd references go through the contract's own walk, which the
            // storage classes override; then nothing is left to remove.
            constexpr bool objects = std::is_same_v<T, Property>;
            if (objects && v % 2) {
                Generic::SequenceIntf* const seq = s.internal_sequence();
                Generic::Ref const value = Generic::ElementTraits<T>::toRef(pool[v], root);
                EXPECT_EQ(seq->Generic::SequenceIntf::generic_removeAll(root, value), expected);
            }
            EXPECT_EQ(s.removeAll(pool[v]), (objects && v % 2) ? 0 : expected);
            std::erase(m, v);
            break;
        }
        case 11: {
            // Another sequence takes this one's content: lists share a block
            // until one of them is written.
            std::size_t const to = (which + 1) % sequences.size();
            sequences[to].assign(s);
            models[to] = m;
            break;
        }
        }
    }

    void check() const
    {
        for (std::size_t k = 0; k < sequences.size(); ++k) {
            Sequence<T> const& s = sequences[k];
            Model const& m = models[k];
            ASSERT_EQ(s.size(), static_cast<int>(m.size())) << "sequence " << k;
            int i = 0;
            for (T const& element : s)
                ASSERT_TRUE(element == pool[m[static_cast<std::size_t>(i++)]]) << "sequence " << k << " at " << i - 1;
            for (int v = 0; v < kPool; ++v)
                ASSERT_EQ(s.contains(pool[v]), contains(m, v)) << "sequence " << k << " value " << v;
        }
        if constexpr (std::is_same_v<T, Property>)
            for (std::size_t v = 0; v < pool.size(); ++v) {
                int held = extra[v];
                for (Model const& m : models)
                    held += static_cast<int>(std::count(m.begin(), m.end(), static_cast<int>(v)));
                ASSERT_EQ(implOf(pool[v])->numRef(), baseline[v] + held) << "object " << v;
            }
    }

    // The counts a list's replace leaves on the elements it overwrote.
    void releaseExtra()
    {
        for (std::size_t v = 0; v < pool.size(); ++v)
            if constexpr (std::is_same_v<T, Property>)
                for (; extra[v] > 0; --extra[v])
                    implOf(pool[v])->decRef();
    }

private:
    static bool contains(Model const& m, int v) { return std::find(m.begin(), m.end(), v) != m.end(); }

    void replace(Model& m, int at, int v)
    {
        auto const index = static_cast<std::size_t>(at);
        if (kind.isList()) {
            ++extra[static_cast<std::size_t>(m[index])];
            m[index] = v;
        } else if (m[index] != v && !(kind.unique && contains(m, v))) {
            m[index] = v;
        }
    }

    Deviant root;
    SequenceKind kind;
    std::vector<T> pool;
    std::vector<Sequence<T>> sequences;
    std::vector<Model> models;
    std::vector<int> extra;
    std::vector<int> baseline; // the counts of the handles on the pool
};

class SequenceRandomizedTest : public SequenceTest {
protected:
    template <class T>
    void run(std::vector<T> pool)
    {
        for (unsigned seed = 1; seed <= 4; ++seed) {
            SCOPED_TRACE(testing::Message() << "seed " << seed);
            std::mt19937 rng(seed);
            Driver<T> driver(root, GetParam(), pool, {make<T>(), make<T>()});
            for (int i = 0; i < kSteps && !HasFatalFailure(); ++i) {
                driver.step(rng);
                driver.check();
            }
            driver.releaseExtra();
        }
    }
};

TEST_P(SequenceRandomizedTest, ReferencesFollowTheModel)
{
    run(properties(kPool));
}

TEST_P(SequenceRandomizedTest, ValuesFollowTheModel)
{
    std::vector<String> pool;
    for (char c = 'a'; c < 'a' + kPool; ++c)
        pool.emplace_back(std::string(1, c));
    run(pool);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SequenceRandomizedTest, ::testing::ValuesIn(kSequenceKinds),
                         [](auto const& info) { return std::string(info.param.name); });

} // namespace
} // namespace TAV::test
