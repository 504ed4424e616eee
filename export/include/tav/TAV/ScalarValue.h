#pragma once

namespace TAV {

// The value classes over one raw number: default, conversions both ways and
// comparison. The mixed forms exist because comparing with a raw value would
// otherwise be ambiguous between these and the built-in operator reached by
// conversion.
template <class Derived, class Raw>
class ScalarValue {
public:
    using RawType = Raw;

    ScalarValue() = default;
    ScalarValue(Raw value) : fValue(value) {}
    operator Raw() const { return fValue; }
    Raw value() const { return fValue; }

    friend bool operator==(Derived a, Derived b) { return a.fValue == b.fValue; }
    friend bool operator==(Derived a, Raw b) { return a.fValue == b; }
    friend bool operator==(Raw a, Derived b) { return a == b.fValue; }
    friend bool operator!=(Derived a, Derived b) { return a.fValue != b.fValue; }
    friend bool operator!=(Derived a, Raw b) { return a.fValue != b; }
    friend bool operator!=(Raw a, Derived b) { return a != b.fValue; }
    friend bool operator<(Derived a, Derived b) { return a.fValue < b.fValue; }
    friend bool operator<(Derived a, Raw b) { return a.fValue < b; }
    friend bool operator<(Raw a, Derived b) { return a < b.fValue; }

protected:
    Raw fValue{};
};

} // namespace TAV
