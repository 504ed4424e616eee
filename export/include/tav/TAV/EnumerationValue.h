#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ScalarValue.h>
#include <tav/TAV/String.h>

#include <map>
#include <string>

namespace TAV {

// One enumeration value class: an int with a table of literal names, and the
// text forms of every other value class. Derived gives
// `static Literals const& getLiterals()`, `getTypeName()` and `getTypeInfo()`.
template <class Derived>
class TAV_EXPORT EnumerationOf : public ScalarValue<Derived, int> {
public:
    using Literals = std::map<int, std::string>;
    using ScalarValue<Derived, int>::ScalarValue;

    // Asserts on a text that is no literal, as fromString does.
    explicit EnumerationOf(String const& aText);
    // The literal; a value without one writes as its number, which no
    // literal reads back.
    String toString() const;
    static Derived fromString(String const& aText);
};

} // namespace TAV
