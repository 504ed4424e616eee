#pragma once

#include <tav/kernel/util/RefBase.h>
#include <tav/kernel/util/propertystorage/PropertyStorageIntf.h>

#include <BRIX/Type.h>

#include <string>

namespace TAV {

class ValueObject;

// The counted handle on a property storage; a value class, so that a Property
// keeps its storage as a field and reflection carries it as a value object.
// Each operation acts on the object handle's deviant.
class TAV_EXPORT PropertyStorage : public RefBase<PropertyStorageIntf*> {
public:
    PropertyStorage() = default;
    PropertyStorage(PropertyStorageIntf* aStorage) : RefBase(aStorage) { }

    bool has(ImmutableClassObject const& aObject) const;
    ImmutableSequence<ImmutableObject> get(ImmutableClassObject const& aObject) const;
    Sequence<Object> get(ImmutableClassObject const& aObject);
    ImmutableObject getOne(ImmutableClassObject const& aObject) const;
    Object getOne(ImmutableClassObject const& aObject);
    void setOrAdd(ClassObject const& aObject, Object const& aValue);
    void setOrAddEndOnly(ClassObject const& aObject, Object const& aValue);
    void remove(ClassObject const& aObject, Object const& aValue);
    void removeEndOnly(ClassObject const& aObject, Object const& aValue);
    void remove(ClassObject const& aObject);
    void removeEndOnly(ClassObject const& aObject);
    void removeOne(ClassObject const& aObject);
    void removeOneEndOnly(ClassObject const& aObject);

    // As every value class: its name in the type registry and its description.
    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    operator ValueObject() const;
    operator Object() const;
};

} // namespace TAV
