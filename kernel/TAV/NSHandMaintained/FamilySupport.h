#pragma once

// Shared by the generated objects, states and interfaces; kernel-internal.

#include <tav/TAV/Class_h.h>
#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/TAV/RawRefList.h>
#include <tav/TAV/SparseMap.h>
#include <tav/kernel/deviant/Deviations.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

namespace TAV::family {

[[noreturn]] void shouldNotBeHit(char const* aSource, int aLine);
[[noreturn]] void notYetAvailable(char const* aOperation, char const* aSource, int aLine);
void assertRootDeviant(Deviant aDeviant, char const* aMessage, char const* aSource, int aLine);
void assertCount(bool aPositive, char const* aSource, int aLine);
void crossModelCheck(Deviant aDeviant, Deviant aOther, IntrospectiveMethods const* aMethods, unsigned aId,
                     char const* aSource, int aLine);

// The object side of the deviation contract, shared by every object class.
bool isValidIn(Deviations const& aDeviations, Deviant aRoot, Deviant aDeviant);
void setSlot(Deviations& aDeviations, Deviant aDeviant, NSInterface::ObjectIntf* aState);
void commitTransientState(Deviations& aDeviations, Deviant aRoot, Deviant aDeviant, StateFactory const& aFactory);

// The root deviant of the model that holds the metamodel as objects; null until the
// meta-registry has built it.
Deviant& metaRegistryRoot();

// A metaclass slot's class, read in the meta-registry; empty while the slot is.
template <class M>
ImmutableClass metaClassOf(M* aMeta)
{
    return aMeta ? ImmutableClass(static_cast<NSInterface::ClassIntf*>(aMeta), metaRegistryRoot()) : ImmutableClass();
}

// The canonical ClassObjectIntf of the object that `aSelf` is part of.
template <class I>
NSInterface::ClassObjectIntf* selfCanonical(I const* aSelf)
{
    return static_cast<NSInterface::ClassObjectIntf*>(
        aSelf->cast(CooperativeVisitor::internal::classInfo<NSInterface::ClassObjectIntf>()));
}

// The sub-object of type I that the cast names, so that stored pointers compare.
template <class I>
I* firstPath(I* aObject)
{
    return aObject ? static_cast<I*>(aObject->cast(CooperativeVisitor::internal::classInfo<I>())) : nullptr;
}

template <class V>
void copySparse(SparseMap<V>& aMap, NSInterface::ClassObjectIntf const* aFrom, NSInterface::ClassObjectIntf const* aTo)
{
    auto it = aMap.find(aFrom);
    if (it == aMap.end())
        aMap.erase(aTo);
    else
        aMap[aTo] = it->second;
}

} // namespace TAV::family
