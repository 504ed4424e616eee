#pragma once

#include <tav/Export.h>

#include <cstdint>

namespace TAV {

class Integer {
public:
    Integer() = default;
    Integer(std::int32_t value) : fValue(value) {}
    operator std::int32_t() const { return fValue; }
    std::int32_t value() const { return fValue; }

    // Mixed forms too: otherwise comparing with a raw value is ambiguous
    // between these and the built-in operator reached by conversion.
    friend bool operator==(Integer a, Integer b) { return a.fValue == b.fValue; }
    friend bool operator==(Integer a, std::int32_t b) { return a.fValue == b; }
    friend bool operator==(std::int32_t a, Integer b) { return a == b.fValue; }
    friend bool operator!=(Integer a, Integer b) { return a.fValue != b.fValue; }
    friend bool operator!=(Integer a, std::int32_t b) { return a.fValue != b; }
    friend bool operator!=(std::int32_t a, Integer b) { return a != b.fValue; }
    friend bool operator<(Integer a, Integer b) { return a.fValue < b.fValue; }
    friend bool operator<(Integer a, std::int32_t b) { return a.fValue < b; }
    friend bool operator<(std::int32_t a, Integer b) { return a < b.fValue; }

private:
    std::int32_t fValue = 0;
};

} // namespace TAV
