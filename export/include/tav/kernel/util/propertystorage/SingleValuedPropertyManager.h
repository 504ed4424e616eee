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

    // remove(object, value) does not look at the value: a property with one value has one
    // thing to remove.
    TAV_PROPERTY_STORAGE_OPERATIONS

private:
    IntrospectiveMethods const* methods; // not owned
    std::uint32_t propertyId;
    std::int32_t lower;
    // Whether the property's type is a metaclass: an unset reference reads as null, so
    // getOne needs no has first.
    bool reference;
};

} // namespace TAV
