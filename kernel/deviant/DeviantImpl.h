#pragma once

// The engine's record of a deviant, private to change tracking; in-tree tests
// and benchmarks reach in through the source tree.

#include <tav/Export.h>
#include <tav/kernel/deviant/ChangeMap.h>
#include <tav/kernel/deviant/Deviant.h>

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace TAV {

class DeviantManager;
class ObjectDeletionListener;

namespace internal {
class ListenerHolderBase;
}

// Models referred to across models, by the model object, with a count.
using ReferredModels = std::map<NSInterface::ObjectIntf*, unsigned>;

// The record of one transaction, and the entry of the undo stack.
struct TAV_EXPORT ChangeSet {
    std::string name;
    int changeLevel = -1;
    ChangeMap oldStates;
    ReferredModels referredModels;
    ChangeMap newStates;
};

namespace internal {

class TAV_EXPORT DeviantImpl {
public:
    DeviantImpl(std::string aName, DeviantManager* aManager, int aId);
    ~DeviantImpl();
    DeviantImpl(DeviantImpl const&) = delete;
    DeviantImpl& operator=(DeviantImpl const&) = delete;

    std::string name;
    DeviantManager* manager;
    int id;
    ChangeMap* objectsDeviating;
    ChangeSet current;
    ChangeMap* readPrimary;
    ChangeMap* readSecondary = nullptr;
    int transactionDepth = 0;
    int currentChangeLevel = 1;
    int lastChangeLevel = 1;
    std::deque<ChangeSet*> undoStack;
    int undoPosition = 0;
    int maximumUndoLength;
    bool withinTransactionUndoOrRedo = false;
    bool removed = false;
    bool withinUndoOrRedoOrCancel = false;
    std::vector<ListenerHolderBase*> modifiers;
    std::vector<ListenerHolderBase*> validators;
    std::vector<ListenerHolderBase*> observers;
    std::vector<ObjectDeletionListener*> objectDeletionListeners;
    bool detachingFromBackend = false;
    ListenerExceptionPolicy exceptionPolicy = SwallowListenerExceptions;
    ReferredModels referredModels;
};

} // namespace internal
} // namespace TAV
