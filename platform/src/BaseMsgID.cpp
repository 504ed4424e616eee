#include <BRIX/BaseMsgID.h>
#include <hull/i18n.h>

namespace BRIX {

BaseMsgID::~BaseMsgID() = default;

BaseMsgID& BaseMsgID::addArgument(std::u16string value)
{
    arguments.emplace_back(std::move(value));
    return *this;
}

BaseMsgID& BaseMsgID::addArgument(std::string_view value)
{
    arguments.emplace_back(hull::i18n::toUtf16(value));
    return *this;
}

BaseMsgID& BaseMsgID::addArgument(double value)
{
    arguments.emplace_back(value);
    return *this;
}

BaseMsgID& BaseMsgID::addIntegral(std::int64_t value)
{
    arguments.emplace_back(value);
    return *this;
}

} // namespace BRIX
