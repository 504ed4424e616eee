#pragma once

// The engine's record of a deviant, private to change tracking; in-tree tests
// and benchmarks reach in through the source tree.

#include <tav/Export.h>
#include <tav/kernel/deviant/ChangeMap.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/deviant/DeviantHead.h>

#include <deque>
#include <map>
#include <string>
#include <type_traits>
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

// No virtual member and no other base: the head stays at the record's address.
class TAV_EXPORT DeviantImpl : public DeviantHead {
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
    bool withinUndoOrRedoOrCancel = false;
    std::vector<ListenerHolderBase*> modifiers;
    std::vector<ListenerHolderBase*> validators;
    std::vector<ListenerHolderBase*> observers;
    std::vector<ObjectDeletionListener*> objectDeletionListeners;
    bool detachingFromBackend = false;
    ListenerExceptionPolicy exceptionPolicy = SwallowListenerExceptions;
    ReferredModels referredModels;
};

static_assert(!std::is_polymorphic_v<DeviantImpl>, "a vtable would move the head off the record's address");

} // namespace internal
} // namespace TAV
