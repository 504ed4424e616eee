#pragma once

#include <tav/Export.h>

#include <cstddef>
#include <iosfwd>

namespace hull::stacktrace {

inline constexpr std::size_t kMaxFrames = 64;

// Stores the return addresses of the calling thread; never throws, never
// allocates, so it is safe while an exception is being built.
TAV_EXPORT std::size_t capture(void** frames, std::size_t maxFrames) noexcept;

// One line per frame, with function, file and line where debug data allows.
TAV_EXPORT void format(std::ostream& out, void* const* frames, std::size_t count);

} // namespace hull::stacktrace
