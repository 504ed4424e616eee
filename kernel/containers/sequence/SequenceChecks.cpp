#include "kernel/containers/sequence/SequenceChecks.h"

#include <tav/kernel/containers/iterator/IteratorIntf.h>
#include <tav/kernel/util/Asserter.h>

namespace TAV::Generic {

void countUnderflow()
{
    Asserter::MakeAlways<Exception>("Decrementing the ref count of a ref with count already 0")
        .handle("kernel/containers/iterator/IteratorIntf", __LINE__, "");
    __builtin_unreachable();
}

namespace checks {

namespace {
[[noreturn]] void raise(char const* aMessage, char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("%s", aMessage).handle(aSource, aLine, "");
    __builtin_unreachable();
}
} // namespace

void negativeIndex(char const* aSource, int aLine)
{
    raise("sequence index must be positive", aSource, aLine);
}

void indexOutOfBounds(char const* aSource, int aLine)
{
    raise("sequence index out of bounds", aSource, aLine);
}

void empty(char const* aSource, int aLine)
{
    raise("sequence is empty", aSource, aLine);
}

void nullElement(char const* aHostName, char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("null object while inserting into %s", aHostName).handle(aSource, aLine, "");
    __builtin_unreachable();
}

void nullUnderlying(char const* aSource, int aLine)
{
    raise("operating on null sequence", aSource, aLine);
}

} // namespace checks
} // namespace TAV::Generic
