#include <hull/stacktrace.h>

#include <boost/stacktrace.hpp>

#include <algorithm>
#include <ostream>

namespace hull::stacktrace {

std::size_t capture(void** frames, std::size_t maxFrames) noexcept
{
    // The dump ends with a null entry, hence the one extra slot.
    void* dump[kMaxFrames + 1];
    const std::size_t limit = std::min(maxFrames, kMaxFrames);
    const std::size_t stored =
        boost::stacktrace::safe_dump_to(0, dump, (limit + 1) * sizeof(void*));
    const std::size_t count = stored == 0 ? 0 : stored - 1;
    std::copy_n(dump, count, frames);
    return count;
}

void format(std::ostream& out, void* const* frames, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const boost::stacktrace::frame frame(frames[i]);
        out << '#' << i << ' ' << frame << '\n';
    }
}

} // namespace hull::stacktrace
