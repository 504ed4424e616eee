#pragma once

#include <tav/Export.h>

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

} // namespace TAV
