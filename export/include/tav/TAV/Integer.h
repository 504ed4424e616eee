#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ScalarValue.h>
#include <tav/TAV/String.h>

#include <cstdint>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT Integer : public ScalarValue<Integer, std::int32_t> {
public:
    using ScalarValue::ScalarValue;
    // Asserts on a text that is no Integer, as fromString does.
    explicit Integer(String const& text);

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static Integer fromString(String const& text);
};

} // namespace TAV
