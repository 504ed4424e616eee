#include <tav/kernel/containers/sequence/views/GenericFilter.h>

#include "kernel/containers/sequence/views/ViewFailure.h"

#include <tav/kernel/util/Asserter.h>

namespace TAV {

namespace views {
void fail(char const* aMessage, char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("%s", aMessage).handle(aSource, aLine, "");
    __builtin_unreachable();
}
} // namespace views

namespace filtered_sequence_internal {

GenericFilter::~GenericFilter() = default;

void GenericFilter::checkInsertion() const {}

void GenericFilter::insertionNotSupported()
{
    views::fail("insertion not supported by filtered sequence", "kernel/containers/sequence/views/GenericFilter",
                __LINE__);
}

} // namespace filtered_sequence_internal
} // namespace TAV
