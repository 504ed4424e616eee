#pragma once

#include <tav/TAV/DataType_h.h>
#include <tav/kernel/primitive/TypeInfoRegistry.h>

#include <BRIX/Type.h>

#include <string>

// A value class's name in the type registry, and its one description, made
// on first use so that conversions work before anything is registered. The
// DataType is the one registered under the name: null until the metamodel
// stands.
#define TAV_VALUE_TYPE_IDENTITY(X, createDescription)                                                                  \
    std::string const& X::getTypeName()                                                                                \
    {                                                                                                                  \
        static std::string const sName(#X);                                                                            \
        return sName;                                                                                                  \
    }                                                                                                                  \
    BRIX::TypeInfo const& X::getTypeInfo()                                                                             \
    {                                                                                                                  \
        static BRIX::TypeInfo const sInfo = createDescription();                                                       \
        return sInfo;                                                                                                  \
    }                                                                                                                  \
    ImmutableDataType X::MetaDataType()                                                                                \
    {                                                                                                                  \
        return TypeInfoRegistry::getMetaType(getTypeName());                                                           \
    }                                                                                                                  \
    ImmutableDataType X::getMetaDataType() const                                                                       \
    {                                                                                                                  \
        return MetaDataType();                                                                                         \
    }
