#pragma once

// What the generated reflection tables call into the library for: the cast that
// every table function starts with, its failures, and the conversions of results.

#include <tav/Export.h>
#include <tav/TAV/Object_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/Cager.h>
#include <tav/kernel/util/IntrospectiveMethods.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

#include <type_traits>

namespace TAV {

namespace NSInterface {
class ClassObjectIntf;
}

namespace reflection {

[[noreturn]] TAV_EXPORT void illegalObject(char const* aSource, int aLine);
// "TAV.Property::getSingleValued on illegal property"
[[noreturn]] TAV_EXPORT void illegalProperty(char const* aClass, char const* aFunction, char const* aSource, int aLine);
// "TAV.Property::getSingleValued on illegal property with id 99"
[[noreturn]] TAV_EXPORT void illegalPropertyId(
    char const* aClass, char const* aFunction, unsigned aId, char const* aSource, int aLine);

// The object as the table's interface, I possibly const; "illegal object" if it is none.
template <class I>
I* castTo(NSInterface::ClassObjectIntf const* aObject, char const* aSource, int aLine)
{
    void* p = aObject ? aObject->cast(CooperativeVisitor::internal::classInfo<std::remove_const_t<I>>()) : nullptr;
    if (!p)
        illegalObject(aSource, aLine);
    return static_cast<I*>(p);
}

// A reference read through a typed getter, as an Object on the given deviant.
inline Object objectOf(ImmutableObject const& aReference, Deviant aDeviant)
{
    return Object(aReference.internal_intf(), aDeviant);
}

// The sequence a typed getter gave; its null check raises the null-sequence message.
inline IntrospectiveMethods::SequencePtr sequenceOf(SequenceRef const& aSequence)
{
    return IntrospectiveMethods::SequencePtr(aSequence.internal_sequence());
}

} // namespace reflection
} // namespace TAV
