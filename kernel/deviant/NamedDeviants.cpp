// What moves states between a named deviant and root, and how a deviant goes.

#include "kernel/deviant/ChangeTracking.h"
#include "kernel/deviant/DeviantInternal.h"

#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/DeviantManagerHelper.h>

#include <vector>

namespace TAV {

using NSInterface::ObjectIntf;

namespace {

// The deviant's own slot counts when it says something of its own and that is
// not what root holds.
bool differsFromRoot(ChangeMap::Entry const& entry, Deviant root)
{
    ObjectIntf* const own = entry.state;
    return own && own != Deviant::FallbackToRoot && own != entry.object->internal_getDeviation(root);
}

} // namespace

void Deviant::remove() const
{
    internalAssert(fImpl != nullptr, "Deviant::remove on null deviant");
    if (!fImpl)
        return;
    internalAssert(fImpl->transactionDepth == 0, "cannot remove deviant when it is within a transaction");
    internal::tellDeviantDestroyedAndDeleteHolders(fImpl);
    clearRedoStack();
    clearUndoStack();
    // The states go while the map still holds their objects: a state's lists
    // release what they count, and no object may go before its state.
    internal::destroyStates(*fImpl->objectsDeviating);
    fImpl->removed = true;
}

bool Deviant::isDetachingFromBackend() const
{
    return fImpl->detachingFromBackend;
}

void Deviant::assignToRoot() const
{
    internalAssert(fImpl != nullptr, "assignToRoot on null deviant");
    if (!fImpl)
        return;
    internalAssert(fImpl->id != 0, "assignToRoot on root deviant");
    Deviant const root = getRootDeviant();
    internalAssert(root.isWithinTransaction(), "assignToRoot outside a transaction");
    if (fImpl->id == 0 || root.isNull())
        return;
    if (sAssertionsEnabled)
        root.internal_assertWritable(static_cast<ObjectIntf const*>(nullptr));

    // Read through the old states of an open transaction here: only what this
    // deviant has committed goes to root.
    internal::OldView view(fImpl, "<internal: assignToRoot>", &fImpl->current.oldStates);
    ChangeReport report;
    report.target = root;
    report.source = view.deviant();
    for (ChangeMap::Entry const& entry : *fImpl->objectsDeviating) {
        ObjectIntf* const object = entry.object;
        switch (classifyAssignment(object->internal_getDeviation(root), object->internal_getDeviation(report.source))) {
        case ChangeKind::Added: report.added.push_back(object); break;
        case ChangeKind::Removed: report.removed.push_back(object); break;
        case ChangeKind::Modified: report.modified.push_back(object); break;
        case ChangeKind::None: break;
        }
    }
    internal::DeviantImpl* const rootImpl = root.impl();
    for (auto const* kind : {&report.added, &report.removed, &report.modified})
        for (ObjectIntf* object : *kind)
            if (!internal::savedOldState(rootImpl, object))
                internal::saveOldState(rootImpl, object, object->deviant_getCopyOfDeviation(root));
    internal::helperOf(rootImpl).assignToRoot(report);
    rootImpl->referredModels = fImpl->referredModels;
}

void Deviant::syncFromRoot() const
{
    internalAssert(fImpl != nullptr, "syncFromRoot on null deviant");
    if (!fImpl)
        return;
    internalAssert(fImpl->id != 0, "syncFromRoot on root deviant");
    internalAssert(fImpl->transactionDepth >= 1, "syncFromRoot outside a transaction");
    if (fImpl->id == 0)
        return;
    // A copy: each step replaces an entry of the map walked.
    std::vector<ObjectIntf*> deviating;
    deviating.reserve(fImpl->objectsDeviating->size());
    for (ChangeMap::Entry const& entry : *fImpl->objectsDeviating)
        deviating.push_back(entry.object);
    for (ObjectIntf* object : deviating) {
        if (!internal::savedOldState(fImpl, object))
            internal::saveOldState(fImpl, object, object->deviant_getCopyOfDeviation(*this));
        object->internal_setDeviation(*this, FallbackToRoot);
    }
    Deviant const root = getRootDeviant();
    if (!root.isNull())
        fImpl->referredModels = root.impl()->referredModels;
    internal::notifySyncFromRoot(fImpl);
}

bool Deviant::hasObjectsDeviatingFromRoot() const
{
    if (!fImpl)
        return false;
    Deviant const root = getRootDeviant();
    for (ChangeMap::Entry const& entry : *fImpl->objectsDeviating)
        if (differsFromRoot(entry, root))
            return true;
    return false;
}

void Deviant::getObjectsDeviatingFromRoot(std::vector<ObjectIntf*>& out) const
{
    if (!fImpl)
        return;
    Deviant const root = getRootDeviant();
    for (ChangeMap::Entry const& entry : *fImpl->objectsDeviating)
        if (differsFromRoot(entry, root))
            out.push_back(entry.object);
}

} // namespace TAV
