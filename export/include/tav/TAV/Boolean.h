#pragma once

#include <tav/Export.h>

#include <cstdint>

namespace TAV {

class Boolean {
public:
    Boolean() = default;
    Boolean(bool value) : fValue(value) {}
    operator bool() const { return fValue; }
    bool value() const { return fValue; }

    // Mixed forms too: otherwise comparing with a raw value is ambiguous
    // between these and the built-in operator reached by conversion.
    friend bool operator==(Boolean a, Boolean b) { return a.fValue == b.fValue; }
    friend bool operator==(Boolean a, bool b) { return a.fValue == b; }
    friend bool operator==(bool a, Boolean b) { return a == b.fValue; }
    friend bool operator!=(Boolean a, Boolean b) { return a.fValue != b.fValue; }
    friend bool operator!=(Boolean a, bool b) { return a.fValue != b; }
    friend bool operator!=(bool a, Boolean b) { return a != b.fValue; }
    friend bool operator<(Boolean a, Boolean b) { return a.fValue < b.fValue; }
    friend bool operator<(Boolean a, bool b) { return a.fValue < b; }
    friend bool operator<(bool a, Boolean b) { return a < b.fValue; }

private:
    bool fValue = false;
};

} // namespace TAV
