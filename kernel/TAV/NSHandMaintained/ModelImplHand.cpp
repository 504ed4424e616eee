// Hand-maintained operations of Model.

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>

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
