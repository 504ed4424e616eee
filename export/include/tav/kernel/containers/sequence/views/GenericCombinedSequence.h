#pragma once

// Several sequences shown one after another, as a derived union shows its
// parts. Each part is a filtered view, whose filter also routes a new value
// to the first part that takes it.

#include <tav/kernel/containers/iterator/IteratorIntf.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/containers/sequence/views/GenericFilteredSequence.h>

#include <string_view>
#include <vector>

namespace TAV::combined_sequence_internal {

using PartPtr = Generic::SmartPtr<GenericFilteredSequence>;

TAV_EXPORT PartPtr makePart(Generic::SequencePtr aSequence, filtered_sequence_internal::GenericFilter const& aFilter);

class TAV_EXPORT GenericCombinedSequence : public Generic::SequenceIntf {
public:
    class Iterator;

    // aElementName names the union's element class to the host; empty takes the first part's.
    explicit GenericCombinedSequence(std::string_view aElementName = {}) : fElementName(aElementName) {}
    GenericCombinedSequence(GenericCombinedSequence const&) = delete;
    GenericCombinedSequence& operator=(GenericCombinedSequence const&) = delete;
    ~GenericCombinedSequence() override;

    void append(PartPtr aPart);
    // A part of the elements of aSequence that are U's; values of U go there.
    template <class T, class U>
    void append(Sequence<T> const& aSequence, U const*)
    {
        append(makePart(Generic::SequencePtr(aSequence.internal_sequence()),
                        filtered_sequence_internal::filterFor<T, U>()));
    }

    int partCount() const { return static_cast<int>(fParts.size()); }
    // The first part whose filter takes aValue, or -1.
    int get_sub_sequence(Generic::Ref const& aValue) const;

    TAV_SEQUENCE_STORAGE_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

private:
    GenericFilteredSequence& part(int aIndex) const { return *fParts[static_cast<std::size_t>(aIndex)]; }

    std::vector<PartPtr> fParts;
    std::string_view fElementName;
};

// A position in one part. It never rests at the end of a part that has a
// successor: it moves on to the next part's first position.
class TAV_EXPORT GenericCombinedSequence::Iterator : public Generic::IteratorIntf {
public:
    // At aPosition of part aPart; with aDeviant, skips the ends of parts as next does.
    Iterator(GenericCombinedSequence const* aSequence, int aPart, Generic::IteratorPtr aPosition,
             Deviant const& aDeviant);
    Iterator(GenericCombinedSequence const* aSequence, int aPart, Generic::IteratorPtr aPartBegin,
             Generic::IteratorPtr aPartEnd, Generic::IteratorPtr aPosition);

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;
    Generic::Ref current(Deviant const& aDeviant) const override;
    void next(Deviant const& aDeviant) override;
    void previous(Deviant const& aDeviant) override;
    Generic::IteratorPtr clone() const override;
    bool equal(Generic::IteratorIntf const* aOther) const override;

    int partIndex() const { return fPart; }
    Generic::IteratorIntf const* position() const { return fPosition.get(); }

private:
    void enter(int aPart, Deviant const& aDeviant, bool aAtEnd);
    void skipEmptyEnds(Deviant const& aDeviant);

    Generic::SmartPtr<GenericCombinedSequence> fSequence;
    int fPart = 0;
    Generic::IteratorPtr fPartBegin;
    Generic::IteratorPtr fPartEnd;
    Generic::IteratorPtr fPosition;
};

} // namespace TAV::combined_sequence_internal

namespace TAV {
using combined_sequence_internal::GenericCombinedSequence;
}
