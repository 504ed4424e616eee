#pragma once

// A view of the elements of one sequence that pass a filter. It keeps no index
// of its own, so it is always right after a change, and each indexed access
// walks the underlying sequence.

#include <tav/kernel/containers/sequence/views/GenericFilter.h>
#include <tav/kernel/containers/sequence/SequenceIntf.h>

#include <memory>

namespace TAV::filtered_sequence_internal {

class TAV_EXPORT GenericFilteredSequence : public Generic::SequenceIntf {
public:
    class Iterator;

    GenericFilteredSequence(Generic::SequencePtr aUnderlying, GenericFilter const& aFilter);
    GenericFilteredSequence(GenericFilteredSequence const&) = delete;
    GenericFilteredSequence& operator=(GenericFilteredSequence const&) = delete;
    ~GenericFilteredSequence() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

    GenericFilter const& filter() const { return *fFilter; }
    Generic::SequenceIntf* underlying() const { return fUnderlying.get(); }
    // Takes the underlying sequence's begin and end afresh, so that the view
    // sees what changed since its last use.
    void update_begin_end_cache(Deviant const& aDeviant) const;

private:
    Generic::SequenceIntf& target() const;
    bool passes(Generic::Ref const& aValue) const;
    void checkTakes(Generic::Ref const& aValue) const;
    Generic::IteratorPtr wrap(Generic::IteratorPtr aPosition, Deviant const& aDeviant) const;
    Generic::IteratorIntf const* positionOf(Generic::IteratorIntf const* aPosition) const;
    // The underlying index of the accepted element aIndex, or -1 past the
    // last; aAccepted is the number of accepted elements seen on the way.
    int underlyingIndex(Deviant const& aDeviant, int aIndex, int& aAccepted) const;

    Generic::SequencePtr fUnderlying;
    std::unique_ptr<GenericFilter> fFilter;
    mutable Generic::IteratorPtr fBegin;
    mutable Generic::IteratorPtr fEnd;
};

// An accepted position of the underlying sequence; it holds its view, whose
// cached end bounds every skip.
class TAV_EXPORT GenericFilteredSequence::Iterator : public Generic::IteratorIntf {
public:
    // At the first accepted position from aPosition on.
    Iterator(GenericFilteredSequence const* aSequence, Generic::IteratorPtr aPosition, Deviant const& aDeviant);
    // At aPosition exactly.
    Iterator(GenericFilteredSequence const* aSequence, Generic::IteratorPtr aPosition);

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;
    Generic::Ref current(Deviant const& aDeviant) const override;
    void next(Deviant const& aDeviant) override;
    void previous(Deviant const& aDeviant) override;
    Generic::IteratorPtr clone() const override;
    bool equal(Generic::IteratorIntf const* aOther) const override;

    Generic::IteratorIntf const* position() const { return fPosition.get(); }

private:
    void skipForward(Deviant const& aDeviant);

    Generic::SmartPtr<GenericFilteredSequence> fSequence;
    Generic::IteratorPtr fPosition;
};

} // namespace TAV::filtered_sequence_internal

namespace TAV {
using filtered_sequence_internal::GenericFilteredSequence;
}
