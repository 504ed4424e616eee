#include <tav/kernel/util/propertystorage/IntrospectiveSupport.h>

#include <tav/kernel/util/Asserter.h>

namespace TAV::reflection {

void illegalObject(char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("illegal object").handle(aSource, aLine, "");
    __builtin_unreachable();
}

void illegalProperty(char const* aClass, char const* aFunction, char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("%s::%s on illegal property", aClass, aFunction).handle(aSource, aLine, "");
    __builtin_unreachable();
}

void illegalPropertyId(char const* aClass, char const* aFunction, unsigned aId, char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("%s::%s on illegal property with id %d", aClass, aFunction, static_cast<int>(aId))
        .handle(aSource, aLine, "");
    __builtin_unreachable();
}

} // namespace TAV::reflection
