#pragma once

#include <tav/kernel/util/Asserter.h>

#include <cstdlib>
#include <string>

namespace TAV::internal {

// Messages may carry '%': they go through the format as an argument.
[[noreturn]] inline void raise(std::string const& message, char const* source, int line)
{
    Asserter::MakeAlways<Exception>("%s", message.c_str()).handle(source, line, "");
    std::abort();
}

} // namespace TAV::internal
