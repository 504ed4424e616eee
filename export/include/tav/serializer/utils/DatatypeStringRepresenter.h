#pragma once

#include <tav/Export.h>

#include <string>
#include <vector>

namespace TAV::Serializer {

// The text of a structured value: its fields in order, joined by '|', with
// '\' and '|' inside a field escaped by a '\'.
class TAV_EXPORT DatatypeStringRepresenter {
public:
    // std::runtime_error "Cannot combine zero strings" for an empty list.
    static std::u16string combineStrings(std::vector<std::u16string> const& fields);
    // Always at least one field: the text after the last '|' is the last.
    // std::runtime_error "Cannot split string: unexpected escape symbol" for
    // a '\' followed by anything but '\' or '|', or by nothing.
    static std::vector<std::u16string> splitString(std::u16string const& text);
};

} // namespace TAV::Serializer
