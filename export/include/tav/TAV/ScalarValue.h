#pragma once

#include <tav/Export.h>
#include <tav/TAV/ObjectHandle.h>

namespace TAV {

class ImmutableObject;
class Object;
class ValueObject;

// The value classes over one raw number: default, conversions both ways and
// comparison. The mixed forms exist because comparing with a raw value would
// otherwise be ambiguous between these and the built-in operator reached by
// conversion.
template <class Derived, class Raw>
class TAV_EXPORT ScalarValue {
public:
    using RawType = Raw;

    ScalarValue() = default;
    ScalarValue(Raw value) : fValue(value) {}
    operator Raw() const { return fValue; }
    Raw value() const { return fValue; }

    // Where an object is expected, a value travels as a ValueObject; the
    // reverse asserts unless the object is a value of this class.
    template <ObjectHandle H>
    explicit ScalarValue(H const& aObject) : fValue(fromObject(aObject).fValue)
    {
    }
    operator ValueObject() const;
    operator Object() const;

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

private:
    static Derived fromObject(ImmutableObject const& aObject);
};

} // namespace TAV
