#include <tav/kernel/util/propertystorage/SingleValuedPropertyManager.h>

#include "kernel/util/propertystorage/ObjectOf.h"
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/containers/sequence/views/GenericPropertyToSequenceProxy.h>
#include <tav/kernel/family/Support.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <utility>


namespace TAV {

namespace {
constexpr char kSource[] = "kernel/util/propertystorage/SingleValuedPropertyManager";
using propertystorage::objectOf;

// Metaclasses have table functions; the records of value types have none.
bool isReference(IntrospectiveMethods const* aMethods, unsigned aPropertyId)
{
    MetaPropertyDescription const* row = aMethods->descriptions[aPropertyId];
    IntrospectiveMethods const* type = row ? row->typePackage()->types[row->typeIndex] : nullptr;
    return type && type->getSingleValued;
}
} // namespace

SingleValuedPropertyManager::SingleValuedPropertyManager(
    IntrospectiveMethods const* aMethods, unsigned aPropertyId, int aLower)
    : methods(aMethods), propertyId(aPropertyId), lower(aLower), reference(isReference(aMethods, aPropertyId))
{
}

bool SingleValuedPropertyManager::has(ImmutableClassObject const& aObject) const
{
    auto const* object = objectOf(aObject, kSource);
    if (lower != 1)
        return methods->hasSingleValued(object, aObject.getDeviant(), propertyId);
    // The table says true for every mandatory property: whether it holds something is in the value.
    return methods->getSingleValued(object, aObject.getDeviant(), propertyId).isValid();
}

Sequence<Object> SingleValuedPropertyManager::get(ImmutableClassObject const& aObject)
{
    objectOf(aObject, kSource);
    Generic::SequencePtr view(new GenericPropertyToSequenceProxy(aObject, methods, propertyId, lower));
    return Sequence<Object>(std::move(view), aObject.getDeviant());
}

ImmutableSequence<ImmutableObject> SingleValuedPropertyManager::get(ImmutableClassObject const& aObject) const
{
    return propertystorage::readOnly(const_cast<SingleValuedPropertyManager*>(this)->get(aObject));
}

ImmutableObject SingleValuedPropertyManager::getOne(ImmutableClassObject const& aObject) const
{
    auto const* object = objectOf(aObject, kSource);
    if (!reference && !methods->hasSingleValued(object, aObject.getDeviant(), propertyId))
        return ImmutableObject();
    return methods->getSingleValued(object, aObject.getDeviant(), propertyId);
}

Object SingleValuedPropertyManager::getOne(ImmutableClassObject const& aObject)
{
    ImmutableObject const value = std::as_const(*this).getOne(aObject);
    return Object(value.internal_intf(), value.getDeviant());
}

void SingleValuedPropertyManager::setOrAdd(ClassObject aObject, Object const& aValue)
{
    methods->setSingleValued(objectOf(aObject, kSource), aObject.getDeviant(), propertyId, aValue);
}

void SingleValuedPropertyManager::setOrAddEndOnly(ClassObject aObject, Object const& aValue)
{
    methods->setOnlySingleValued(objectOf(aObject, kSource), aObject.getDeviant(), propertyId, aValue);
}

void SingleValuedPropertyManager::remove(ClassObject aObject, Object const&)
{
    remove(std::move(aObject));
}

void SingleValuedPropertyManager::removeEndOnly(ClassObject aObject, Object const&)
{
    removeEndOnly(std::move(aObject));
}

void SingleValuedPropertyManager::remove(ClassObject aObject)
{
    methods->removeSingleValued(objectOf(aObject, kSource), aObject.getDeviant(), propertyId);
}

void SingleValuedPropertyManager::removeEndOnly(ClassObject aObject)
{
    methods->removeOnlySingleValued(objectOf(aObject, kSource), aObject.getDeviant(), propertyId);
}

void SingleValuedPropertyManager::removeOne(ClassObject aObject)
{
    remove(std::move(aObject));
}

void SingleValuedPropertyManager::removeOneEndOnly(ClassObject aObject)
{
    removeEndOnly(std::move(aObject));
}

} // namespace TAV
