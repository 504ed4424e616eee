#pragma once

#include <tav/kernel/util/propertystorage/PropertyStorageIntf.h>

#include <cstdint>

namespace TAV {

struct IntrospectiveMethods;

// A single-valued property, reached through its declaring class's table.
class TAV_EXPORT SingleValuedPropertyManager : public PropertyStorageIntf {
public:
    // aLower is the lower bound of the property's row: with 1, the table answers has
    // constantly true, and has reads the value instead.
    SingleValuedPropertyManager(IntrospectiveMethods const* aMethods, unsigned aPropertyId, int aLower);

    bool has(ImmutableClassObject const& aObject) const override;
    ImmutableSequence<ImmutableObject> get(ImmutableClassObject const& aObject) const override;
    Sequence<Object> get(ImmutableClassObject const& aObject) override;
    ImmutableObject getOne(ImmutableClassObject const& aObject) const override;
    Object getOne(ImmutableClassObject const& aObject) override;
    void setOrAdd(ClassObject aObject, Object const& aValue) override;
    void setOrAddEndOnly(ClassObject aObject, Object const& aValue) override;
    // The value is not looked at: a property with one value has one thing to remove.
    void remove(ClassObject aObject, Object const& aValue) override;
    void removeEndOnly(ClassObject aObject, Object const& aValue) override;
    void remove(ClassObject aObject) override;
    void removeEndOnly(ClassObject aObject) override;
    void removeOne(ClassObject aObject) override;
    void removeOneEndOnly(ClassObject aObject) override;

private:
    IntrospectiveMethods const* methods; // not owned
    std::uint32_t propertyId;
    std::int32_t lower;
    // Whether the property's type is a metaclass: an unset reference reads as null, so
    // getOne needs no has first.
    bool reference;
};

} // namespace TAV
