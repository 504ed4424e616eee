#include <tav/kernel/primitive/types/BooleanTypeInfo.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

#include <tav/TAV/Boolean.h>

namespace TAV {

namespace {
constexpr char kSource[] = "kernel/primitive/types/BooleanTypeInfo";
}

BRIX::TypeInfo BooleanTypeInfo::Create()
{
    return BRIX::TypeInfo(std::make_unique<BooleanTypeInfo>());
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
    return internal::valueOf<Boolean>(value) ? "true" : "false";
}

BRIX::any BooleanTypeInfo::defaultConstruct() const
{
    return Boolean();
}

bool BooleanTypeInfo::isEqualTo(BRIX::any const& a, BRIX::any const& b) const
{
    return internal::typedEqual<Boolean>(a, b);
}

bool BooleanTypeInfo::isLessThan(BRIX::any const& a, BRIX::any const& b) const
{
    return internal::typedLess<Boolean>(a, b);
}

std::unique_ptr<BRIX::Type> BooleanTypeInfo::clone() const
{
    return std::make_unique<BooleanTypeInfo>(*this);
}

} // namespace TAV
