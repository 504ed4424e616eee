#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>

#include <vector>

namespace TAV {

class ChangeMap;

// What a change did to each object, seen from the direction in which the
// states are about to be written: from `source` (an old view) into `target`.
// Objects stand in change-map order.
template <class T>
struct ReportOfChanges {
    std::vector<T> added;
    std::vector<T> removed;
    std::vector<T> modified;
    // Never filled by the library; kept for helpers that sort further.
    std::vector<T> unassigned;
    Deviant source;
    Deviant target;

    void clear()
    {
        added.clear();
        removed.clear();
        modified.clear();
        unassigned.clear();
    }
    bool empty() const { return added.empty() && removed.empty() && modified.empty() && unassigned.empty(); }
};

enum class ChangeKind { None, Added, Removed, Modified };

// The kind of change of one object, from its slot as the deviant shows it now
// and its slot in the state to be written.
TAV_EXPORT ChangeKind classifyChange(NSInterface::ObjectIntf const* present, NSInterface::ObjectIntf const* target);

// The same for an assignment of a named deviant to root: `present` is root's
// slot, `target` the named deviant's.
TAV_EXPORT ChangeKind classifyAssignment(NSInterface::ObjectIntf const* present, NSInterface::ObjectIntf const* target);

using ChangeReport = ReportOfChanges<NSInterface::ObjectIntf*>;

// Files every object of `map` into `report` by classifyChange, reading the
// present slot in report.target and the target slot in report.source.
TAV_EXPORT void classifyChangeMap(ChangeMap const& map, ChangeReport& report);

} // namespace TAV
