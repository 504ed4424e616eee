#pragma once

#include <tav/TAV/EnumerationValue.h>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT ParameterDirectionKind : public EnumerationOf<ParameterDirectionKind> {
public:
    enum Value : int { In = 0, Inout = 1, Out = 2, Return = 3 };

    using EnumerationOf::EnumerationOf;
    static Literals const& getLiterals();
    static std::string const& getTypeName();
    // A BRIX::SpecificEnumType over getLiterals().
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
};

} // namespace TAV
