#pragma once

#include <tav/Export.h>

#include <cstdarg>
#include <cstddef>

namespace hull {

// printf-style formatting that never writes more than `size` bytes and always
// terminates. Returns the length it wanted to write, or -1 when the format
// itself is broken, never a partial failure code of its own.
TAV_EXPORT int formatBounded(char* buffer, std::size_t size, const char* format, va_list args)
    __attribute__((format(printf, 3, 0)));

} // namespace hull
