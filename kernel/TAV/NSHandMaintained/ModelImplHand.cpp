// Hand-maintained operations of Model: creation, the objects by index, the model's URI,
// and the model's face of change tracking.

#include "kernel/TAV/NSImplementation/ModelImpl.h"

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/DeviantManagerHelper.h>
#include <tav/kernel/family/ModelMembership.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/ModelCache.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

#include <string>
#include <vector>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/TAV/NSHandMaintained/ModelImplHand";
constexpr char kHandleSource[] = "export/include/tav/TAV/Model_h";

// The model operations are called on the object, never on a state: handles hold objects.
internal::ModelCore& coreOf(NSInterface::ModelIntf const* aModel)
{
    return static_cast<NSImplementation::ModelImpl*>(const_cast<NSInterface::ModelIntf*>(aModel))->core;
}

[[noreturn]] void nullModel(int aLine)
{
    Asserter::MakeAlways<Exception>("Cannot access NULL ref. Use isValid() before calling methods")
        .handle(kHandleSource, aLine, "");
    __builtin_unreachable();
}

std::string qualifiedClassName(NSInterface::ClassObjectIntf const* aObject)
{
    std::string const dotted = aObject->getKestName(false).toUtf8();
    return dotted;
}

struct AssertionsOff {
    bool const previous = DeviantAssertions::enableAssertions(false);
    ~AssertionsOff() { DeviantAssertions::enableAssertions(previous); }
};

} // namespace

// Made before the model is a model: the assertions that ask for a transaction are off.
Model Model::create()
{
    AssertionsOff const off;
    auto* impl = new NSImplementation::ModelImpl();
    internal::ModelCore& core = impl->core;
    core.owner = impl;
    ++impl->refCount;
    core.manager.setModel(impl);
    --impl->refCount;
    Deviant const root = core.manager.getRoot();
    impl->rootDeviant = root;
    root.setMaximumUndoStackLength(0);
    root.getDeviantManager()->setHelper(new DeviantManagerHelper);
    impl->internal_createDeviation(root);
    Model model(impl, root);
    impl->setOnlyModelTAV(root, model);
    family::setObjectIndex(model, root, ClassObject(model), core.nextObjectIndex);
    String const uri = ModelCache::instance().getNextAvailableModelUri(ModelCache::UNTITLED);
    impl->setUri(root, uri);
    ModelCache::instance().bindModel(uri, model);
    root.setMaximumUndoStackLength(Deviant::getDefaultMaximumUndoStackLength());
    return model;
}

namespace family {

Deviant creationDeviant(Model const& aModel)
{
    NSInterface::ModelIntf* model = aModel.internal_intf();
    if (!model)
        nullModel(__LINE__);
    Deviant const d = aModel.getDeviant();
    if (DeviantAssertions::sAssertionsEnabled)
        d.internal_assertWritable(static_cast<NSInterface::ClassObjectIntf const*>(model));
    return d;
}

Integer nextObjectIndex(Model const& aModel)
{
    creationDeviant(aModel);
    return coreOf(aModel.internal_intf()).nextObjectIndex;
}

void enterModel(ClassObject const& aObject, Model const& aModel, Integer const& aId)
{
    Deviant const d = aObject.getDeviant();
    NSInterface::ClassObjectIntf* object = aObject.internal_intf();
    auto* canonical = static_cast<NSInterface::ObjectIntf*>(object);
    d.getRootDeviant().addObjectToModel(canonical);
    d.markObjectCreated(canonical);
    object->internal_createDeviation(d);
    setObjectIndex(aModel, d, aObject, aId);
    object->setModelTAV(d, aModel);
    aModel.internal_intf()->getUnparentedsWithoutAssociation(d).push_back(aObject);
}

// The guard against the wrap past the largest index comes first, whatever index is given.
void setObjectIndex(Model const& aModel, Deviant aDeviant, ClassObject const& aObject, Integer const& aIndex)
{
    internal::ModelCore& core = coreOf(aModel.internal_intf());
    if (core.nextObjectIndex < 1)
        Asserter::MakeAlways<Exception>("Internal id value overflow!").handle(kSource, __LINE__, "");
    aObject.internal_intf()->setObjectIndex(aDeviant, aIndex);
    aModel.internal_intf()->insertObjectAtIndex(aDeviant, aIndex, aObject);
    if (aIndex.value() >= core.nextObjectIndex)
        core.nextObjectIndex = static_cast<std::int32_t>(static_cast<std::uint32_t>(aIndex.value()) + 1u);
}

void checkContainer(NSInterface::ClassObjectIntf const* aObject, Deviant aDeviant,
                    ImmutableClassObject const& aContainer)
{
    constexpr char source[] = "kernel/TAV/NSImplementation/ClassObjectImpl";
    auto const refuse = [&](char const* aText, int aLine) {
        Asserter::MakeAlways<Exception>("%s", aText).handle(source, aLine, "");
    };
    if (aDeviant.willCauseCompositionCycles(aContainer.internal_intf(), aObject))
        refuse("Cyclic composition", __LINE__);
    NSInterface::ModelIntf const* mine = aObject->getModelTAV(aDeviant).internal_intf();
    NSInterface::ModelIntf const* theirs = aContainer.getModelTAV().internal_intf();
    if (mine && theirs && mine != theirs)
        refuse("Cross-model composition", __LINE__);
    if (aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ModelIntf>()))
        refuse("Parenting of Model", __LINE__);
}

void leaveUnparented(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant)
{
    if (NSInterface::ModelIntf* model = aObject->getModelTAV(aDeviant).internal_intf())
        model->getUnparentedsWithoutAssociation(aDeviant).removeAll(ClassObject(aObject, aDeviant));
}

void enterUnparented(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant)
{
    if (NSInterface::ModelIntf* model = aObject->getModelTAV(aDeviant).internal_intf())
        model->getUnparentedsWithoutAssociation(aDeviant).push_back(ClassObject(aObject, aDeviant));
}

// What an object's destructor tells its model: it leaves the object list and the index.
void leaveModel(NSInterface::ObjectIntf* aObject, Deviant aRoot, Integer const& aIndex)
{
    aRoot.removeObjectFromModel(aObject);
    NSInterface::ModelIntf* model = aRoot.getModel();
    // A model going is no entry of its own index.
    if (model && static_cast<NSInterface::ObjectIntf*>(static_cast<NSInterface::ClassObjectIntf*>(model)) != aObject)
        model->removeObjectAtIndex(aRoot, aIndex, ImmutableClassObject());
}

} // namespace family

namespace internal {

NSInterface::ClassObjectIntf* ObjectIndex::insert(std::int32_t aIndex, NSInterface::ClassObjectIntf* aObject)
{
    if (NSInterface::ClassObjectIntf* existing = find(aIndex))
        return existing;
    auto const at = static_cast<std::size_t>(aIndex);
    if (aIndex >= 0 && at < fDense.size() + kDenseGap) {
        if (at >= fDense.size())
            fDense.resize(at + 1, nullptr);
        fDense[at] = aObject;
    } else {
        fSparse.emplace(aIndex, aObject);
    }
    return aObject;
}

// An index once far may have been reached by the vector since; both places are cleared.
void ObjectIndex::erase(std::int32_t aIndex)
{
    if (aIndex >= 0 && static_cast<std::size_t>(aIndex) < fDense.size())
        fDense[static_cast<std::size_t>(aIndex)] = nullptr;
    if (!fSparse.empty())
        fSparse.erase(aIndex);
}

ModelCore::~ModelCore()
{
    if (!owner)
        return;
    // Handles made on the model while it goes must not free it a second time.
    ++static_cast<NSImplementation::ModelImpl*>(owner)->refCount;
    manager.destroy();
    // The model's own state holds its lists; the manager unbinds it from the cache as it goes.
    owner->deviant_markModelDestroyed();
}

} // namespace internal

namespace NSInterface {

// Deviants are the manager's, reached through the model's root.
Deviant ModelIntf::createDeviantWithName(String const& aName) const
{
    DeviantManager* manager = getRootDeviant().getDeviantManager();
    return manager ? manager->createDeviantWithName(aName.toUtf8()) : Deviant();
}

void ModelIntf::insertObjectAtIndex(Deviant aDeviant, Integer const& aIndex, ClassObject const& aObject)
{
    ClassObjectIntf* object = aObject.internal_intf();
    if (object == static_cast<ClassObjectIntf const*>(this))
        return;
    ClassObjectIntf* existing = coreOf(this).objects.insert(aIndex.value(), object);
    if (existing == object || !static_cast<ObjectIntf*>(existing)->deviant_isValid(aDeviant))
        return;
    std::string const text = "Attempt to overwrite object (index = '" +
                             std::to_string(existing->getObjectIndex(aDeviant).value()) + "';type = '" +
                             qualifiedClassName(existing) + "') with object (index = '" +
                             std::to_string(aIndex.value()) + "'; type = '" + qualifiedClassName(object) + "')";
    Asserter::Make<Exception>(false, "%s", text.c_str()).handle(kSource, __LINE__, "");
}

ClassObject ModelIntf::getObjectAtIndex(Deviant aDeviant, Integer const& aIndex)
{
    if (aIndex.value() == 1)
        return ClassObject(getModelTAV(aDeviant).internal_intf(), aDeviant);
    ClassObjectIntf* object = coreOf(this).objects.find(aIndex.value());
    return object ? ClassObject(object, aDeviant) : ClassObject();
}

void ModelIntf::removeObjectAtIndex(Deviant, Integer const& aIndex, ImmutableClassObject const&)
{
    coreOf(this).objects.erase(aIndex.value());
}

Boolean ModelIntf::hasNextObjectIndex(Deviant) const
{
    return true;
}

void ModelIntf::removeNextObjectIndex(Deviant)
{
    coreOf(this).nextObjectIndex = 1;
}

void ModelIntf::setNextObjectIndex(Deviant, Integer const& aValue)
{
    coreOf(this).nextObjectIndex = aValue.value();
}

Integer ModelIntf::getNextObjectIndex(Deviant) const
{
    return coreOf(this).nextObjectIndex;
}

void ModelIntf::setLastSavedChangeLevel(Deviant, Integer const& aChangeLevel)
{
    coreOf(this).lastSavedChangeLevel = aChangeLevel.value();
}

Integer ModelIntf::getLastSavedChangeLevel(Deviant) const
{
    return coreOf(this).lastSavedChangeLevel;
}

Boolean ModelIntf::hasLastSavedChangeLevel(Deviant) const
{
    return true;
}

void ModelIntf::removeLastSavedChangeLevel(Deviant)
{
    coreOf(this).lastSavedChangeLevel = -1;
}

// The model's URI is its internal one; the derived ClassObject.uri of a model is the same.
Boolean ModelIntf::hasTAV_Model_Uri(Deviant aDeviant) const
{
    return hasInternalUri(aDeviant) && !getInternalUri(aDeviant).empty();
}

void ModelIntf::removeTAV_Model_Uri(Deviant aDeviant)
{
    removeInternalUri(aDeviant);
}

void ModelIntf::setTAV_Model_Uri(Deviant aDeviant, String const& aValue)
{
    setInternalUri(aDeviant, aValue);
}

String ModelIntf::getTAV_Model_Uri(Deviant aDeviant) const
{
    if (!hasTAV_Model_Uri(aDeviant))
        Asserter::MakeAlways<Exception>("Failed to obtain model's uri: Uri value is empty!")
            .handle(kSource, __LINE__, "");
    return getInternalUri(aDeviant);
}

bool ModelIntf::hasUri(Deviant aDeviant) const
{
    return hasTAV_Model_Uri(aDeviant);
}

void ModelIntf::removeUri(Deviant aDeviant)
{
    removeTAV_Model_Uri(aDeviant);
}

void ModelIntf::setUri(Deviant aDeviant, String const& aValue)
{
    String const copy = aValue;
    setTAV_Model_Uri(aDeviant, copy);
}

String ModelIntf::getUri(Deviant aDeviant) const
{
    return getTAV_Model_Uri(aDeviant);
}

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

} // namespace NSInterface

// The model's face of change tracking: each forwards to the deviant given.
namespace NSInterface {

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

Integer ModelIntf::getDefaultMaximumUndoStackLength(Deviant) const
{
    return Deviant::getDefaultMaximumUndoStackLength();
}

Integer ModelIntf::getMaximumUndoStackLength(Deviant aDeviant) const
{
    return aDeviant.getMaximumUndoStackLength();
}

Integer ModelIntf::getUndoStackLength(Deviant aDeviant) const
{
    return aDeviant.getUndoStackLength();
}

Integer ModelIntf::getRedoStackLength(Deviant aDeviant) const
{
    return aDeviant.getRedoStackLength();
}

Integer ModelIntf::getUndoChangeLevelAt(Deviant aDeviant, Integer const& aIndex) const
{
    return aDeviant.getUndoChangeLevelAt(aIndex);
}

Integer ModelIntf::getRedoChangeLevelAt(Deviant aDeviant, Integer const& aIndex) const
{
    return aDeviant.getRedoChangeLevelAt(aIndex);
}

String ModelIntf::getUndoNameAt(Deviant aDeviant, Integer const& aIndex) const
{
    return String(aDeviant.getUndoNameAt(aIndex));
}

String ModelIntf::getRedoNameAt(Deviant aDeviant, Integer const& aIndex) const
{
    return String(aDeviant.getRedoNameAt(aIndex));
}

void ModelIntf::setMaximumUndoStackLength(Deviant aDeviant, Integer const& aLength)
{
    aDeviant.setMaximumUndoStackLength(aLength);
}

void ModelIntf::clearUndoStack(Deviant aDeviant)
{
    aDeviant.clearUndoStack();
}

void ModelIntf::clearRedoStack(Deviant aDeviant)
{
    aDeviant.clearRedoStack();
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

void ModelIntf::removeDeviantWithName(Deviant aDeviant, String const& aName)
{
    DeviantAssertions::internalAssert(aDeviant.getDeviantId() == 0, "removeDeviantWithName called on non-root deviant");
    if (DeviantManager* manager = aDeviant.getDeviantManager())
        manager->removeDeviantWithName(aName.toUtf8());
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

Boolean ModelIntf::isValidUndoChangeLevel(Deviant aDeviant, Integer const& aChangeLevel) const
{
    return aDeviant.isValidUndoChangeLevel(aChangeLevel);
}

Boolean ModelIntf::isValidRedoChangeLevel(Deviant aDeviant, Integer const& aChangeLevel) const
{
    return aDeviant.isValidRedoChangeLevel(aChangeLevel);
}

void ModelIntf::allowExceptions(Deviant aDeviant, Boolean const& aAllow)
{
    aDeviant.setExceptionPolicy(aAllow ? LetListenerExceptionsPass : SwallowListenerExceptions);
}

} // namespace NSInterface
} // namespace TAV
