#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ScalarValue.h>
#include <tav/TAV/String.h>

#include <type_traits>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT Boolean : public ScalarValue<Boolean, bool> {
public:
    using ScalarValue::ScalarValue;
    // Asserts on a text that is no Boolean, as fromString does.
    explicit Boolean(String const& text);
    // Else Boolean("false") would take the pointer-to-bool conversion, and
    // be true. A template, so that Boolean(0) still means false.
    template <class T>
        requires std::is_same_v<std::decay_t<T>, char const*> || std::is_same_v<std::decay_t<T>, char*>
    explicit Boolean(T&& text) : Boolean(String(text))
    {
    }

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static Boolean fromString(String const& text);
};

} // namespace TAV
