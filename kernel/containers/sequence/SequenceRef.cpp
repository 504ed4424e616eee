#include <tav/kernel/containers/sequence/Sequence.h>

#include <tav/kernel/util/Asserter.h>

namespace TAV {

void SequenceRef::nullSequence()
{
    Asserter::MakeAlways<Exception>("Cannot access NULL sequence. Use MakeSequence to create sequences."
                                    "See testSequenceCreation in tav/kernel/unittest/sequence_tests.")
        .handle("export/include/tav/kernel/containers/sequence/Sequence", __LINE__, "");
    __builtin_unreachable();
}

std::string Generic::hostName(bool aImmutable, bool aIterator, char const* aPrefix, std::string_view aElement)
{
    std::string name = aPrefix ? aPrefix : "TAV.";
    name += aIterator ? "IteratorOf" : "SequenceOf";
    if (aImmutable)
        name += "Immutable";
    name += aElement;
    return name;
}

} // namespace TAV
