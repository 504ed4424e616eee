#include "kernel/TAV/values/TypeIdentity.h"

#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/kernel/primitive/types/ValueTypeInfos.h>
#include <tav/kernel/util/Asserter.h>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/TAV/values/Scalars";

// The value class asserts where its type description only reports: callers
// that want no exception use the description.
template <class V>
V parse(String const& text, char const* message)
{
    BRIX::ErrorHolder errors;
    BRIX::any const value = V::getTypeInfo().convertFromString(text.toUtf8(), errors);
    V const* result = BRIX::any_cast<V>(&value);
    if (errors.hasError() || !result)
        Asserter::MakeAlways<Exception>("%s", message).handle(kSource, __LINE__, "");
    return *result;
}

template <class V>
String print(V value)
{
    return String(V::getTypeInfo().convertToString(BRIX::any(value)));
}

} // namespace

#define TAV_SCALAR_TEXT(X, Description, message)                                                                      \
    X::X(String const& text) : X(parse<X>(text, message)) {}                                                           \
    TAV_VALUE_TYPE_IDENTITY(X, Description::Create)                                                                    \
    String X::toString() const                                                                                         \
    {                                                                                                                  \
        return print(*this);                                                                                           \
    }                                                                                                                  \
    X X::fromString(String const& text)                                                                                \
    {                                                                                                                  \
        return parse<X>(text, message);                                                                                \
    }

TAV_SCALAR_TEXT(Boolean, BooleanTypeInfo, "Unable to convert from string to bool!")
TAV_SCALAR_TEXT(Integer, IntegerTypeInfo, "Unable to convert from string to INT32_T!")
TAV_SCALAR_TEXT(UnlimitedNatural, UnlimitedNaturalTypeInfo, "Unable to convert from string to UINT32_T!")
TAV_SCALAR_TEXT(Real, RealTypeInfo, "Unable to convert from string to double!")
TAV_SCALAR_TEXT(Double, DoubleTypeInfo, "Unable to convert from string to double!")
TAV_SCALAR_TEXT(Single, SingleTypeInfo, "Unable to convert from string to float!")

#undef TAV_SCALAR_TEXT

} // namespace TAV
