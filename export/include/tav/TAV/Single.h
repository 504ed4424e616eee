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

    // Mixed forms too: otherwise comparing with a raw value is ambiguous
    // between these and the built-in operator reached by conversion.
    friend bool operator==(Single a, Single b) { return a.fValue == b.fValue; }
    friend bool operator==(Single a, float b) { return a.fValue == b; }
    friend bool operator==(float a, Single b) { return a == b.fValue; }
    friend bool operator!=(Single a, Single b) { return a.fValue != b.fValue; }
    friend bool operator!=(Single a, float b) { return a.fValue != b; }
    friend bool operator!=(float a, Single b) { return a != b.fValue; }
    friend bool operator<(Single a, Single b) { return a.fValue < b.fValue; }
    friend bool operator<(Single a, float b) { return a.fValue < b; }
    friend bool operator<(float a, Single b) { return a < b.fValue; }

private:
    float fValue = 0.0f;
};

} // namespace TAV
