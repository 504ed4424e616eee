#include <tav/kernel/primitive/types/ValueTypeInfos.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

namespace TAV {

namespace {
constexpr char kSource[] = "kernel/primitive/types/StringTypeInfo";
}

BRIX::any StringTypeInfo::convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    return String(text);
}

std::string StringTypeInfo::convertToString(BRIX::any const& value) const
{
    return valueOf(value).toUtf8();
}

BRIX::any StringTypeInfo::convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    return String(text);
}

std::u16string StringTypeInfo::convertToUString(BRIX::any const& value) const
{
    return valueOf(value).str();
}

} // namespace TAV
