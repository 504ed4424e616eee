#include "kernel/primitive/types/TypeInfoSupport.h"

#include <tav/kernel/util/Asserter.h>

namespace TAV::internal {

void assertNoErrorYet(BRIX::ErrorHolder const& errors, char const* source, int line)
{
    Asserter::Make<Exception>(!errors.hasError(),
                              "Internal assertion without a message detected in FTL generated code! Please fix me asap")
        .handle(source, line, "");
}

BRIX::any conversionFailed(BRIX::ErrorHolder& errors, std::string const& text, char const* suffix, char const* file,
                           int line)
{
    errors.addError("Can't convert string '" + text + suffix, file, line);
    return {};
}

} // namespace TAV::internal
