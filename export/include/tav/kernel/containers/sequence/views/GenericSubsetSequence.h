#pragma once

// A superset property's sequence that keeps its subsets consistent: what it
// removes leaves the owner's subsetting properties as well.

#include <tav/TAV/ClassObject_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>

#include <initializer_list>
#include <vector>

namespace TAV {

struct IntrospectiveMethods;

// A subsetting property of the owner, by its metaclass's table and id.
struct SubsetEntry {
    IntrospectiveMethods const* methods;
    unsigned propertyId;
};

class TAV_EXPORT GenericSubsetSequence : public Generic::SequenceIntf {
public:
    GenericSubsetSequence(ClassObject aOwner, Generic::SequencePtr aSequence, std::vector<SubsetEntry> aSubsets = {});
    GenericSubsetSequence(GenericSubsetSequence const&) = delete;
    GenericSubsetSequence& operator=(GenericSubsetSequence const&) = delete;
    ~GenericSubsetSequence() override;

    void addSubset(SubsetEntry aEntry) { fSubsets.push_back(aEntry); }

    TAV_SEQUENCE_STORAGE_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

private:
    Generic::SequenceIntf& target() const;
    void removeFromSubsets(Deviant const& aDeviant, std::vector<Generic::Ref> const& aValues) const;

    ClassObject fOwner;
    Generic::SequencePtr fSequence;
    std::vector<SubsetEntry> fSubsets;
};

TAV_EXPORT Generic::SequencePtr makeSubsetSequence(ClassObject aOwner, Generic::SequencePtr aSequence,
                                                   std::vector<SubsetEntry> aSubsets);

// The typed handle: a sequence of E over the owner's superset sequence.
template <class O, class E>
class SubsetSequence : public Sequence<E> {
public:
    SubsetSequence(O aOwner, ImmutableSequence<E> const& aSequence, std::initializer_list<SubsetEntry> aSubsets = {})
        : Sequence<E>(makeSubsetSequence(ClassObject(aOwner), Generic::SequencePtr(aSequence.internal_sequence()),
                                         aSubsets),
                      aSequence.getDeviant())
    {
    }
};

} // namespace TAV
