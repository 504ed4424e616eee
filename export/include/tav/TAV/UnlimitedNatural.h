#pragma once

#include <tav/Export.h>

#include <cstdint>

namespace TAV {

// All ones stands for unlimited ("*").
class UnlimitedNatural {
public:
    static constexpr std::uint32_t kUnlimited = 0xFFFFFFFFu;

    UnlimitedNatural() = default;
    UnlimitedNatural(std::uint32_t value) : fValue(value) {}
    operator std::uint32_t() const { return fValue; }
    std::uint32_t value() const { return fValue; }
    bool isUnlimited() const { return fValue == kUnlimited; }

    // Mixed forms too: otherwise comparing with a raw value is ambiguous
    // between these and the built-in operator reached by conversion.
    friend bool operator==(UnlimitedNatural a, UnlimitedNatural b) { return a.fValue == b.fValue; }
    friend bool operator==(UnlimitedNatural a, std::uint32_t b) { return a.fValue == b; }
    friend bool operator==(std::uint32_t a, UnlimitedNatural b) { return a == b.fValue; }
    friend bool operator!=(UnlimitedNatural a, UnlimitedNatural b) { return a.fValue != b.fValue; }
    friend bool operator!=(UnlimitedNatural a, std::uint32_t b) { return a.fValue != b; }
    friend bool operator!=(std::uint32_t a, UnlimitedNatural b) { return a != b.fValue; }
    friend bool operator<(UnlimitedNatural a, UnlimitedNatural b) { return a.fValue < b.fValue; }
    friend bool operator<(UnlimitedNatural a, std::uint32_t b) { return a.fValue < b; }
    friend bool operator<(std::uint32_t a, UnlimitedNatural b) { return a < b.fValue; }

private:
    std::uint32_t fValue = 0;
};

} // namespace TAV
