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

    friend bool operator==(Boolean a, Boolean b) { return a.fValue == b.fValue; }
    friend bool operator!=(Boolean a, Boolean b) { return a.fValue != b.fValue; }
    friend bool operator<(Boolean a, Boolean b) { return a.fValue < b.fValue; }

private:
    bool fValue = false;
};

} // namespace TAV
