#include "kernel/TAV/values/TypeIdentity.h"
#include "kernel/TAV/values/ValueText.h"

#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/kernel/primitive/types/ValueTypeInfos.h>

namespace TAV {

namespace {
constexpr char kSource[] = "kernel/TAV/values/Scalars";
}

#define TAV_SCALAR_TEXT(X, Description, message)                                                                       \
    X::X(String const& text) : X(fromString(text)) {}                                                                  \
    TAV_VALUE_TYPE_IDENTITY(X, Description::Create)                                                                    \
    String X::toString() const                                                                                         \
    {                                                                                                                  \
        return internal::textOfValue(*this);                                                                           \
    }                                                                                                                  \
    X X::fromString(String const& text)                                                                                \
    {                                                                                                                  \
        return internal::valueFromText<X>(text, kSource, __LINE__, "%s", message);                                     \
    }

TAV_SCALAR_TEXT(Boolean, BooleanTypeInfo, "Unable to convert from string to bool!")
TAV_SCALAR_TEXT(Integer, IntegerTypeInfo, "Unable to convert from string to INT32_T!")
TAV_SCALAR_TEXT(UnlimitedNatural, UnlimitedNaturalTypeInfo, "Unable to convert from string to UINT32_T!")
TAV_SCALAR_TEXT(Real, RealTypeInfo, "Unable to convert from string to double!")
TAV_SCALAR_TEXT(Double, DoubleTypeInfo, "Unable to convert from string to double!")
TAV_SCALAR_TEXT(Single, SingleTypeInfo, "Unable to convert from string to float!")

#undef TAV_SCALAR_TEXT

} // namespace TAV
