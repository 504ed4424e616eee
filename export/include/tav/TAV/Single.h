#pragma once

#include <tav/Export.h>

#include <cstdint>

namespace TAV {

class Single {
public:
    Single() = default;
    Single(float value) : fValue(value) {}
    operator float() const { return fValue; }
    float value() const { return fValue; }

    friend bool operator==(Single a, Single b) { return a.fValue == b.fValue; }
    friend bool operator!=(Single a, Single b) { return a.fValue != b.fValue; }
    friend bool operator<(Single a, Single b) { return a.fValue < b.fValue; }

private:
    float fValue = 0.0f;
};

} // namespace TAV
