#pragma once

// What generated objects, states and interfaces call into the library for.

#include <tav/Export.h>
#include <tav/kernel/containers/sequence/SequenceIntf.h>
#include <tav/kernel/deviant/Deviations.h>
#include <tav/kernel/family/SparseMap.h>
#include <tav/kernel/family/SparseSequence.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

// Object and state classes stay inside the library that generates them; a build
// whose tests reach into them defines this as the export mark.
#ifndef TAV_IMPL_EXPORT
#define TAV_IMPL_EXPORT
#endif

namespace TAV {

class String;
struct IntrospectiveMethods;

namespace NSInterface {
class ClassObjectIntf;
}

namespace family {

// Who a generated class is, for its names and for the place its failures name.
struct ClassIdentity {
    char const* package; // the description's namespace, "TAV"
    char const* name;    // the metaclass, "Property"
};

[[noreturn]] TAV_EXPORT void shouldNotBeHit(char const* aSource, int aLine);
[[noreturn]] TAV_EXPORT void notYetAvailable(char const* aOperation, char const* aSource, int aLine);
TAV_EXPORT void crossModelCheck(Deviant aDeviant, Deviant aOther, IntrospectiveMethods const* aMethods, unsigned aId,
                                char const* aSource, int aLine);

// Failures of the shared object and state bases, named after the generated class.
[[noreturn]] TAV_EXPORT void objectOperationNotYetAvailable(ClassIdentity const& aClass, char const* aOperation);
[[noreturn]] TAV_EXPORT void stateRefuses(ClassIdentity const& aClass);
[[noreturn]] TAV_EXPORT void countBelowZero(ClassIdentity const& aClass);
TAV_EXPORT void assertRootDeviant(Deviant aDeviant, ClassIdentity const& aClass);
// "TAV.Property", or "TAV.ImmutableProperty" for the immutable handle's name.
TAV_EXPORT String qualifiedName(ClassIdentity const& aClass, bool aImmutable);

// The object side of the deviation contract, shared by every object class.
TAV_EXPORT bool isValidIn(Deviations const& aDeviations, Deviant aRoot, Deviant aDeviant);
TAV_EXPORT void setSlot(Deviations& aDeviations, Deviant aDeviant, NSInterface::ObjectIntf* aState);
TAV_EXPORT void commitTransientState(Deviations& aDeviations, Deviant aRoot, Deviant aDeviant,
                                     StateFactory const& aFactory);

// The root deviant of the model that holds the metamodel as objects; null until the
// meta-registry has built it.
TAV_EXPORT Deviant& metaRegistryRoot();

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

// The sequences that generated getters hand out: a multi-valued property of aSelf seen
// through aDeviant, and the same wrapped so that it keeps the opposite end, whose
// single or multiple valuedness its description tells.
TAV_EXPORT Generic::SequencePtr deviantSequence(NSInterface::ClassObjectIntf const* aSelf, Deviant aDeviant,
                                                IntrospectiveMethods const* aMethods, unsigned aId);
TAV_EXPORT Generic::SequencePtr associationSequence(NSInterface::ClassObjectIntf const* aSelf, Deviant aDeviant,
                                                    Generic::SequencePtr const& aInner,
                                                    IntrospectiveMethods const* aOppositeMethods, unsigned aOppositeId);

// A state's embedded storage as the sequence its getters answer; it counts nothing.
inline Generic::SequencePtr storageOf(Generic::SequenceIntf const& aStorage)
{
    return Generic::SequencePtr(const_cast<Generic::SequenceIntf*>(&aStorage));
}

// The state of aObject that a write through aDeviant goes to, as the interface I.
template <class I, class V>
I* writeStateAs(V* aObject, Deviant aDeviant)
{
    return aObject ? aObject->getWriteDeviantI(aDeviant, static_cast<I const*>(nullptr)) : nullptr;
}

// Association upkeep on the far end's storage, which a single-valued end keeps
// directly: the far end's own upkeep must not run again.
TAV_EXPORT void rawAdd(Generic::SequenceIntf* aStorage, NSInterface::ClassObjectIntf const* aItem);
TAV_EXPORT void rawRemove(Generic::SequenceIntf* aStorage, NSInterface::ClassObjectIntf const* aItem);

template <class V>
void copySparse(SparseMap<V>& aMap, NSInterface::ClassObjectIntf const* aFrom, NSInterface::ClassObjectIntf const* aTo)
{
    auto it = aMap.find(aFrom);
    if (it == aMap.end())
        aMap.erase(aTo);
    else
        aMap[aTo] = it->second;
}

} // namespace family
} // namespace TAV
