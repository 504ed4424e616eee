#pragma once

#include <tav/TAV/ScalarValue.h>

#include <cstdint>

namespace TAV {

// All ones stands for unlimited ("*").
class UnlimitedNatural : public ScalarValue<UnlimitedNatural, std::uint32_t> {
public:
    using ScalarValue::ScalarValue;

    static constexpr std::uint32_t kUnlimited = 0xFFFFFFFFu;
    bool isUnlimited() const { return fValue == kUnlimited; }
};

} // namespace TAV
