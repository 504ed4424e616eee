#pragma once

#include <tav/Export.h>

#include <cstdint>

namespace TAV {

class Real {
public:
    Real() = default;
    Real(double value) : fValue(value) {}
    operator double() const { return fValue; }
    double value() const { return fValue; }

    // Mixed forms too: otherwise comparing with a raw value is ambiguous
    // between these and the built-in operator reached by conversion.
    friend bool operator==(Real a, Real b) { return a.fValue == b.fValue; }
    friend bool operator==(Real a, double b) { return a.fValue == b; }
    friend bool operator==(double a, Real b) { return a == b.fValue; }
    friend bool operator!=(Real a, Real b) { return a.fValue != b.fValue; }
    friend bool operator!=(Real a, double b) { return a.fValue != b; }
    friend bool operator!=(double a, Real b) { return a != b.fValue; }
    friend bool operator<(Real a, Real b) { return a.fValue < b.fValue; }
    friend bool operator<(Real a, double b) { return a.fValue < b; }
    friend bool operator<(double a, Real b) { return a < b.fValue; }

private:
    double fValue = 0.0;
};

} // namespace TAV
