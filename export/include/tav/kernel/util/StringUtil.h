#pragma once

#include <tav/Export.h>

#include <string>

namespace TAV::util {

// The conversions of TAV::String, for callers that hold no String.
TAV_EXPORT std::u16string UTF8ToUString(std::string const& text);
TAV_EXPORT std::string UStringToUTF8(std::u16string const& text);

// A plain stream insertion (six significant digits), not the round-trip text
// of DoubleTypeInfo. Throws std::runtime_error when the stream fails.
TAV_EXPORT std::string stringify(double value);

} // namespace TAV::util
