#pragma once

// Shared by transactions, undo and redo, and listener walks; kernel-internal.

#include "kernel/deviant/DeviantImpl.h"

namespace TAV {

class DeviantManagerHelper;

namespace internal {

// The temporary deviant through which an operation reads the states from
// before it: the old states where the change map has them, the deviant's own
// states elsewhere. Never registered with the manager.
class OldView {
public:
    OldView(DeviantImpl* owner, char const* name, ChangeMap* primary);
    Deviant deviant() { return Deviant(&fImpl); }
    void readFrom(ChangeMap* primary) { fImpl.readPrimary = primary; }

private:
    DeviantImpl fImpl;
};

// Keeps the deviant's model alive through an operation that runs listeners.
class ModelHold {
public:
    explicit ModelHold(DeviantImpl const* impl);
    ~ModelHold();
    ModelHold(ModelHold const&) = delete;
    ModelHold& operator=(ModelHold const&) = delete;

private:
    NSInterface::ObjectIntf* fModel = nullptr;
};

// Finishes a commit or a replay exactly once, on every way out.
class FinalizeCommitTransaction {
public:
    // `replayed` is the undo-stack entry being played, null for a commit.
    explicit FinalizeCommitTransaction(DeviantImpl* impl, ChangeSet* replayed = nullptr)
        : fImpl(impl), fReplayed(replayed)
    {
    }
    ~FinalizeCommitTransaction();
    FinalizeCommitTransaction(FinalizeCommitTransaction const&) = delete;
    FinalizeCommitTransaction& operator=(FinalizeCommitTransaction const&) = delete;

    void transientStateHasBeenCommited();
    void abort() { fAborted = true; }
    void finish();

private:
    void finishCommit();
    void finishReplay();

    DeviantImpl* fImpl;
    ChangeSet* fReplayed;
    bool fTransientStateCommitted = false;
    bool fAborted = false;
    bool fFinalizing = false;
    bool fFinalized = false;
};

DeviantManagerHelper& helperOf(DeviantImpl const* impl);
// Deletes each real state through its object, then empties the map.
void destroyOwnedStates(ChangeMap& map);
void destroyChangeSet(ChangeSet* set);
void resetCurrent(DeviantImpl* impl);
void commitTransientStates(DeviantImpl* impl, ChangeMap const& touched);
// A named deviant forgets the objects it only ever read through to root.
void dropFallbacks(DeviantImpl* impl, ChangeMap const& touched);

// Listener walks, each over a copy of its list, calling only the holders
// that are still registered.
void notifyBeginTransaction(DeviantImpl* impl);
void notifyEndTransaction(DeviantImpl* impl);
void notifyModifyingListeners(DeviantImpl* impl, Deviant oldView);
bool notifyValidatingListeners(DeviantImpl* impl, Deviant oldView);
void collectForObservers(DeviantImpl* impl, Deviant oldView, ChangeMap const& changes);
void notifyObservingListeners(DeviantImpl* impl, Deviant oldView);
void notifySyncFromRoot(DeviantImpl* impl);
// Empties the three lists, last holder first; a listener held in several
// hears once.
void tellDeviantDestroyedAndDeleteHolders(DeviantImpl* impl);
void clearReports(DeviantImpl* impl);
void deleteHolders(DeviantImpl* impl);

} // namespace internal
} // namespace TAV
