#include "kernel/deviant/ChangeTracking.h"
#include "kernel/deviant/DeviantInternal.h"

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/DeviantManagerHelper.h>
#include <tav/kernel/util/Asserter.h>

#include <utility>

namespace TAV {

using NSInterface::ObjectIntf;

namespace internal {

OldView::OldView(DeviantImpl* owner, char const* name, ChangeMap* primary) : fImpl(name, owner->manager, ~owner->id)
{
    fImpl.readPrimary = primary;
    fImpl.readSecondary = owner->objectsDeviating;
    fImpl.maximumUndoLength = 1;
}

ModelHold::ModelHold(DeviantImpl const* impl)
{
    NSInterface::ModelIntf* model = impl && impl->manager ? impl->manager->getModel() : nullptr;
    if (model) {
        fModel = model;
        fModel->incRef();
    }
}

ModelHold::~ModelHold()
{
    if (fModel)
        fModel->decRef();
}

DeviantManagerHelper& helperOf(DeviantImpl const* impl)
{
    static DeviantManagerHelper sPlain;
    DeviantManagerHelper* helper = impl->manager ? impl->manager->getHelper() : nullptr;
    return helper ? *helper : sPlain;
}

void destroyOwnedStates(ChangeMap& map)
{
    for (ChangeMap::Entry const& entry : map)
        entry.object->deviant_destroyState(entry.state);
    map.clear();
}

void destroyChangeSet(ChangeSet* set)
{
    destroyOwnedStates(set->oldStates);
    destroyOwnedStates(set->newStates);
    delete set;
}

void resetCurrent(DeviantImpl* impl)
{
    ChangeSet& current = impl->current;
    current.name.clear();
    current.changeLevel = -1;
    current.oldStates.clear();
    current.referredModels.clear();
    current.newStates.clear();
}

void commitTransientStates(DeviantImpl* impl, ChangeMap const& touched)
{
    Deviant const d(impl);
    for (ChangeMap::Entry const& entry : touched)
        entry.object->deviant_commitTransientState(d);
}

void dropFallbacks(DeviantImpl* impl, ChangeMap const& touched)
{
    if (impl->id == 0)
        return;
    for (ChangeMap::Entry const& entry : touched)
        if (impl->objectsDeviating->find(entry.object) == Deviant::FallbackToRoot)
            impl->objectsDeviating->erase(entry.object);
}

FinalizeCommitTransaction::~FinalizeCommitTransaction()
{
    if (fFinalized || fFinalizing)
        return;
    // An exception is leaving the operation: finish without adding another.
    try {
        finish();
    } catch (...) {
    }
}

void FinalizeCommitTransaction::transientStateHasBeenCommited()
{
    DeviantAssertions::internalAssert(!fTransientStateCommitted,
                                      "Multiple calls to FinalizeCommitTransaction::transientStateHasBeenCommited");
    fTransientStateCommitted = true;
}

void FinalizeCommitTransaction::finish()
{
    DeviantAssertions::internalAssert(!fFinalized && !fFinalizing, Asserter::sNoMessage);
    fFinalizing = true;
    if (fReplayed)
        finishReplay();
    else
        finishCommit();
    fFinalized = true;
}

void FinalizeCommitTransaction::finishCommit()
{
    DeviantImpl* const impl = fImpl;
    Deviant const d(impl);
    clearReports(impl);
    // Before the depth goes: the named deviants must still see root's saved old states.
    if (!fTransientStateCommitted && !fAborted)
        commitTransientStates(impl, impl->current.oldStates);
    impl->transactionDepth = 0;
    impl->withinTransactionUndoOrRedo = false;
    if (fAborted) {
        destroyOwnedStates(impl->current.oldStates);
        // The validator's cancel has already put them back and reset the set.
        if (impl->current.changeLevel != -1)
            impl->referredModels = std::move(impl->current.referredModels);
        resetCurrent(impl);
        return;
    }
    d.clearRedoStack();
    if (impl->id != 0) {
        dropFallbacks(impl, impl->current.oldStates);
        destroyOwnedStates(impl->current.oldStates);
        destroyOwnedStates(impl->current.newStates);
        resetCurrent(impl);
        d.clearUndoStack();
    } else {
        impl->undoStack.push_back(new ChangeSet(std::move(impl->current)));
        resetCurrent(impl);
        d.setMaximumUndoStackLength(impl->maximumUndoLength);
    }
    impl->undoPosition = static_cast<int>(impl->undoStack.size());
    impl->currentChangeLevel = ++impl->lastChangeLevel;
    notifyEndTransaction(impl);
}

void FinalizeCommitTransaction::finishReplay()
{
    DeviantImpl* const impl = fImpl;
    ChangeSet& entry = *fReplayed;
    if (!fTransientStateCommitted)
        commitTransientStates(impl, entry.oldStates);
    impl->withinTransactionUndoOrRedo = false;
    impl->withinUndoOrRedoOrCancel = false;
    // The entry turns inside out, so that it serves the other direction next.
    if (!entry.newStates.empty()) {
        std::swap(entry.oldStates, entry.newStates);
    } else {
        entry.newStates = std::move(entry.oldStates);
        entry.oldStates = std::move(impl->current.oldStates);
    }
    impl->current.oldStates.clear();
    dropFallbacks(impl, entry.oldStates);
    resetCurrent(impl);
    impl->transactionDepth = 0;
    notifyEndTransaction(impl);
}

} // namespace internal

void Deviant::beginTransaction(std::string const& name) const
{
    internalAssert(fImpl != nullptr, "beginTransaction on null deviant");
    // Writes during a replay are not transactions.
    if (!fImpl || fImpl->withinUndoOrRedoOrCancel)
        return;
    if (fImpl->transactionDepth >= 1) {
        ++fImpl->transactionDepth;
        return;
    }
    internal::notifyBeginTransaction(fImpl);
    ++fImpl->transactionDepth;
    fImpl->current.name = name;
    fImpl->current.changeLevel = fImpl->currentChangeLevel;
    fImpl->current.referredModels = fImpl->referredModels;
    fImpl->withinTransactionUndoOrRedo = true;
}

bool Deviant::commitTransaction() const
{
    internal::ModelHold const hold(fImpl);
    internalAssert(fImpl != nullptr, "commitTransaction on null deviant");
    if (!fImpl || fImpl->withinUndoOrRedoOrCancel)
        return true;
    internalAssert(fImpl->transactionDepth >= 1, "transaction not started");
    if (fImpl->transactionDepth < 1)
        return true;
    if (fImpl->transactionDepth > 1) {
        --fImpl->transactionDepth;
        return true;
    }
    if (fImpl->current.oldStates.empty()) {
        // Nothing changed: no level, no entry, and the redo stack stays.
        fImpl->withinTransactionUndoOrRedo = false;
        --fImpl->transactionDepth;
        internal::resetCurrent(fImpl);
        internal::notifyEndTransaction(fImpl);
        return true;
    }
    internal::FinalizeCommitTransaction guard(fImpl);
    if (!hasUndoStack()) {
        // Nothing was saved, so there is nothing to tell a listener.
        guard.transientStateHasBeenCommited();
        guard.finish();
        return true;
    }
    internal::OldView view(fImpl, "<internal: transaction>", &fImpl->current.oldStates);
    internal::notifyModifyingListeners(fImpl, view.deviant());
    if (!internal::notifyValidatingListeners(fImpl, view.deviant())) {
        guard.abort();
        guard.finish();
        return false;
    }
    internal::collectForObservers(fImpl, view.deviant(), fImpl->current.oldStates);
    internal::commitTransientStates(fImpl, fImpl->current.oldStates);
    guard.transientStateHasBeenCommited();
    --fImpl->transactionDepth;
    fImpl->withinTransactionUndoOrRedo = false;
    internal::notifyObservingListeners(fImpl, view.deviant());
    guard.finish();
    return true;
}

void Deviant::cancelTransaction() const
{
    internalAssert(fImpl != nullptr, "cancelTransaction on null deviant");
    if (!fImpl || fImpl->withinUndoOrRedoOrCancel || fImpl->transactionDepth == 0)
        return;
    internal::DeviantImpl* const impl = fImpl;
    internal::OldView view(impl, "<internal: cancelTransaction>", &impl->current.oldStates);
    impl->withinUndoOrRedoOrCancel = true;
    struct CleanUp {
        internal::DeviantImpl* impl;
        ~CleanUp()
        {
            internal::dropFallbacks(impl, impl->current.oldStates);
            internal::destroyOwnedStates(impl->current.oldStates);
            impl->referredModels = std::move(impl->current.referredModels);
            internal::resetCurrent(impl);
            impl->transactionDepth = 0;
            impl->withinUndoOrRedoOrCancel = false;
            impl->withinTransactionUndoOrRedo = false;
            internal::notifyEndTransaction(impl);
        }
    } const cleanUp{impl};
    ChangeReport report;
    report.target = *this;
    report.source = view.deviant();
    classifyChangeMap(impl->current.oldStates, report);
    internal::helperOf(impl).cancelTransaction(report);
}

bool Deviant::willCauseCompositionCycles(NSInterface::ClassObjectIntf const* container,
                                         NSInterface::ClassObjectIntf const* contained) const
{
    internalAssert(container && contained, "null objects passed to Deviant::willCauseCompositionCycles");
    if (!container)
        return false;
    auto const identity = [](NSInterface::ClassObjectIntf const* o) -> void const* {
        return o ? o->cast(CooperativeVisitor::internal::classInfo<ReferenceCountingIntf>()) : nullptr;
    };
    void const* const target = identity(contained);
    if (identity(container) == target)
        return true;
    for (ImmutableClassObject up = container->getContainerTAV(*this); up.internal_intf();
         up = up.internal_intf()->getContainerTAV(*this))
        if (identity(up.internal_intf()) == target)
            return true;
    return false;
}

} // namespace TAV
