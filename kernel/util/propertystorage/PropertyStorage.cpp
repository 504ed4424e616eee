#include <tav/kernel/util/propertystorage/PropertyStorage.h>

#include <tav/TAV/ClassObject_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/util/propertystorage/PropertyStorageType.h>

namespace TAV {

bool PropertyStorage::has(ImmutableClassObject const& aObject) const
{
    return (*this)->has(aObject);
}

ImmutableSequence<ImmutableObject> PropertyStorage::get(ImmutableClassObject const& aObject) const
{
    return static_cast<PropertyStorageIntf const*>(operator->())->get(aObject);
}

Sequence<Object> PropertyStorage::get(ImmutableClassObject const& aObject)
{
    return (*this)->get(aObject);
}

ImmutableObject PropertyStorage::getOne(ImmutableClassObject const& aObject) const
{
    return static_cast<PropertyStorageIntf const*>(operator->())->getOne(aObject);
}

Object PropertyStorage::getOne(ImmutableClassObject const& aObject)
{
    return (*this)->getOne(aObject);
}

void PropertyStorage::setOrAdd(ClassObject const& aObject, Object const& aValue)
{
    (*this)->setOrAdd(aObject, aValue);
}

void PropertyStorage::setOrAddEndOnly(ClassObject const& aObject, Object const& aValue)
{
    (*this)->setOrAddEndOnly(aObject, aValue);
}

void PropertyStorage::remove(ClassObject const& aObject, Object const& aValue)
{
    (*this)->remove(aObject, aValue);
}

void PropertyStorage::removeEndOnly(ClassObject const& aObject, Object const& aValue)
{
    (*this)->removeEndOnly(aObject, aValue);
}

void PropertyStorage::remove(ClassObject const& aObject)
{
    (*this)->remove(aObject);
}

void PropertyStorage::removeEndOnly(ClassObject const& aObject)
{
    (*this)->removeEndOnly(aObject);
}

void PropertyStorage::removeOne(ClassObject const& aObject)
{
    (*this)->removeOne(aObject);
}

void PropertyStorage::removeOneEndOnly(ClassObject const& aObject)
{
    (*this)->removeOneEndOnly(aObject);
}

std::string const& PropertyStorage::getTypeName()
{
    static std::string const sName(PropertyStorageType::kName);
    return sName;
}

BRIX::TypeInfo const& PropertyStorage::getTypeInfo()
{
    static BRIX::TypeInfo const sInfo = PropertyStorageType::Create();
    return sInfo;
}

PropertyStorage::operator ValueObject() const
{
    return ValueObjectFactory::createFrom(*this);
}

PropertyStorage::operator Object() const
{
    return ValueObjectFactory::createFrom(*this);
}

} // namespace TAV
