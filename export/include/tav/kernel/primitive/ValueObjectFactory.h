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

    // A value of a value class, described by the class itself, so that it
    // needs no registration: values exist before the registry is filled.
    template <class V>
    static ValueObject createFrom(V const& aValue)
    {
        return createWithType(V::getTypeName(), V::getTypeInfo(), BRIX::any(aValue));
    }
    // The DataType, if any, is the one registered under the name.
    static ValueObject createWithType(std::string const& aTypeName, BRIX::TypeInfo const& aTypeInfo,
                                      BRIX::any aValue);
};

} // namespace TAV
