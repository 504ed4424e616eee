// Hand-maintained operations of Model.

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/deviant/DeviantManager.h>

#include <vector>

namespace TAV::NSInterface {

// The only way back from an immutable handle: it must be a live object of this model,
// so a read-only view of another model never becomes writable through this one.
ClassObject ModelIntf::toMutable(Deviant aDeviant, ImmutableClassObject const& aObject)
{
    (void)aDeviant;
    ClassObjectIntf* object = aObject.internal_intf();
    if (!object || !aObject.isValid())
        return ClassObject();
    Deviant const objectDeviant = aObject.getDeviant();
    if (object->getModelTAV(objectDeviant).internal_intf() != this)
        return ClassObject();
    return ClassObject(object, objectDeviant);
}

} // namespace TAV::NSInterface

// The model's face of change tracking: each forwards to the deviant given.
namespace TAV::NSInterface {

void ModelIntf::beginTransaction(Deviant aDeviant, String const& aName)
{
    aDeviant.beginTransaction(aName.c_str());
}

void ModelIntf::beginTransaction(Deviant aDeviant)
{
    aDeviant.beginTransaction();
}

Boolean ModelIntf::commitTransaction(Deviant aDeviant)
{
    return aDeviant.commitTransaction();
}

void ModelIntf::cancelTransaction(Deviant aDeviant)
{
    aDeviant.cancelTransaction();
}

void ModelIntf::undo(Deviant aDeviant)
{
    aDeviant.undo();
}

void ModelIntf::undoToChangeLevel(Deviant aDeviant, Integer const& aChangeLevel)
{
    aDeviant.undoToChangeLevel(aChangeLevel);
}

void ModelIntf::redo(Deviant aDeviant)
{
    aDeviant.redo();
}

void ModelIntf::redoToChangeLevel(Deviant aDeviant, Integer const& aChangeLevel)
{
    aDeviant.redoToChangeLevel(aChangeLevel);
}

Integer ModelIntf::getCurrentChangeLevel(Deviant aDeviant) const
{
    return aDeviant.getCurrentChangeLevel();
}

Boolean ModelIntf::isValidUndoChangeLevel(Deviant aDeviant, Integer const& aChangeLevel) const
{
    return aDeviant.isValidUndoChangeLevel(aChangeLevel);
}

Boolean ModelIntf::isValidRedoChangeLevel(Deviant aDeviant, Integer const& aChangeLevel) const
{
    return aDeviant.isValidRedoChangeLevel(aChangeLevel);
}

Integer ModelIntf::getUndoStackLength(Deviant aDeviant) const
{
    return aDeviant.getUndoStackLength();
}

Integer ModelIntf::getRedoStackLength(Deviant aDeviant) const
{
    return aDeviant.getRedoStackLength();
}

// Deviants are the manager's, reached through the model's root.
Deviant ModelIntf::createDeviantWithName(String const& aName) const
{
    DeviantManager* manager = getRootDeviant().getDeviantManager();
    return manager ? manager->createDeviantWithName(aName.toUtf8()) : Deviant();
}

void ModelIntf::removeDeviantWithName(Deviant aDeviant, String const& aName)
{
    DeviantAssertions::internalAssert(aDeviant.getDeviantId() == 0, "removeDeviantWithName called on non-root deviant");
    if (DeviantManager* manager = aDeviant.getDeviantManager())
        manager->removeDeviantWithName(aName.toUtf8());
}

void ModelIntf::assignToRoot(Deviant aDeviant)
{
    aDeviant.assignToRoot();
}

void ModelIntf::syncFromRoot(Deviant aDeviant)
{
    aDeviant.syncFromRoot();
}

String ModelIntf::getDeviantName(Deviant aDeviant) const
{
    return String(aDeviant.getName());
}

Boolean ModelIntf::hasObjectsDeviatingFromRoot(Deviant aDeviant) const
{
    return aDeviant.hasObjectsDeviatingFromRoot();
}

Sequence<ClassObject> ModelIntf::getObjectsDeviatingFromRoot(Deviant aDeviant) const
{
    std::vector<ObjectIntf*> objects;
    aDeviant.getObjectsDeviatingFromRoot(objects);
    Sequence<ClassObject> out = MakeSequence<ClassObject>({aDeviant});
    for (ObjectIntf* object : objects)
        out.push_back(ClassObject(static_cast<ClassObjectIntf*>(
                                      object->cast(CooperativeVisitor::internal::classInfo<ClassObjectIntf>())),
                                  aDeviant));
    return out;
}

// One number kept for the model's user, on the model's manager.
void ModelIntf::setLastSavedChangeLevel(Deviant aDeviant, Integer const& aChangeLevel)
{
    if (DeviantManager* manager = aDeviant.getDeviantManager())
        manager->lastSavedChangeLevel = aChangeLevel;
}

Integer ModelIntf::getLastSavedChangeLevel(Deviant aDeviant) const
{
    DeviantManager const* manager = aDeviant.getDeviantManager();
    return manager ? manager->lastSavedChangeLevel : 0;
}

void ModelIntf::allowExceptions(Deviant aDeviant, Boolean const& aAllow)
{
    aDeviant.setExceptionPolicy(aAllow ? LetListenerExceptionsPass : SwallowListenerExceptions);
}

} // namespace TAV::NSInterface
