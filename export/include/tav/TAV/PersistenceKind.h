#pragma once

#include <tav/TAV/EnumerationValue.h>

namespace TAV {

class TAV_EXPORT PersistenceKind : public EnumerationValue {
public:
    enum Value : int { Default = 0, Transient = 1, Extension = 2 };

    PersistenceKind() = default;
    PersistenceKind(int value) : fValue(value) {}
    operator int() const { return fValue; }
    int value() const { return fValue; }

    static Literals const& getLiterals();
    std::string toString() const { return EnumerationValue::toString(getLiterals(), fValue); }
    // False, and this value unchanged, for an unknown literal.
    bool fromString(std::string const& name) { return EnumerationValue::fromString(getLiterals(), name, fValue); }

    // Mixed forms too: otherwise comparing with a raw value is ambiguous
    // between these and the built-in operator reached by conversion.
    friend bool operator==(PersistenceKind a, PersistenceKind b) { return a.fValue == b.fValue; }
    friend bool operator==(PersistenceKind a, int b) { return a.fValue == b; }
    friend bool operator==(int a, PersistenceKind b) { return a == b.fValue; }
    friend bool operator!=(PersistenceKind a, PersistenceKind b) { return a.fValue != b.fValue; }
    friend bool operator!=(PersistenceKind a, int b) { return a.fValue != b; }
    friend bool operator!=(int a, PersistenceKind b) { return a != b.fValue; }
    friend bool operator<(PersistenceKind a, PersistenceKind b) { return a.fValue < b.fValue; }
    friend bool operator<(PersistenceKind a, int b) { return a.fValue < b; }
    friend bool operator<(int a, PersistenceKind b) { return a < b.fValue; }

private:
    int fValue = 0;
};

} // namespace TAV
