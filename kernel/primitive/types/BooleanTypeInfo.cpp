#include <tav/kernel/primitive/types/ValueTypeInfos.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

namespace TAV {

namespace {
constexpr char kSource[] = "kernel/primitive/types/BooleanTypeInfo";
}

BRIX::any BooleanTypeInfo::convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    if (text == "true")
        return Boolean(true);
    if (text == "false")
        return Boolean(false);
    return internal::conversionFailed(errors, text, "' to bool", __FILE__, __LINE__);
}

std::string BooleanTypeInfo::convertToString(BRIX::any const& value) const
{
    return valueOf(value) ? "true" : "false";
}

} // namespace TAV
