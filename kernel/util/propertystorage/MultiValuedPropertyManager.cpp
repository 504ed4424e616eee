#include <tav/kernel/util/propertystorage/MultiValuedPropertyManager.h>

#include "kernel/util/propertystorage/ObjectOf.h"
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

namespace TAV {

namespace {
constexpr char kSource[] = "kernel/util/propertystorage/MultiValuedPropertyManager";
using propertystorage::objectOf;
} // namespace

MultiValuedPropertyManager::MultiValuedPropertyManager(IntrospectiveMethods const* aMethods, unsigned aPropertyId)
    : methods(aMethods), propertyId(aPropertyId)
{
}

namespace {
using Fetch = IntrospectiveMethods::SequencePtr (*)(NSInterface::ClassObjectIntf*, Deviant, unsigned, bool);

// The table's functions take a writable object whatever the caller means to do;
// reading passes the flag false.
Sequence<Object> fetch(Fetch aFetch, ImmutableClassObject const& aObject, unsigned aId, bool aForWriting)
{
    auto* object = const_cast<NSInterface::ClassObjectIntf*>(objectOf(aObject, kSource));
    return Sequence<Object>(aFetch(object, aObject.getDeviant(), aId, aForWriting), aObject.getDeviant());
}
} // namespace

bool MultiValuedPropertyManager::has(ImmutableClassObject const& aObject) const
{
    return fetch(methods->getMultiValued, aObject, propertyId, false).size() >= 1;
}

ImmutableSequence<ImmutableObject> MultiValuedPropertyManager::get(ImmutableClassObject const& aObject) const
{
    return propertystorage::readOnly(fetch(methods->getMultiValued, aObject, propertyId, true));
}

Sequence<Object> MultiValuedPropertyManager::get(ImmutableClassObject const& aObject)
{
    return fetch(methods->getMultiValued, aObject, propertyId, true);
}

ImmutableObject MultiValuedPropertyManager::getOne(ImmutableClassObject const& aObject) const
{
    auto const values = fetch(methods->getMultiValued, aObject, propertyId, false);
    return values.empty() ? ImmutableObject() : ImmutableObject(values.front());
}

Object MultiValuedPropertyManager::getOne(ImmutableClassObject const& aObject)
{
    auto const values = fetch(methods->getMultiValued, aObject, propertyId, false);
    return values.empty() ? Object() : values.front();
}

void MultiValuedPropertyManager::setOrAdd(ClassObject aObject, Object const& aValue)
{
    fetch(methods->getMultiValued, aObject, propertyId, true).push_back(aValue);
}

void MultiValuedPropertyManager::setOrAddEndOnly(ClassObject aObject, Object const& aValue)
{
    fetch(methods->getOnlyMultiValued, aObject, propertyId, true).push_back(aValue);
}

void MultiValuedPropertyManager::remove(ClassObject aObject, Object const& aValue)
{
    fetch(methods->getMultiValued, aObject, propertyId, true).removeAll(aValue);
}

void MultiValuedPropertyManager::removeEndOnly(ClassObject aObject, Object const& aValue)
{
    fetch(methods->getOnlyMultiValued, aObject, propertyId, true).removeAll(aValue);
}

void MultiValuedPropertyManager::remove(ClassObject aObject)
{
    fetch(methods->getMultiValued, aObject, propertyId, true).clear();
}

void MultiValuedPropertyManager::removeEndOnly(ClassObject aObject)
{
    fetch(methods->getOnlyMultiValued, aObject, propertyId, true).clear();
}

void MultiValuedPropertyManager::removeOne(ClassObject aObject)
{
    auto const values = fetch(methods->getMultiValued, aObject, propertyId, true);
    if (!values.empty())
        values.erase(0);
}

void MultiValuedPropertyManager::removeOneEndOnly(ClassObject aObject)
{
    auto const values = fetch(methods->getOnlyMultiValued, aObject, propertyId, true);
    if (!values.empty())
        values.erase(0);
}

} // namespace TAV
