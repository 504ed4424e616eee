#pragma once

#include <map>

namespace TAV {

namespace NSInterface {
class ClassObjectIntf;
}

// Values of a rarely set property, kept outside the states and keyed by the
// state's canonical ClassObjectIntf*. A state erases its entries when it dies
// and copies them when it is assigned, so they behave like fields.
template <class V>
class SparseMap : public std::map<NSInterface::ClassObjectIntf const*, V> {};

} // namespace TAV
