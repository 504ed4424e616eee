#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ScalarValue.h>
#include <tav/TAV/String.h>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT Single : public ScalarValue<Single, float> {
public:
    using ScalarValue::ScalarValue;
    // Asserts on a text that is no Single, as fromString does.
    explicit Single(String const& text);

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static Single fromString(String const& text);
};

} // namespace TAV
