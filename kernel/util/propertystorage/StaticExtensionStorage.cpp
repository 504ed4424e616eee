#include <tav/kernel/util/propertystorage/StaticExtensionStorage.h>

#include "kernel/util/propertystorage/ObjectOf.h"
#include <tav/TAV/Class_h.h>
#include <tav/TAV/DynamicStereotypeObject_h.h>
#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

namespace TAV {

namespace {
constexpr char kSource[] = "kernel/util/propertystorage/StaticExtensionStorage";
// ClassObject.appliedStereotypeInstance
constexpr unsigned kAppliedStereotypeInstance = 1;

// A dynamic stereotype object names its stereotype; a generated one is an instance of it.
ImmutableStereotype stereotypeOf(ImmutableStereotypeObject const& aObject)
{
    ImmutableDynamicStereotypeObject const dynamic(aObject);
    if (dynamic.internal_intf())
        return dynamic.getMetadata();
    return ImmutableStereotype(aObject.getMetaClass());
}

Sequence<Object> applied(ImmutableClassObject const& aObject, bool aEndOnly)
{
    auto const& methods = NSInterface::ClassObjectIntf::sIntrospectiveMethods;
    auto const fetch = aEndOnly ? methods.getOnlyMultiValued : methods.getMultiValued;
    auto* object = propertystorage::objectOf(aObject, kSource);
    return Sequence<Object>(
        fetch(object, aObject.getDeviant(), kAppliedStereotypeInstance, true), aObject.getDeviant());
}

void assertStereotypeObject(Object const& aValue, int aLine)
{
    Asserter::Make<Exception>(
        ImmutableStereotypeObject(aValue).internal_intf() != nullptr, "Only Stereotypes can be added to this property!")
        .handle(kSource, aLine, "");
}
} // namespace

StaticExtensionStorage::StaticExtensionStorage(ImmutableStereotype aStereotype) : stereotype(std::move(aStereotype)) { }

Sequence<Object> StaticExtensionStorage::get(ImmutableClassObject const& aObject)
{
    auto const found = MakeSequence<StereotypeObject>({aObject.getDeviant(), MULTI_INDEX, true});
    for (Object const& candidate : applied(aObject, false)) {
        ImmutableStereotypeObject const instance(candidate);
        if (instance.internal_intf() && stereotypeOf(instance) == stereotype)
            found.push_back(StereotypeObject(candidate));
    }
    return Sequence<Object>(Generic::SequencePtr(found.internal_sequence()), aObject.getDeviant());
}

ImmutableSequence<ImmutableObject> StaticExtensionStorage::get(ImmutableClassObject const& aObject) const
{
    return propertystorage::readOnly(const_cast<StaticExtensionStorage*>(this)->get(aObject));
}

bool StaticExtensionStorage::has(ImmutableClassObject const& aObject) const
{
    return !get(aObject).empty();
}

ImmutableObject StaticExtensionStorage::getOne(ImmutableClassObject const& aObject) const
{
    auto const found = get(aObject);
    return found.empty() ? ImmutableObject() : found.front();
}

Object StaticExtensionStorage::getOne(ImmutableClassObject const& aObject)
{
    auto const found = get(aObject);
    return found.empty() ? Object() : found.front();
}

void StaticExtensionStorage::setOrAdd(ClassObject aObject, Object const& aValue)
{
    assertStereotypeObject(aValue, __LINE__);
    remove(aObject);
    applied(aObject, false).push_back(aValue);
}

void StaticExtensionStorage::setOrAddEndOnly(ClassObject aObject, Object const& aValue)
{
    assertStereotypeObject(aValue, __LINE__);
    removeEndOnly(aObject);
    applied(aObject, true).push_back(aValue);
}

void StaticExtensionStorage::remove(ClassObject aObject, Object const& aValue)
{
    assertStereotypeObject(aValue, __LINE__);
    applied(aObject, false).removeAll(aValue);
}

void StaticExtensionStorage::removeEndOnly(ClassObject aObject, Object const& aValue)
{
    assertStereotypeObject(aValue, __LINE__);
    applied(aObject, true).removeAll(aValue);
}

void StaticExtensionStorage::remove(ClassObject aObject)
{
    auto const instances = applied(aObject, false);
    for (Object const& instance : get(aObject))
        instances.removeAll(instance);
}

void StaticExtensionStorage::removeEndOnly(ClassObject aObject)
{
    auto const instances = applied(aObject, true);
    for (Object const& instance : get(aObject))
        instances.removeAll(instance);
}

void StaticExtensionStorage::removeOne(ClassObject aObject)
{
    if (Object const first = getOne(aObject); first.internal_intf())
        applied(aObject, false).removeAll(first);
}

void StaticExtensionStorage::removeOneEndOnly(ClassObject aObject)
{
    if (Object const first = getOne(aObject); first.internal_intf())
        applied(aObject, true).removeAll(first);
}

} // namespace TAV
