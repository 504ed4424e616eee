// What the runtime asks of class objects, answered through the generated interfaces.

#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

namespace TAV {
namespace {

NSInterface::ClassObjectIntf const* asClassObject(NSInterface::ObjectIntf const* aObject)
{
    if (!aObject)
        return nullptr;
    return static_cast<NSInterface::ClassObjectIntf const*>(
        aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ClassObjectIntf>()));
}

bool isModel(NSInterface::ObjectIntf const* aObject)
{
    return aObject && aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ModelIntf>()) != nullptr;
}

bool isClassObject(NSInterface::ObjectIntf const* aObject)
{
    return asClassObject(aObject) != nullptr;
}

char const* metaClassName(NSInterface::ObjectIntf const* aObject)
{
    auto const* object = asClassObject(aObject);
    return object ? object->getMetaClassName() : nullptr;
}

long long objectIndex(NSInterface::ObjectIntf const* aObject, Deviant aDeviant)
{
    auto const* object = asClassObject(aObject);
    return object ? static_cast<long long>(static_cast<std::int32_t>(object->getObjectIndex(aDeviant))) : -1;
}

NSInterface::ObjectIntf* modelObject(NSInterface::ModelIntf* aModel)
{
    return static_cast<NSInterface::ObjectIntf*>(static_cast<NSInterface::ClassObjectIntf*>(aModel));
}

// Runs when the library loads, before any model exists.
struct InstallHooks {
    InstallHooks()
    {
        auto& hooks = internal::classObjectHooks();
        hooks.isModel = &isModel;
        hooks.isClassObject = &isClassObject;
        hooks.metaClassName = &metaClassName;
        hooks.objectIndex = &objectIndex;
        hooks.modelObject = &modelObject;
    }
} sInstallHooks;

} // namespace
} // namespace TAV
