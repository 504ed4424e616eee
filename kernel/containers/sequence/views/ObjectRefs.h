#pragma once

// The reflection tables speak in Object handles, sequences in Refs.

#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/TAV/Object_h.h>
#include <tav/kernel/containers/sequence/ElementTraits.h>

namespace TAV::views {

inline Generic::Ref refOf(ImmutableObject const& aObject)
{
    ReferenceCountingIntf* const counted = aObject.internal_counted();
    return Generic::Ref(counted ? Generic::asCounted(Generic::asClassObject(counted)) : nullptr, aObject.getDeviant());
}

inline Object objectOf(Generic::Ref const& aRef)
{
    ReferenceCountingIntf* const counted = aRef.object();
    if (!counted)
        return Object();
    return Object(static_cast<NSInterface::ObjectIntf*>(
                      counted->cast(CooperativeVisitor::internal::classInfo<NSInterface::ObjectIntf>())),
                  aRef.deviant);
}

} // namespace TAV::views
