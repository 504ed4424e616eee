#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/containers/sequence/SequenceProxy.h>

#include <tav/kernel/util/Asserter.h>

namespace TAV::Generic::detail {

namespace {
constexpr char const* kSource = "export/include/tav/kernel/containers/sequence/MakeSequence";
}

void checkRequest(int aImplementation, bool aIsUnique)
{
    Asserter::Make<Exception>(!(aImplementation == STD_VECTOR && aIsUnique),
                              "cannot use STD_VECTOR and aIsUnique together")
        .handle(kSource, __LINE__, "");
    Asserter::Make<Exception>(aImplementation == STD_VECTOR || aImplementation == MULTI_INDEX,
                              "unknown sequence implementation requested")
        .handle(kSource, __LINE__, "");
}

void checkCreated(SequenceIntf const* aSequence)
{
    Asserter::Make<Exception>(aSequence != nullptr, "sequence not created").handle(kSource, __LINE__, "");
}

SequencePtr wrapInProxy(SequencePtr aSequence)
{
    return SequencePtr(new GenericReferenceCountingSequenceProxy(std::move(aSequence)));
}

} // namespace TAV::Generic::detail
