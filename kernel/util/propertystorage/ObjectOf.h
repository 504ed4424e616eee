#pragma once

#include <tav/TAV/ClassObject_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/Asserter.h>

namespace TAV::propertystorage {

// The object a storage operation acts on; a null handle is refused as handles refuse it.
inline NSInterface::ClassObjectIntf* objectOf(ImmutableClassObject const& aObject, char const* aSource)
{
    NSInterface::ClassObjectIntf* const object = aObject.internal_intf();
    Asserter::Make<Exception>(object != nullptr, "Cannot access NULL ref. Use isValid() before calling methods")
        .handle(aSource, __LINE__, "");
    return object;
}

// The same sequence, read only.
inline ImmutableSequence<ImmutableObject> readOnly(Sequence<Object> const& aSequence)
{
    return ImmutableSequence<ImmutableObject>(
        Generic::SequencePtr(aSequence.internal_sequence()), aSequence.getDeviant());
}

} // namespace TAV::propertystorage
