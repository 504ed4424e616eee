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

    friend bool operator==(Integer a, Integer b) { return a.fValue == b.fValue; }
    friend bool operator!=(Integer a, Integer b) { return a.fValue != b.fValue; }
    friend bool operator<(Integer a, Integer b) { return a.fValue < b.fValue; }

private:
    std::int32_t fValue = 0;
};

} // namespace TAV
