#pragma once

#include <tav/Export.h>

#include <string>
#include <utility>
#include <vector>

namespace TAV {

class ChangeMap;
class DeviantManager;
class ListenerBase;
class ObjectDeletionListener;
struct IntrospectiveMethods;
struct ListenerNotifyHint;

namespace NSInterface {
class ClassObjectIntf;
class ModelIntf;
class ObjectIntf;
}

namespace internal {
class DeviantImpl;
class ListenerHolderBase;
}

class Deviant;
class Deviations;

// 0 lets exceptions of listeners pass; 1 swallows them.
enum ListenerExceptionPolicy : int { LetListenerExceptionsPass = 0, SwallowListenerExceptions = 1 };

struct UndoRedoChain;

// Checks of change tracking. Objects are named by their canonical ObjectIntf*
// (reached along the first-base chain), the identity the whole runtime uses.
class TAV_EXPORT DeviantAssertions {
public:
    static bool sAssertionsEnabled;
    static bool sAssertionsThrowExceptionsEnabled;

    // Both return the previous value.
    static bool enableAssertions(bool enable);
    static bool enableExceptionThrowing(bool enable);

    static void internalAssert(bool condition, char const* message);
    static void internalAssertAlways(char const* message);

    // Writes to a class object need an open transaction.
    void internal_assertWritable(NSInterface::ClassObjectIntf const* object) const;
    // Writes to a state are also allowed while a change set is replayed; a
    // state that is a class object goes on to the form above.
    void internal_assertWritable(NSInterface::ObjectIntf const* state) const;
    void assertObjectNotPresentInDeviant(NSInterface::ObjectIntf const* object) const;
    void assertObjectAlreadyCreated(NSInterface::ObjectIntf const* object) const;
    static void assertThatModelHasBeenDestroyed(NSInterface::ObjectIntf const* object);

protected:
    explicit DeviantAssertions(internal::DeviantImpl* impl = nullptr) : fImpl(impl) {}

    // The class-object check on the canonical pointer, which is all that the
    // deviations record of an object holds.
    void assertWritableObject(NSInterface::ObjectIntf const* object) const;

    internal::DeviantImpl* fImpl;

private:
    friend class Deviations;
};

// A view of one model: one word on the deviant's implementation. A null
// Deviant is legal and stands for no deviant.
class TAV_EXPORT Deviant : public DeviantAssertions {
public:
    // State slot values that can never be real states.
    static NSInterface::ObjectIntf* FallbackToRoot;
    static NSInterface::ObjectIntf* InvalidObject;
    static NSInterface::ObjectIntf* ModelDestroyed;

    static bool isRealState(NSInterface::ObjectIntf const* state)
    {
        return state && state != FallbackToRoot && state != InvalidObject && state != ModelDestroyed;
    }

    Deviant() = default;
    explicit Deviant(internal::DeviantImpl* impl) : DeviantAssertions(impl) {}

    internal::DeviantImpl* impl() const { return fImpl; }
    bool isNull() const { return fImpl == nullptr; }
    friend bool operator==(Deviant a, Deviant b) { return a.fImpl == b.fImpl; }
    friend bool operator!=(Deviant a, Deviant b) { return a.fImpl != b.fImpl; }

    NSInterface::ObjectIntf* getStateOfObject(NSInterface::ObjectIntf const* object) const;
    void setStateOfObject(NSInterface::ObjectIntf* object, NSInterface::ObjectIntf* state) const;
    void saveOldStateOfObject(NSInterface::ObjectIntf* object, NSInterface::ObjectIntf* state) const;
    NSInterface::ObjectIntf* getSavedOldStateOfObject(NSInterface::ObjectIntf const* object) const;

    ChangeMap* getObjectsDeviatingFromRoot() const;
    int getDeviantId() const;
    Deviant getRootDeviant() const;
    DeviantManager* getDeviantManager() const;
    // Null while the manager has no model.
    NSInterface::ModelIntf* getModel() const;
    std::string getName() const;
    bool isValid() const;
    void getAllDeviants(std::vector<Deviant>& out) const;

    bool isWithinTransaction() const;
    bool isWithinTransactionUndoOrRedo() const;
    bool isWithinUndoOrRedoOrCancel() const;
    bool hasUndoStack() const;

    // Transactions nest by count; the name of an inner one is dropped.
    void beginTransaction(std::string const& name = std::string()) const;
    // False when a validator rejected the change, which is then cancelled.
    bool commitTransaction() const;
    // Ends every nesting level at once and writes the old states back.
    void cancelTransaction() const;
    bool willCauseCompositionCycles(NSInterface::ClassObjectIntf const* container,
                                    NSInterface::ClassObjectIntf const* contained) const;

    // Root's history. Levels are never reused; an entry carries the level
    // that is current after it has been played.
    void undo(UndoRedoChain* chain = nullptr) const;
    void redo(UndoRedoChain* chain = nullptr) const;
    void undoToChangeLevel(int aChangeLevel, UndoRedoChain* chain = nullptr) const;
    void redoToChangeLevel(int aChangeLevel, UndoRedoChain* chain = nullptr) const;
    // One step over several models; the observers of the later ones hear first.
    static void undoGroup(std::vector<std::pair<Deviant, int>> const& levels);
    static void redoGroup(std::vector<std::pair<Deviant, int>> const& levels);
    void executeChangeSetOnTop(bool isUndo, UndoRedoChain* chain) const;

    int getCurrentChangeLevel() const;
    bool isValidUndoChangeLevel(int aChangeLevel) const;
    bool isValidRedoChangeLevel(int aChangeLevel) const;
    // Index 0 is the newest undoable and the next redoable entry; -1 or the
    // empty text outside the stack.
    int getUndoChangeLevelAt(int index) const;
    int getRedoChangeLevelAt(int index) const;
    std::string getUndoNameAt(int index) const;
    std::string getRedoNameAt(int index) const;
    int getUndoStackLength() const;
    int getRedoStackLength() const;
    static int getDefaultMaximumUndoStackLength() { return 50; }
    int getMaximumUndoStackLength() const;
    void setMaximumUndoStackLength(int length) const;
    void disableUndo() const;
    void clearUndoStack() const;
    void clearRedoStack() const;
    void clearUndoStackFromAndIncluding(int aChangeLevel) const;
    void clearRedoStackFromAndIncluding(int aChangeLevel) const;

    // The lists own their holders. Registering a listener twice is refused.
    bool registerModifierOnCommit(internal::ListenerHolderBase* holder) const;
    bool registerValidatorOnCommit(internal::ListenerHolderBase* holder) const;
    bool registerObservingListener(internal::ListenerHolderBase* holder) const;
    bool registerObservingListener(internal::ListenerHolderBase* holder, ListenerNotifyHint const& hint) const;
    bool unregisterModifierOnCommit(ListenerBase* listener) const;
    bool unregisterValidatorOnCommit(ListenerBase* listener) const;
    bool unregisterObservingListener(ListenerBase* listener) const;
    void registerObjectDeletionListener(ObjectDeletionListener* listener) const;
    void unregisterObjectDeletionListener(ObjectDeletionListener* listener) const;
    // Only on a deviant that nothing has happened to yet.
    void setExceptionPolicy(ListenerExceptionPolicy policy) const;

    // Removes the deviant: its listeners hear it once and go, its states go,
    // its handles stay usable for isValid.
    void remove() const;
    // Only on a real deviant: set while the model takes it down.
    bool isDetachingFromBackend() const;

    // A named deviant's committed states go into root's open transaction.
    void assignToRoot() const;
    // Within this named deviant's transaction, it drops its own states and
    // reads root's committed ones again; a cancel brings them back.
    void syncFromRoot() const;
    // Objects whose own state here is set and is not root's (a named
    // deviant's InvalidObject included).
    bool hasObjectsDeviatingFromRoot() const;
    void getObjectsDeviatingFromRoot(std::vector<NSInterface::ObjectIntf*>& out) const;

    // Enters the object in the model's object list (the manager's).
    void addObjectToModel(NSInterface::ObjectIntf* object) const;
    // Takes it out again and tells the object-deletion listeners.
    void removeObjectFromModel(NSInterface::ObjectIntf* object) const;

    void markObjectCreated(NSInterface::ObjectIntf* object) const;
    void notifyObjectIsAboutToChange(NSInterface::ObjectIntf* object) const;
    void notifyObjectIsAboutToBeDeleted(NSInterface::ObjectIntf* object) const;
    void notifyObjectHasBeenAdded(NSInterface::ObjectIntf* object) const;
    bool wasObjectAddedThisTransaction(NSInterface::ObjectIntf const* object) const;

    std::string getMessageObjectIsInvalid(NSInterface::ObjectIntf const* object) const;
    bool isInDifferentModel(Deviant other, IntrospectiveMethods const* methods, unsigned propertyId) const;

    // Counts, per model of `other`, the references this deviant's model holds
    // into it through a persistent property; what saving must bring along.
    void setOrAddReferred(Deviant other, IntrospectiveMethods const* methods, unsigned propertyId) const;
    // Undoes one count; the entry goes at zero. An unknown model is ignored.
    void removeReferred(Deviant other, IntrospectiveMethods const* methods, unsigned propertyId) const;

private:
    void assertSameModel(NSInterface::ObjectIntf const* object) const;
    // The common guards of the notify operations; false when there is nothing to do.
    bool enterNotify(NSInterface::ObjectIntf* object, char const* operation) const;
    // The key of `other`'s model when a reference into it counts, else null.
    NSInterface::ObjectIntf* referredModelKey(Deviant other, IntrospectiveMethods const* methods,
                                              unsigned propertyId) const;
};

static_assert(sizeof(Deviant) == sizeof(void*), "a Deviant is one word");

// A node of an undo or redo step over several models: the deviant to play,
// the level at which it has reached its target, and the next model's node.
struct UndoRedoChain {
    Deviant deviant;
    int changeLevel;
    UndoRedoChain* next;
};

} // namespace TAV
