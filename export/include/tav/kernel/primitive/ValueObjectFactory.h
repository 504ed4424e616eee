#pragma once

#include <tav/TAV/ValueObject_h.h>

#include <string>

namespace TAV {

// Value objects of registered types, by type name. An unknown name gives a
// null handle, so callers can probe with it.
class TAV_EXPORT ValueObjectFactory {
public:
    ValueObjectFactory() = delete;

    static bool isValueObjectType(std::string const& aTypeName);
    // The type's default value.
    static ValueObject create(std::string const& aTypeName);
    // A copy of `aValue`, which must be of the named type.
    static ValueObject create(std::string const& aTypeName, BRIX::any const& aValue);
    // Text that does not convert is an assertion with the conversion's error text.
    static ValueObject createFromString(std::string const& aTypeName, String const& aText);
};

} // namespace TAV
