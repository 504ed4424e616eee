#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ScalarValue.h>
#include <tav/TAV/String.h>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT Double : public ScalarValue<Double, double> {
public:
    using ScalarValue::ScalarValue;
    // Asserts on a text that is no Double, as fromString does.
    explicit Double(String const& text);

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static Double fromString(String const& text);
};

} // namespace TAV
