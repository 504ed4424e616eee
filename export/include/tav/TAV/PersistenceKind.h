#pragma once

#include <tav/TAV/EnumerationValue.h>

namespace TAV {

class ImmutableDataType;

class TAV_EXPORT PersistenceKind : public EnumerationOf<PersistenceKind> {
public:
    enum Value : int { Default = 0, Transient = 1, Extension = 2 };

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
