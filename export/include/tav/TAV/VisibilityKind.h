#pragma once

#include <tav/TAV/EnumerationValue.h>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT VisibilityKind : public EnumerationOf<VisibilityKind> {
public:
    enum Value : int { Public = 0, Private = 1, Protected = 2, Package = 3 };

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
