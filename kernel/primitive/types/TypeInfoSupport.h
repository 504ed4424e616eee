#pragma once

#include <BRIX/ErrorHolder.h>
#include <BRIX/any.h>

#include <functional>
#include <string>

namespace TAV::internal {

// An error already in the holder belongs to a caller that carried on after a
// failed conversion: that is a bug of the caller, not bad input.
void assertNoErrorYet(BRIX::ErrorHolder const& errors, char const* source, int line);

// Records "Can't convert string '<text><suffix>" at file:line; the empty any
// it returns is what every failed conversion yields.
BRIX::any conversionFailed(BRIX::ErrorHolder& errors, std::string const& text, char const* suffix, char const* file,
                           int line);

template <class V>
V const& valueOf(BRIX::any const& value)
{
    V const* v = BRIX::any_cast<V>(&value);
    if (!v)
        throw BRIX::bad_any_cast();
    return *v;
}

// Empty values are equal to each other and before every other value, as the
// text comparison of BRIX::Type has them.
template <class V, class Equal = std::equal_to<>>
bool typedEqual(BRIX::any const& a, BRIX::any const& b, Equal equal = {})
{
    if (a.empty() || b.empty())
        return a.empty() == b.empty();
    return equal(valueOf<V>(a), valueOf<V>(b));
}

template <class V, class Less = std::less<>>
bool typedLess(BRIX::any const& a, BRIX::any const& b, Less less = {})
{
    if (a.empty() || b.empty())
        return a.empty() && !b.empty();
    return less(valueOf<V>(a), valueOf<V>(b));
}

} // namespace TAV::internal
