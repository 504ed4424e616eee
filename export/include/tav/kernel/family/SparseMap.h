#pragma once

#include <tav/TAV/NSInterface/ClassObjectIntf.h>

#include <map>

namespace TAV {

// Values of a rarely set property, kept outside the states and keyed by the
// state's canonical ClassObjectIntf*. A state erases its entries when it dies
// and copies them when it is assigned, so they behave like fields. Most
// states never hold an entry: a state is marked at its first, and the
// look-ups of an unmarked one (every copy and destructor makes them) touch
// no map.
template <class V>
class SparseMap : public std::map<NSInterface::ClassObjectIntf const*, V> {
    using Base = std::map<NSInterface::ClassObjectIntf const*, V>;

public:
    using typename Base::const_iterator;
    using typename Base::iterator;
    using typename Base::key_type;
    using typename Base::size_type;
    using Base::erase;

    static bool mayHold(key_type key) { return key && static_cast<ReferenceCountingIntf const*>(key)->fInSparseMaps; }

    V& operator[](key_type const& key)
    {
        static_cast<ReferenceCountingIntf const*>(key)->fInSparseMaps = true;
        return Base::operator[](key);
    }
    iterator find(key_type const& key) { return mayHold(key) ? Base::find(key) : this->end(); }
    const_iterator find(key_type const& key) const { return mayHold(key) ? Base::find(key) : this->end(); }
    size_type count(key_type const& key) const { return mayHold(key) ? Base::count(key) : 0; }
    size_type erase(key_type const& key) { return mayHold(key) ? Base::erase(key) : 0; }
};

} // namespace TAV
