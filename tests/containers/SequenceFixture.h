#pragma once

// Sequences of every implementation over counted objects, and the kinds of
// sequence that the table-driven tests run through.

#include "handles/FamilyFixture.h"

#include <tav/TAV/String.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>

#include <ostream>
#include <vector>

namespace TAV::test {

inline NSImplementation::PropertyImpl* implOf(ImmutableProperty const& p)
{
    return static_cast<NSImplementation::PropertyImpl*>(p.internal_intf());
}

struct SequenceKind {
    char const* name;
    SequenceImplementation implementation;
    bool unique;
    bool proxy;

    bool isList() const { return implementation == STD_VECTOR; }
    friend std::ostream& operator<<(std::ostream& os, SequenceKind const& k) { return os << k.name; }
};

inline SequenceKind const kSequenceKinds[] = {
    {"List", STD_VECTOR, false, false},
    {"ProxiedList", STD_VECTOR, false, true},
    {"MultiIndex", MULTI_INDEX, false, false},
    {"UniqueMultiIndex", MULTI_INDEX, true, false},
    {"ProxiedUniqueMultiIndex", MULTI_INDEX, true, true},
};

class SequenceTest : public FamilyTest, public ::testing::WithParamInterface<SequenceKind> {
protected:
    template <class T = Property>
    Sequence<T> make(SequenceKind const& k) const
    {
        return MakeSequence<T>({root, k.implementation, k.unique, k.proxy});
    }
    template <class T = Property>
    Sequence<T> make() const
    {
        return make<T>(GetParam());
    }

    std::vector<Property> properties(int n)
    {
        std::vector<Property> result;
        for (int i = 0; i < n; ++i)
            result.push_back(newProperty());
        return result;
    }

    // The count the sequence holds: the handle's own one aside.
    static int heldBySequence(ImmutableProperty const& p) { return implOf(p)->numRef() - 1; }
};

} // namespace TAV::test
