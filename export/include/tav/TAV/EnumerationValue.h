#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ScalarValue.h>

#include <map>
#include <string>

namespace TAV {

// Shared behaviour of the enumeration value classes: an int with a table of
// literal names. Unknown values print as their number.
class TAV_EXPORT EnumerationValue {
public:
    using Literals = std::map<int, std::string>;

protected:
    static std::string toString(Literals const& literals, int value);
    // False, and `value` untouched, for a name that is no literal.
    static bool fromString(Literals const& literals, std::string const& name, int& value);
};

// One enumeration: Derived gives `static Literals const& getLiterals()`.
template <class Derived>
class EnumerationOf : public ScalarValue<Derived, int>, public EnumerationValue {
public:
    using ScalarValue<Derived, int>::ScalarValue;

    std::string toString() const { return EnumerationValue::toString(Derived::getLiterals(), this->fValue); }
    // False, and this value unchanged, for an unknown literal.
    bool fromString(std::string const& name) { return EnumerationValue::fromString(Derived::getLiterals(), name, this->fValue); }
};

} // namespace TAV
