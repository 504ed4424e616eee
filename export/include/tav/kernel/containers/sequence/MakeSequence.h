#pragma once

// Free-standing sequences, made on the heap and counted by their handles.

#include <tav/kernel/containers/sequence/ListQImpl.h>
#include <tav/kernel/containers/sequence/MultiIndexImpl.h>
#include <tav/kernel/containers/sequence/Sequence.h>

namespace TAV {

// A fixed underlying type: a value from elsewhere that names neither is refused, not undefined.
enum SequenceImplementation : int { STD_VECTOR = 0, MULTI_INDEX = 1 };

struct MakeSequenceParams {
    Deviant deviant;
    SequenceImplementation implementation = STD_VECTOR;
    bool aIsUnique = false;
    bool aUseProxy = false;
};

namespace Generic::detail {
// Refuses a list asked to be unique and an implementation it doesn't know.
TAV_EXPORT void checkRequest(int aImplementation, bool aIsUnique);
TAV_EXPORT void checkCreated(SequenceIntf const* aSequence);
TAV_EXPORT SequencePtr wrapInProxy(SequencePtr aSequence);
} // namespace Generic::detail

template <class T>
Sequence<T> MakeSequence(MakeSequenceParams const& aParams)
{
    Generic::detail::checkRequest(aParams.implementation, aParams.aIsUnique);
    Generic::SequencePtr sequence;
    if (aParams.implementation == STD_VECTOR)
        sequence = new Generic::HeapCounted<ListQImpl<T>>();
    else if (aParams.aIsUnique)
        sequence = new Generic::HeapCounted<MultiIndexImpl<T, true>>();
    else
        sequence = new Generic::HeapCounted<MultiIndexImpl<T, false>>();
    Generic::detail::checkCreated(sequence.get());
    if (aParams.aUseProxy)
        sequence = Generic::detail::wrapInProxy(std::move(sequence));
    return Sequence<T>(std::move(sequence), aParams.deviant);
}

} // namespace TAV
