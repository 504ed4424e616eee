#pragma once

#include <tav/Export.h>

#include <cstdint>

namespace TAV {

class Double {
public:
    Double() = default;
    Double(double value) : fValue(value) {}
    operator double() const { return fValue; }
    double value() const { return fValue; }

    friend bool operator==(Double a, Double b) { return a.fValue == b.fValue; }
    friend bool operator!=(Double a, Double b) { return a.fValue != b.fValue; }
    friend bool operator<(Double a, Double b) { return a.fValue < b.fValue; }

private:
    double fValue = 0.0;
};

} // namespace TAV
