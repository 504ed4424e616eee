#pragma once

#include <tav/TAV/EnumerationValue.h>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT PackageMergeKind : public EnumerationOf<PackageMergeKind> {
public:
    enum Value : int { Extend = 0, Define = 1 };

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
