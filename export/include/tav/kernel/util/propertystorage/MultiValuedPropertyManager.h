#pragma once

#include <tav/kernel/util/propertystorage/PropertyStorageIntf.h>

#include <cstdint>

namespace TAV {

struct IntrospectiveMethods;

// A multi-valued property: every operation works on the sequence its declaring
// class's table hands out, the association-aware one or, for EndOnly, the raw one.
class TAV_EXPORT MultiValuedPropertyManager : public PropertyStorageIntf {
public:
    MultiValuedPropertyManager(IntrospectiveMethods const* aMethods, unsigned aPropertyId);

    // removeOne drops the first element, if any.
    TAV_PROPERTY_STORAGE_OPERATIONS

private:
    IntrospectiveMethods const* methods; // not owned
    std::uint32_t propertyId;
};

} // namespace TAV
