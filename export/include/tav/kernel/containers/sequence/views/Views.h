#pragma once

// The typed views that serve derived properties, one call per property:
//   a union of stored parts       unionOf<NamedElement>(d, getPackagedElements(d), getOwnedRules(d))
//   a part restricted to a class  filtered<Type>(getPackagedElements(d))
//   a single slot as a sequence   propertyAsSequence(self, d, &ClassObjectIntf::sIntrospectiveMethods, id, lower)
//   any of them, refusing writes  readOnly(filtered<Element>(getContaineeTAVs(d)))

#include <tav/kernel/containers/sequence/views/GenericCombinedSequence.h>
#include <tav/kernel/containers/sequence/views/GenericFilteredSequence.h>
#include <tav/kernel/containers/sequence/views/GenericNullSequence.h>
#include <tav/kernel/containers/sequence/views/GenericPropertyToSequenceProxy.h>
#include <tav/kernel/containers/sequence/views/GenericReadOnlySequence.h>

namespace TAV {

namespace views_detail {
template <class A>
void appendOwnClass(GenericCombinedSequence& aCombined, Sequence<A> const& aPart)
{
    aCombined.append(aPart, static_cast<A const*>(nullptr));
}
} // namespace views_detail

template <class T>
Sequence<T> nullSequence(Deviant aDeviant)
{
    return Sequence<T>(Generic::SequencePtr(GenericNullSequence::getSingleton()), aDeviant);
}

// The elements of aSequence that are U's, read afresh at every use.
template <class U, class T>
Sequence<U> filtered(ImmutableSequence<T> const& aSequence)
{
    return Sequence<U>(combined_sequence_internal::makePart(Generic::SequencePtr(aSequence.internal_sequence()),
                                                            filtered_sequence_internal::filterFor<T, U>()),
                       aSequence.getDeviant());
}

// The parts one after another; a value added goes to the first part of its class.
// With no part, the null sequence.
template <class T, class... Parts>
Sequence<T> unionOf(Deviant aDeviant, Parts const&... aParts)
{
    if constexpr (sizeof...(Parts) == 0) {
        return nullSequence<T>(aDeviant);
    } else {
        Generic::SmartPtr<GenericCombinedSequence> combined(new Generic::HeapCounted<GenericCombinedSequence>(Generic::elementName<T>()));
        (views_detail::appendOwnClass(*combined, aParts), ...);
        return Sequence<T>(Generic::SequencePtr(combined.get()), aDeviant);
    }
}

// A single-valued property of aObject, shown as a sequence of at most one element.
template <class T = ClassObject>
Sequence<T> propertyAsSequence(ImmutableClassObject const& aObject, Deviant aDeviant,
                               IntrospectiveMethods const* aMethods, unsigned aPropertyId, int aLower)
{
    return Sequence<T>(Generic::SequencePtr(new GenericPropertyToSequenceProxy(aObject, aMethods, aPropertyId, aLower)),
                       aDeviant);
}

// aShown as it stands at every read; every write raises "This derived sequence is read-only!".
template <class T>
Sequence<T> readOnly(Sequence<T> const& aShown)
{
    return Sequence<T>(Generic::SequencePtr(new Generic::HeapCounted<GenericReadOnlySequence>(
                           Generic::SequencePtr(aShown.internal_sequence()))),
                       aShown.getDeviant());
}

} // namespace TAV
