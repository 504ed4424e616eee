#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/ReportOfChanges.h>

namespace TAV {

// The one place that writes a change set's states back into a deviant. A
// domain may put in its own, to do more around the write.
class TAV_EXPORT DeviantManagerHelper {
public:
    virtual void cancelTransaction(ChangeReport const& report);
    virtual void undo(ChangeReport const& report);
    virtual void redo(ChangeReport const& report);
    virtual void assignToRoot(ChangeReport const& report);
    virtual ~DeviantManagerHelper();

    // Added objects come to exist before any state is assigned, since states
    // refer to other objects.
    void doTheJob(ChangeReport const& report);
};

} // namespace TAV
