#include <hull/format.h>

#include <cstdio>

namespace hull {

int formatBounded(char* buffer, std::size_t size, const char* format, va_list args)
{
    const int written = std::vsnprintf(buffer, size, format, args);
    return written < 0 ? -1 : written;
}

} // namespace hull
