#pragma once

// The views raise their own texts; each stays where it is raised.

namespace TAV::views {

[[noreturn]] void fail(char const* aMessage, char const* aSource, int aLine);

inline void require(bool aCondition, char const* aMessage, char const* aSource, int aLine)
{
    if (!aCondition)
        fail(aMessage, aSource, aLine);
}

} // namespace TAV::views
