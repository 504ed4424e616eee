#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/deviant/DeviantHead.h>

namespace TAV {

// How a metaclass makes an empty state: the root form checks that it is
// given the root deviant.
struct StateFactory {
    NSInterface::ObjectIntf* (*createRoot)(Deviant d);
    NSInterface::ObjectIntf* (*createNamed)(Deviant d);
};

// Embedded in every object implementation: the object and its root state.
// All pointers are canonical ObjectIntf* (first-base chain).
class TAV_EXPORT Deviations {
public:
    NSInterface::ObjectIntf* owner = nullptr;
    NSInterface::ObjectIntf* rootState = nullptr;

    // The state to read under `d`; `objectRoot` is the object's root deviant.
    NSInterface::ObjectIntf* read(Deviant d, Deviant objectRoot) const
    {
        // The common case touches no map: root, alive, with a real state.
        if (d == objectRoot && d.impl() && !internal::headOf(d.impl()).removed && Deviant::isRealState(rootState))
            return rootState;
        return readSlow(d, objectRoot);
    }

    // The state to write under `d`, copied on the deviant's first write and
    // saved for undo on the first write within a transaction.
    NSInterface::ObjectIntf* write(Deviant d, Deviant objectRoot, StateFactory const& factory);

    // The deviant's own slot, with no read-through and no checks beyond
    // normalising the deviant.
    NSInterface::ObjectIntf* slot(Deviant d, Deviant objectRoot) const;

    // A new state for `d` holding `source` (read under `sourceDeviant`);
    // null and sentinels copy to themselves.
    static NSInterface::ObjectIntf* copyState(Deviant d, NSInterface::ObjectIntf* source, Deviant sourceDeviant,
                                              StateFactory const& factory);

private:
    NSInterface::ObjectIntf* readSlow(Deviant d, Deviant objectRoot) const;
    Deviant normalise(Deviant d, Deviant objectRoot) const;
    NSInterface::ObjectIntf* ownState(Deviant d) const;
    NSInterface::ObjectIntf* readThrough(Deviant d, Deviant root) const;
};

} // namespace TAV
