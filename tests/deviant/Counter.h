#pragma once

// The change-tracking tests' object: Counting::Counter, generated from
// counting.tavmeta as every class of a model is, with one Integer value.

#include "kernel/Counting/NSImplementation/CounterImpl.h"
#include "kernel/Counting/NSImplementation/NSDeviant/CounterDeviantImpl.h"

#include <vector>

namespace tavtest {

using TAV::Deviant;
using TAV::NSInterface::ObjectIntf;
using Counter = Counting::NSImplementation::CounterImpl;
using CounterState = Counting::NSImplementation::CounterDeviantImpl;

// A state of a counter, from the canonical pointer the engine holds it by.
inline CounterState* stateOf(ObjectIntf* aState)
{
    return static_cast<CounterState*>(TAV::family::fromCanonical<Counting::NSInterface::CounterIntf>(aState));
}

inline int valueOf(ObjectIntf* aState)
{
    return stateOf(aState)->fValue;
}

// Counters made as a model makes its objects: a root deviant, a root state and
// an index that messages show. Each is held by one count until the holder goes,
// so that the counts the engine takes and drops never free one under a test.
class Counters {
public:
    Counters() = default;
    Counters(Counters const&) = delete;
    Counters& operator=(Counters const&) = delete;
    ~Counters()
    {
        for (Counter* c : fHeld)
            c->decRef();
    }

    Counter& make(Deviant aRoot, int aIndex = 0, int aValue = 0)
    {
        auto* c = new Counter();
        c->incRef();
        fHeld.push_back(c);
        c->rootDeviant = aRoot;
        c->objectIndex = aIndex;
        c->internal_createDeviation(aRoot);
        stateOf(c->deviations.rootState)->fValue = aValue;
        return *c;
    }

    // As a model's end does, for counters that outlive their manager: each forgets
    // its root deviant, so that going later tells nobody.
    void forgetModel() const
    {
        for (Counter* c : fHeld)
            c->deviant_markModelDestroyed();
    }

    std::size_t size() const { return fHeld.size(); }
    Counter& operator[](std::size_t i) const { return *fHeld[i]; }
    auto begin() const { return fHeld.begin(); }
    auto end() const { return fHeld.end(); }

    // The counts others hold on `c`.
    static int countsOn(Counter const& c) { return c.numRef() - 1; }

private:
    std::vector<Counter*> fHeld;
};

} // namespace tavtest
