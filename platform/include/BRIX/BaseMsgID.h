#pragma once

#include <tav/Export.h>

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace BRIX {

// One argument of a catalogued message; the index of the alternative is its tag.
using MsgArgument = std::variant<std::u16string, std::int64_t, double>;

// A message named by catalogue and key, with the values its text refers to.
class TAV_EXPORT BaseMsgID {
public:
    BaseMsgID() = default;
    BaseMsgID(std::string aCatalogue, std::string aKey)
        : catalogue(std::move(aCatalogue)), key(std::move(aKey)) {}
    virtual ~BaseMsgID();

    BaseMsgID& addArgument(std::u16string value);
    // 8-bit texts are UTF-8.
    BaseMsgID& addArgument(std::string_view value);
    BaseMsgID& addArgument(const char* value) { return addArgument(std::string_view(value)); }
    BaseMsgID& addArgument(const std::string& value) { return addArgument(std::string_view(value)); }
    BaseMsgID& addArgument(const char16_t* value) { return addArgument(std::u16string(value)); }
    template<std::integral I>
    BaseMsgID& addArgument(I value) { return addIntegral(static_cast<std::int64_t>(value)); }
    BaseMsgID& addArgument(double value);

    std::vector<MsgArgument> arguments;
    std::string catalogue;
    std::string key;

private:
    BaseMsgID& addIntegral(std::int64_t value);
};

} // namespace BRIX
