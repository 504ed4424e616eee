#pragma once

#include <tav/Export.h>

#include <iosfwd>

namespace hull::console {

// The host's console streams. They default to std::cout and std::cerr; a
// redirect lets a host or a test take the text. Each setter returns the
// previous stream; null restores the default.
TAV_EXPORT std::ostream& out();
TAV_EXPORT std::ostream& err();
TAV_EXPORT std::ostream* setOut(std::ostream* stream);
TAV_EXPORT std::ostream* setErr(std::ostream* stream);

} // namespace hull::console
