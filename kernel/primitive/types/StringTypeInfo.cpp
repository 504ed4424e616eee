#include <tav/kernel/primitive/types/StringTypeInfo.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

#include <tav/TAV/String.h>

namespace TAV {

namespace {
constexpr char kSource[] = "kernel/primitive/types/StringTypeInfo";
}

BRIX::TypeInfo StringTypeInfo::Create()
{
    return BRIX::TypeInfo(std::make_unique<StringTypeInfo>());
}

BRIX::any StringTypeInfo::convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    return String(text);
}

std::string StringTypeInfo::convertToString(BRIX::any const& value) const
{
    return internal::valueOf<String>(value).toUtf8();
}

BRIX::any StringTypeInfo::convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    return String(text);
}

std::u16string StringTypeInfo::convertToUString(BRIX::any const& value) const
{
    return internal::valueOf<String>(value).str();
}

BRIX::any StringTypeInfo::defaultConstruct() const
{
    return String();
}

bool StringTypeInfo::isEqualTo(BRIX::any const& a, BRIX::any const& b) const
{
    return internal::typedEqual<String>(a, b);
}

bool StringTypeInfo::isLessThan(BRIX::any const& a, BRIX::any const& b) const
{
    return internal::typedLess<String>(a, b);
}

std::unique_ptr<BRIX::Type> StringTypeInfo::clone() const
{
    return std::make_unique<StringTypeInfo>(*this);
}

} // namespace TAV
