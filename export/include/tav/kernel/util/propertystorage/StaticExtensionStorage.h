#pragma once

#include <tav/TAV/Stereotype_h.h>
#include <tav/kernel/util/propertystorage/PropertyStorageIntf.h>

namespace TAV {

// The static extension of a stereotype: the stereotype objects of that stereotype
// among an object's applied stereotype instances. What get gives is a copy.
class TAV_EXPORT StaticExtensionStorage : public PropertyStorageIntf {
public:
    explicit StaticExtensionStorage(ImmutableStereotype aStereotype);

    // setOrAdd replaces the object's instance of the stereotype: one is applied at most once.
    TAV_PROPERTY_STORAGE_OPERATIONS

private:
    ImmutableStereotype stereotype;
};

} // namespace TAV
