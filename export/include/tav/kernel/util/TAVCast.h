#pragma once

#include <tav/TAV/ValueObject_h.h>

#include <BRIX/any.h>

namespace TAV {

namespace internal {
// Raises the no-message assertion when `aObject` holds no value.
TAV_EXPORT void assertValueObject(ImmutableValueObject const& aObject, int aLine);
} // namespace internal

// The value of type T (Boolean, String, PropertyStorage, ...) carried by an
// object. An object that is no value is an assertion; a value of another type
// is a BRIX::bad_any_cast.
template <class T>
T TAVCast(ImmutableObject const& aObject)
{
    ImmutableValueObject const value(aObject);
    internal::assertValueObject(value, __LINE__);
    return BRIX::any_cast<T>(value.getAny());
}

} // namespace TAV
