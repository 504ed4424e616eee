#pragma once

#include <BRIX/ErrorHolder.h>
#include <BRIX/any.h>

#include <string>

namespace TAV::internal {

// An error already in the holder belongs to a caller that carried on after a
// failed conversion: that is a bug of the caller, not bad input.
void assertNoErrorYet(BRIX::ErrorHolder const& errors, char const* source, int line);

// Records "Can't convert string '<text><suffix>" at file:line; the empty any
// it returns is what every failed conversion yields.
BRIX::any conversionFailed(BRIX::ErrorHolder& errors, std::string const& text, char const* suffix, char const* file,
                           int line);

} // namespace TAV::internal
