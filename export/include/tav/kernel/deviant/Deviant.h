#pragma once

#include <tav/Export.h>

#include <string>
#include <vector>

namespace TAV {

class ChangeMap;
class DeviantManager;
struct IntrospectiveMethods;

namespace NSInterface {
class ClassObjectIntf;
class ModelIntf;
class ObjectIntf;
}

namespace internal {
class DeviantImpl;
}

class Deviant;
class Deviations;

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

    // Removes the deviant: its states go, its handles stay usable for isValid.
    void remove() const;

    // Enters the object in the model's object list (the manager's).
    void addObjectToModel(NSInterface::ObjectIntf* object) const;

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

} // namespace TAV
