#pragma once

// The typed sequence handles, named without their definitions: generated
// interfaces declare getters that return them and include no more.

namespace TAV {

template <class T>
class ImmutableSequence;
template <class T>
class Sequence;

} // namespace TAV
