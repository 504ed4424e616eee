#pragma once

#include <tav/TAV/ValueObject_h.h>

#include <BRIX/any.h>

namespace TAV {

namespace internal {
// The value `aObject` carries, alive as long as `aObject`; the no-message
// assertion when it carries none.
TAV_EXPORT BRIX::any const& carriedValue(ImmutableObject const& aObject, int aLine);
} // namespace internal

// The value of type T (Boolean, String, PropertyStorage, ...) carried by an
// object. An object that is no value is an assertion; a value of another type
// is a BRIX::bad_any_cast.
template <class T>
T TAVCast(ImmutableObject const& aObject)
{
    return BRIX::any_cast<T>(internal::carriedValue(aObject, __LINE__));
}

} // namespace TAV
