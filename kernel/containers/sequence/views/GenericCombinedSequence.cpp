#include <tav/kernel/containers/sequence/views/GenericCombinedSequence.h>

#include "kernel/containers/sequence/SequenceChecks.h"
#include "kernel/containers/sequence/views/ViewFailure.h"

namespace TAV::combined_sequence_internal {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/views/GenericCombinedSequence";
constexpr char const* kCannotInsert = "cannot insert into this data structure";
} // namespace

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::makeIterator;
using Generic::Ref;

PartPtr makePart(Generic::SequencePtr aSequence, filtered_sequence_internal::GenericFilter const& aFilter)
{
    return PartPtr(new Generic::HeapCounted<GenericFilteredSequence>(std::move(aSequence), aFilter));
}

GenericCombinedSequence::~GenericCombinedSequence() = default;

void GenericCombinedSequence::append(PartPtr aPart)
{
    fParts.push_back(std::move(aPart));
}

int GenericCombinedSequence::get_sub_sequence(Ref const& aValue) const
{
    for (int i = 0; i < partCount(); ++i)
        if (part(i).filter().accepts(aValue))
            return i;
    return -1;
}

void* GenericCombinedSequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericCombinedSequence, SequenceIntf>(this, aInfo);
}

Ref GenericCombinedSequence::generic_at(Deviant const& aDeviant, int aIndex) const
{
    if (aIndex < 0)
        Generic::checks::negativeIndex(kSource, __LINE__);
    for (int i = 0; i < partCount(); ++i) {
        int const size = part(i).generic_size(aDeviant);
        if (aIndex < size)
            return part(i).generic_at(aDeviant, aIndex);
        aIndex -= size;
    }
    views::fail("CombinedSequence: invalid subsequence", kSource, __LINE__);
}

Ref GenericCombinedSequence::generic_front(Deviant const& aDeviant) const
{
    return generic_at(aDeviant, 0);
}

Ref GenericCombinedSequence::generic_back(Deviant const& aDeviant) const
{
    int const size = generic_size(aDeviant);
    Generic::checks::notEmpty(size, kSource, __LINE__);
    return generic_at(aDeviant, size - 1);
}

IteratorPtr GenericCombinedSequence::generic_begin(Deviant const& aDeviant) const
{
    if (fParts.empty())
        return makeIterator<Iterator>(this, 0, IteratorPtr(), IteratorPtr(), IteratorPtr());
    return makeIterator<Iterator>(this, 0, part(0).generic_begin(aDeviant), aDeviant);
}

IteratorPtr GenericCombinedSequence::generic_end(Deviant const& aDeviant) const
{
    if (fParts.empty())
        return makeIterator<Iterator>(this, 0, IteratorPtr(), IteratorPtr(), IteratorPtr());
    int const last = partCount() - 1;
    IteratorPtr end = part(last).generic_end(aDeviant);
    return makeIterator<Iterator>(this, last, part(last).generic_begin(aDeviant), end, end->clone());
}

void GenericCombinedSequence::generic_clear(Deviant const& aDeviant)
{
    for (PartPtr const& p : fParts)
        p->generic_clear(aDeviant);
}

int GenericCombinedSequence::generic_size(Deviant const& aDeviant) const
{
    int size = 0;
    for (PartPtr const& p : fParts)
        size += p->generic_size(aDeviant);
    return size;
}

bool GenericCombinedSequence::generic_empty(Deviant const& aDeviant) const
{
    for (PartPtr const& p : fParts)
        if (!p->generic_empty(aDeviant))
            return false;
    return true;
}

void GenericCombinedSequence::generic_insert(Deviant const&, int, Ref)
{
    views::fail(kCannotInsert, kSource, __LINE__);
}

IteratorPtr GenericCombinedSequence::generic_insert(Deviant const&, IteratorIntf const*, Ref)
{
    views::fail(kCannotInsert, kSource, __LINE__);
}

IteratorPtr GenericCombinedSequence::generic_erase(Deviant const& aDeviant, IteratorIntf const* aPosition)
{
    auto const* it =
        aPosition ? static_cast<Iterator const*>(aPosition->cast(CooperativeVisitor::internal::classInfo<Iterator>()))
                  : nullptr;
    views::require(it && it->position(), "invalid iterator passed to erase", kSource, __LINE__);
    int const index = it->partIndex();
    IteratorPtr next = part(index).generic_erase(aDeviant, it->position());
    return makeIterator<Iterator>(this, index, std::move(next), aDeviant);
}

// A range may span parts, which have no erase of their own for that.
IteratorPtr GenericCombinedSequence::generic_erase(Deviant const&, IteratorIntf const*, IteratorIntf const*)
{
    views::fail(kCannotInsert, kSource, __LINE__);
}

void GenericCombinedSequence::generic_erase(Deviant const& aDeviant, int aIndex)
{
    IteratorPtr it = generic_begin(aDeviant);
    IteratorPtr const end = generic_end(aDeviant);
    for (int i = 0; i < aIndex && !it->equal(end.get()); ++i)
        it->next(aDeviant);
    views::require(aIndex >= 0 && !it->equal(end.get()), "erase requested for invalid index", kSource, __LINE__);
    generic_erase(aDeviant, it.get());
}

void GenericCombinedSequence::generic_pop_back(Deviant const& aDeviant)
{
    for (int i = partCount() - 1; i >= 0; --i)
        if (!part(i).generic_empty(aDeviant)) {
            part(i).generic_pop_back(aDeviant);
            return;
        }
    views::fail("pop_back on empty CombinedSequence", kSource, __LINE__);
}

void GenericCombinedSequence::generic_pop_front(Deviant const& aDeviant)
{
    for (PartPtr const& p : fParts)
        if (!p->generic_empty(aDeviant)) {
            p->generic_pop_front(aDeviant);
            return;
        }
    views::fail("pop_front on empty CombinedSequence", kSource, __LINE__);
}

void GenericCombinedSequence::generic_push_back(Deviant const& aDeviant, Ref aValue)
{
    int const index = get_sub_sequence(aValue);
    views::require(index >= 0, "cannot insert value into the combined sequence", kSource, __LINE__);
    part(index).generic_push_back(aDeviant, std::move(aValue));
}

void GenericCombinedSequence::generic_push_front(Deviant const& aDeviant, Ref aValue)
{
    int const index = get_sub_sequence(aValue);
    views::require(index >= 0, "cannot insert value into the combined sequence", kSource, __LINE__);
    part(index).generic_push_front(aDeviant, std::move(aValue));
}

void GenericCombinedSequence::generic_replace(Deviant const&, int, Ref)
{
    views::fail(kCannotInsert, kSource, __LINE__);
}

bool GenericCombinedSequence::generic_contains(Deviant const& aDeviant, Ref aValue) const
{
    for (PartPtr const& p : fParts)
        if (p->generic_contains(aDeviant, aValue))
            return true;
    return false;
}

std::string GenericCombinedSequence::generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const
{
    if (!fElementName.empty() || fParts.empty())
        return Generic::hostName(aImmutable, aIterator, aPrefix, fElementName.empty() ? "ClassObject" : fElementName);
    return part(0).generic_getKestName(aImmutable, aIterator, aPrefix);
}

int GenericCombinedSequence::generic_removeAll(Deviant const& aDeviant, Ref aValue)
{
    int removed = 0;
    for (PartPtr const& p : fParts)
        if (p->filter().accepts(aValue))
            removed += p->generic_removeAll(aDeviant, aValue);
    return removed;
}

bool GenericCombinedSequence::specialized_equal(Deviant const&, SequenceIntf const*, Deviant const&, bool&) const
{
    return false;
}

void GenericCombinedSequence::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&) {}

GenericCombinedSequence::Iterator::Iterator(GenericCombinedSequence const* aSequence, int aPart,
                                            IteratorPtr aPartBegin, IteratorPtr aPartEnd, IteratorPtr aPosition)
    : fSequence(const_cast<GenericCombinedSequence*>(aSequence)), fPart(aPart), fPartBegin(std::move(aPartBegin)),
      fPartEnd(std::move(aPartEnd)), fPosition(std::move(aPosition))
{
}

GenericCombinedSequence::Iterator::Iterator(GenericCombinedSequence const* aSequence, int aPart,
                                            IteratorPtr aPosition, Deviant const& aDeviant)
    : Iterator(aSequence, aPart, aSequence->part(aPart).generic_begin(aDeviant),
               aSequence->part(aPart).generic_end(aDeviant), std::move(aPosition))
{
    skipEmptyEnds(aDeviant);
}

void GenericCombinedSequence::Iterator::enter(int aPart, Deviant const& aDeviant, bool aAtEnd)
{
    GenericFilteredSequence const& p = fSequence->part(aPart);
    fPart = aPart;
    fPartBegin = p.generic_begin(aDeviant);
    fPartEnd = p.generic_end(aDeviant);
    fPosition = (aAtEnd ? fPartEnd : fPartBegin)->clone();
}

void GenericCombinedSequence::Iterator::skipEmptyEnds(Deviant const& aDeviant)
{
    while (fPosition->equal(fPartEnd.get()) && fPart + 1 < fSequence->partCount())
        enter(fPart + 1, aDeviant, false);
}

void* GenericCombinedSequence::Iterator::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<Iterator, IteratorIntf>(this, aInfo);
}

Ref GenericCombinedSequence::Iterator::current(Deviant const& aDeviant) const
{
    return fPosition ? fPosition->current(aDeviant) : Ref();
}

void GenericCombinedSequence::Iterator::next(Deviant const& aDeviant)
{
    if (!fPosition)
        return;
    fPosition->next(aDeviant);
    skipEmptyEnds(aDeviant);
}

void GenericCombinedSequence::Iterator::previous(Deviant const& aDeviant)
{
    if (!fPosition)
        return;
    while (fPosition->equal(fPartBegin.get()) && fPart > 0)
        enter(fPart - 1, aDeviant, true);
    fPosition->previous(aDeviant);
}

IteratorPtr GenericCombinedSequence::Iterator::clone() const
{
    return makeIterator<Iterator>(fSequence.get(), fPart, fPartBegin, fPartEnd,
                                  fPosition ? fPosition->clone() : IteratorPtr());
}

bool GenericCombinedSequence::Iterator::equal(IteratorIntf const* aOther) const
{
    auto const* other =
        aOther ? static_cast<Iterator const*>(aOther->cast(CooperativeVisitor::internal::classInfo<Iterator>()))
               : nullptr;
    if (!other || other->fPart != fPart)
        return false;
    if (!fPosition || !other->fPosition)
        return !fPosition && !other->fPosition;
    return fPosition->equal(other->fPosition.get());
}

} // namespace TAV::combined_sequence_internal
