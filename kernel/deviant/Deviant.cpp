#include "kernel/deviant/ChangeTracking.h"
#include "kernel/deviant/DeviantImpl.h"
#include "kernel/deviant/DeviantInternal.h"

#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/Listeners.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

namespace TAV {

using NSInterface::ObjectIntf;

// Each sentinel points at itself: no real state can have that address.
ObjectIntf* Deviant::FallbackToRoot = reinterpret_cast<ObjectIntf*>(&Deviant::FallbackToRoot);
ObjectIntf* Deviant::InvalidObject = reinterpret_cast<ObjectIntf*>(&Deviant::InvalidObject);
ObjectIntf* Deviant::ModelDestroyed = reinterpret_cast<ObjectIntf*>(&Deviant::ModelDestroyed);

namespace {

constexpr int kTransientPersistence = 1;

} // namespace

namespace internal {

DeviantImpl::DeviantImpl(std::string aName, DeviantManager* aManager, int aId)
    : name(std::move(aName)), manager(aManager), id(aId), objectsDeviating(new ChangeMap),
      readPrimary(objectsDeviating), maximumUndoLength(aId == 0 ? 50 : 1)
{
}

DeviantImpl::~DeviantImpl()
{
    deleteHolders(this);
    // Objects in these maps are still counted by them, so their states can go.
    for (ChangeSet* set : undoStack) {
        destroyStates(set->oldStates);
        destroyStates(set->newStates);
        delete set;
    }
    destroyStates(current.oldStates);
    destroyStates(current.newStates);
    destroyStates(*objectsDeviating);
    delete objectsDeviating;
}

ObjectIntf* lookupState(DeviantImpl const* impl, ObjectIntf const* object)
{
    ObjectIntf* state = impl->readPrimary ? impl->readPrimary->find(object) : nullptr;
    if (!state && impl->readSecondary)
        state = impl->readSecondary->find(object);
    return state;
}

ObjectIntf* savedOldState(DeviantImpl const* impl, ObjectIntf const* object)
{
    if (impl->transactionDepth < 1 && !impl->withinTransactionUndoOrRedo)
        return nullptr;
    return impl->current.oldStates.find(object);
}

void saveOldState(DeviantImpl* impl, ObjectIntf* object, ObjectIntf* state)
{
    if (impl->transactionDepth < 1)
        return;
    ObjectIntf* const previous = impl->current.oldStates.insert(object, state ? state : Deviant::FallbackToRoot);
    if (Deviant::isRealState(previous))
        object->deviant_destroyState(previous);
}

void destroyStates(ChangeMap& map)
{
    for (ChangeMap::Entry const& entry : map)
        if (Deviant::isRealState(entry.state))
            delete entry.state;
    map.clear();
}

} // namespace internal

void Deviant::assertSameModel(ObjectIntf const* object) const
{
    internalAssert(object && object->getRootDeviant() == getRootDeviant(), "Unsafe cross-model interaction");
}

ObjectIntf* Deviant::getStateOfObject(ObjectIntf const* object) const
{
    if (!fImpl)
        return nullptr;
    assertSameModel(object);
    return internal::lookupState(fImpl, object);
}

void Deviant::setStateOfObject(ObjectIntf* object, ObjectIntf* state) const
{
    if (!fImpl)
        return;
    assertSameModel(object);
    // The caller deleted what the slot held before: nothing to free here.
    fImpl->objectsDeviating->insert(object, state);
}

void Deviant::saveOldStateOfObject(ObjectIntf* object, ObjectIntf* state) const
{
    if (!fImpl)
        return;
    // A foreign object is refused even where there would be nothing to do.
    assertSameModel(object);
    internal::saveOldState(fImpl, object, state);
}

ObjectIntf* Deviant::getSavedOldStateOfObject(ObjectIntf const* object) const
{
    if (!fImpl)
        return nullptr;
    assertSameModel(object);
    return internal::savedOldState(fImpl, object);
}

ChangeMap* Deviant::getObjectsDeviatingFromRoot() const
{
    return fImpl ? fImpl->objectsDeviating : nullptr;
}

int Deviant::getDeviantId() const
{
    return fImpl ? fImpl->id : 0;
}

Deviant Deviant::getRootDeviant() const
{
    if (!fImpl)
        return Deviant();
    if (fImpl->manager)
        return fImpl->manager->getRoot();
    return fImpl->id == 0 ? *this : Deviant();
}

DeviantManager* Deviant::getDeviantManager() const
{
    return fImpl ? fImpl->manager : nullptr;
}

NSInterface::ModelIntf* Deviant::getModel() const
{
    return fImpl && fImpl->manager ? fImpl->manager->getModel() : nullptr;
}

std::string Deviant::getName() const
{
    return fImpl ? fImpl->name : "default unnamed root deviant";
}

bool Deviant::isValid() const
{
    return !fImpl || !fImpl->removed;
}

void Deviant::getAllDeviants(std::vector<Deviant>& out) const
{
    out.clear();
    if (fImpl && fImpl->manager)
        fImpl->manager->getDeviants(out);
}

bool Deviant::isWithinTransaction() const
{
    return fImpl && fImpl->transactionDepth >= 1;
}

bool Deviant::isWithinTransactionUndoOrRedo() const
{
    return fImpl && fImpl->withinTransactionUndoOrRedo;
}

bool Deviant::isWithinUndoOrRedoOrCancel() const
{
    return fImpl && fImpl->withinUndoOrRedoOrCancel;
}

bool Deviant::hasUndoStack() const
{
    return fImpl && fImpl->maximumUndoLength >= 1;
}

void Deviant::addObjectToModel(ObjectIntf* object) const
{
    internalAssert(fImpl != nullptr, "addObjectToModel on null deviant.");
    if (fImpl && fImpl->manager)
        fImpl->manager->addObjectToModel(object);
}

void Deviant::markObjectCreated(ObjectIntf* object) const
{
    internalAssert(fImpl != nullptr, "markObjectCreated on null deviant");
    if (!fImpl)
        return;
    assertSameModel(object);
    std::vector<Deviant> all;
    getAllDeviants(all);
    for (Deviant const other : all)
        if (!other.isNull() && internal::lookupState(other.fImpl, object))
            other.assertObjectAlreadyCreated(object);
    internal::saveOldState(fImpl, object, InvalidObject);
    for (Deviant const other : all)
        if (!other.isNull() && other != *this)
            object->internal_setDeviation(other, InvalidObject);
}

bool Deviant::enterNotify(ObjectIntf* object, char const* operation) const
{
    if (!fImpl) {
        internalAssertAlways((std::string(operation) + " on null deviant").c_str());
        return false;
    }
    assertSameModel(object);
    // A replay writes states back itself; the passthrough domain's calls are echoes.
    if (fImpl->withinUndoOrRedoOrCancel)
        return false;
    if (sAssertionsEnabled)
        assertWritableObject(object);
    if (fImpl->id != 0)
        internalAssertAlways((std::string(operation) + " on non root deviant").c_str());
    return true;
}

void Deviant::notifyObjectIsAboutToChange(ObjectIntf* object) const
{
    if (!enterNotify(object, "notifyObjectIsAboutToChange"))
        return;
    if (!fImpl->current.oldStates.contains(object))
        internal::saveOldState(fImpl, object, object->deviant_getCopyOfDeviation(*this));
}

void Deviant::notifyObjectIsAboutToBeDeleted(ObjectIntf* object) const
{
    if (!enterNotify(object, "notifyObjectIsAboutToBeDeleted"))
        return;
    if (!fImpl->current.oldStates.contains(object))
        internal::saveOldState(fImpl, object, object->deviant_getCopyOfDeviation(*this));
    object->internal_destroyDeviation(*this);
}

void Deviant::notifyObjectHasBeenAdded(ObjectIntf* object) const
{
    if (!enterNotify(object, "notifyObjectHasBeenAdded"))
        return;
    internalAssert(!fImpl->current.oldStates.contains(object), "notifyObjectHasBeenAdded on object already in changeset");
    markObjectCreated(object);
}

bool Deviant::wasObjectAddedThisTransaction(ObjectIntf const* object) const
{
    internalAssert(fImpl != nullptr, "wasObjectAddedThisTransaction on null deviant");
    if (!fImpl)
        return false;
    assertSameModel(object);
    internalAssert(fImpl->id == 0, "wasObjectAddedThisTransaction on non root deviant");
    return fImpl->current.oldStates.find(object) == InvalidObject;
}

std::string Deviant::getMessageObjectIsInvalid(ObjectIntf const*) const
{
    return "Use of invalid object.\nThe object has been destroyed due to\n"
           "\t\t1) destroy being called on the object or\n"
           "\t\t2) destroy being called on the object's parent or ancestors or\n"
           "\t\t3) the last reference to the object's model being relinquished or\n"
           "\t\t4) notifyObjectIsAboutToBeDeleted being called on the object by a passthrough domain."
           "It could also be that the object was not created in the deviant and hence is invalid.";
}

bool Deviant::isInDifferentModel(Deviant other, IntrospectiveMethods const* methods, unsigned propertyId) const
{
    if (*this == other || getRootDeviant() == other.getRootDeviant())
        return false;
    MetaPropertyDescription const* description = methods && methods->descriptions ? methods->descriptions[propertyId] : nullptr;
    return !description || description->persistence != kTransientPersistence;
}

ObjectIntf* Deviant::referredModelKey(Deviant other, IntrospectiveMethods const* methods, unsigned propertyId) const
{
    if (!fImpl || other.isNull() || *this == other || getRootDeviant() == other.getRootDeviant())
        return nullptr;
    MetaPropertyDescription const* description = methods && methods->descriptions ? methods->descriptions[propertyId] : nullptr;
    if (description && description->persistence == kTransientPersistence)
        return nullptr;
    // Without a model there is nothing that saving could bring along.
    NSInterface::ModelIntf* model = other.getModel();
    auto const modelObject = internal::classObjectHooks().modelObject;
    return model && modelObject ? modelObject(model) : nullptr;
}

void Deviant::setOrAddReferred(Deviant other, IntrospectiveMethods const* methods, unsigned propertyId) const
{
    if (ObjectIntf* key = referredModelKey(other, methods, propertyId))
        ++fImpl->referredModels[key];
}

void Deviant::removeReferred(Deviant other, IntrospectiveMethods const* methods, unsigned propertyId) const
{
    ObjectIntf* key = referredModelKey(other, methods, propertyId);
    if (!key)
        return;
    auto const it = fImpl->referredModels.find(key);
    if (it != fImpl->referredModels.end() && --it->second == 0)
        fImpl->referredModels.erase(it);
}

} // namespace TAV
