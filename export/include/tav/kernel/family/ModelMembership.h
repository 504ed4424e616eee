#pragma once

#include <tav/Export.h>
#include <tav/TAV/Integer.h>
#include <tav/kernel/deviant/Deviant.h>

namespace TAV {

class ClassObject;
class Model;
class ImmutableClassObject;
struct IntrospectiveMethods;
namespace NSInterface {
class ClassObjectIntf;
class ObjectIntf;
}

namespace family {

// The steps of creating an object that do not depend on its class. `create` reads the
// index to use (after the writability and null checks); `createWithId` makes the object
// and hands it to `enterModel`, which puts it in the model, its root state and the
// model's unparented list.
TAV_EXPORT Integer nextObjectIndex(Model const& aModel);
TAV_EXPORT Deviant creationDeviant(Model const& aModel);
TAV_EXPORT void enterModel(ClassObject const& aObject, Model const& aModel, Integer const& aId);
// The model's setObjectIndex: "Internal id value overflow!" once the next index has wrapped,
// then the object's index, the model's entry, and the next index past it.
TAV_EXPORT void setObjectIndex(Model const& aModel, Deviant aDeviant, ClassObject const& aObject, Integer const& aIndex);
// The container slot's part in the model's unparented list, and the model's checks of a
// new container: "Cyclic composition", "Cross-model composition", "Parenting of Model".
TAV_EXPORT void checkContainer(NSInterface::ClassObjectIntf const* aObject, Deviant aDeviant,
                               ImmutableClassObject const& aContainer);
TAV_EXPORT void leaveUnparented(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant);
TAV_EXPORT void enterUnparented(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant);
// Destruction of a subtree in one deviant, driven by the object's reflection table.
TAV_EXPORT void destroyObject(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant);
TAV_EXPORT void disconnectForDestroy(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant,
                                     IntrospectiveMethods const* aMethods);
TAV_EXPORT void destroyContents(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, bool aTopLevel,
                                IntrospectiveMethods const* aMethods);
// An object's destructor leaves its model's object list and index.
TAV_EXPORT void leaveModel(NSInterface::ObjectIntf* aObject, Deviant aRoot, Integer const& aIndex);

template <class Impl, class Handle>
Handle createObject(Model const& aModel, Integer const& aId)
{
    Deviant const d = creationDeviant(aModel);
    auto* object = new Impl();
    // Created in the model whatever deviant asked: its states start from root.
    object->rootDeviant = d.getRootDeviant();
    Handle result(object, d);
    enterModel(result, aModel, aId);
    return result;
}

} // namespace family
} // namespace TAV
