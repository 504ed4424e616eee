#pragma once

#include <BRIX/Type.h>

#include <string>

// A value class's name in the type registry, and its one description, made
// on first use so that conversions work before anything is registered.
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
    }
