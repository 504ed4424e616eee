#pragma once

#include <type_traits>

namespace TAV {

class ImmutableObject;

// Any object handle. Value classes take handles through this rather than as
// ImmutableObject const&: a number converts to Object too, and two roads to
// one constructor would make converting between value classes ambiguous.
template <class H>
concept ObjectHandle = std::is_base_of_v<ImmutableObject, H>;

} // namespace TAV
