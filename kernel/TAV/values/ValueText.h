#pragma once

#include <tav/TAV/String.h>
#include <tav/kernel/util/Asserter.h>

#include <BRIX/Type.h>

namespace TAV::internal {

// The value class asserts where its type description only reports: callers
// that want no exception use the description. A value of another type from
// the description is as bad as an error.
template <class V, class... Args>
V valueFromText(String const& aText, char const* aSource, int aLine, char const* aFormat, Args... aArgs)
{
    BRIX::ErrorHolder errors;
    BRIX::any const value = V::getTypeInfo().convertFromString(aText.toUtf8(), errors);
    V const* result = BRIX::any_cast<V>(&value);
    if (errors.hasError() || !result)
        Asserter::MakeAlways<Exception>(aFormat, aArgs...).handle(aSource, aLine, "");
    return *result;
}

template <class V>
String textOfValue(V const& aValue)
{
    return String(V::getTypeInfo().convertToString(BRIX::any(aValue)));
}

} // namespace TAV::internal
