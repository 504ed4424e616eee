#include <tav/kernel/containers/sequence/views/GenericFilteredSequence.h>

#include "kernel/containers/sequence/SequenceChecks.h"
#include "kernel/containers/sequence/views/ViewFailure.h"

namespace TAV::filtered_sequence_internal {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/views/GenericFilteredSequence";
constexpr char const* kFailsFilter = "FilteredSequence: item fails filter";
} // namespace

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::makeIterator;
using Generic::Ref;

GenericFilteredSequence::GenericFilteredSequence(Generic::SequencePtr aUnderlying, GenericFilter const& aFilter)
    : fUnderlying(std::move(aUnderlying)), fFilter(aFilter.clone())
{
}

GenericFilteredSequence::~GenericFilteredSequence() = default;

void* GenericFilteredSequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericFilteredSequence, SequenceIntf>(this, aInfo);
}

Generic::SequenceIntf& GenericFilteredSequence::target() const
{
    if (!fUnderlying)
        Generic::checks::nullUnderlying(kSource, __LINE__);
    return *fUnderlying;
}

void GenericFilteredSequence::update_begin_end_cache(Deviant const& aDeviant) const
{
    fBegin = target().generic_begin(aDeviant);
    fEnd = target().generic_end(aDeviant);
}

// An element already in the sequence: a filter that covers the sequence need not look.
bool GenericFilteredSequence::passes(Ref const& aValue) const
{
    return fFilter->acceptsAll() || fFilter->accepts(aValue);
}

// A value from outside, on its way in.
void GenericFilteredSequence::checkTakes(Ref const& aValue) const
{
    fFilter->checkInsertion();
    views::require(aValue.payload && fFilter->accepts(aValue), kFailsFilter, kSource, __LINE__);
}

IteratorPtr GenericFilteredSequence::wrap(IteratorPtr aPosition, Deviant const& aDeviant) const
{
    update_begin_end_cache(aDeviant);
    return makeIterator<Iterator>(this, std::move(aPosition), aDeviant);
}

IteratorIntf const* GenericFilteredSequence::positionOf(IteratorIntf const* aPosition) const
{
    auto const* mine =
        aPosition ? static_cast<Iterator const*>(aPosition->cast(CooperativeVisitor::internal::classInfo<Iterator>()))
                  : nullptr;
    if (!mine)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    return mine->position();
}

int GenericFilteredSequence::underlyingIndex(Deviant const& aDeviant, int aIndex, int& aAccepted) const
{
    update_begin_end_cache(aDeviant);
    aAccepted = 0;
    int index = 0;
    for (IteratorPtr it = fBegin->clone(); !it->equal(fEnd.get()); it->next(aDeviant), ++index) {
        if (!passes(it->current(aDeviant)))
            continue;
        if (aAccepted++ == aIndex)
            return index;
    }
    return -1;
}

Ref GenericFilteredSequence::generic_at(Deviant const& aDeviant, int aIndex) const
{
    views::require(aIndex >= 0, "GenericFilteredSequence::generic_at: index out of bounds, less than zero size!",
                   kSource, __LINE__);
    update_begin_end_cache(aDeviant);
    int accepted = 0;
    for (IteratorPtr it = fBegin->clone(); !it->equal(fEnd.get()); it->next(aDeviant)) {
        Ref value = it->current(aDeviant);
        if (passes(value) && accepted++ == aIndex)
            return value;
    }
    views::require(accepted != 0, "GenericFilteredSequence::generic_at: No items match the filter!", kSource,
                   __LINE__);
    views::fail("GenericFilteredSequence::generic_at: index out of bounds!", kSource, __LINE__);
}

Ref GenericFilteredSequence::generic_front(Deviant const& aDeviant) const
{
    return generic_at(aDeviant, 0);
}

Ref GenericFilteredSequence::generic_back(Deviant const& aDeviant) const
{
    update_begin_end_cache(aDeviant);
    IteratorPtr it = fEnd->clone();
    while (!it->equal(fBegin.get())) {
        it->previous(aDeviant);
        Ref value = it->current(aDeviant);
        if (passes(value))
            return value;
    }
    views::fail("GenericFilteredSequence::generic_back: No items match the filter!", kSource, __LINE__);
}

IteratorPtr GenericFilteredSequence::generic_begin(Deviant const& aDeviant) const
{
    update_begin_end_cache(aDeviant);
    return makeIterator<Iterator>(this, fBegin->clone(), aDeviant);
}

IteratorPtr GenericFilteredSequence::generic_end(Deviant const& aDeviant) const
{
    update_begin_end_cache(aDeviant);
    return makeIterator<Iterator>(this, fEnd->clone());
}

void GenericFilteredSequence::generic_clear(Deviant const& aDeviant)
{
    if (fFilter->acceptsAll()) {
        target().generic_clear(aDeviant);
        return;
    }
    for (int i = 0; i < target().generic_size(aDeviant);) {
        if (passes(target().generic_at(aDeviant, i)))
            target().generic_erase(aDeviant, i);
        else
            ++i;
    }
}

int GenericFilteredSequence::generic_size(Deviant const& aDeviant) const
{
    if (fFilter->acceptsAll())
        return target().generic_size(aDeviant);
    update_begin_end_cache(aDeviant);
    int count = 0;
    for (IteratorPtr it = fBegin->clone(); !it->equal(fEnd.get()); it->next(aDeviant))
        count += passes(it->current(aDeviant));
    return count;
}

bool GenericFilteredSequence::generic_empty(Deviant const& aDeviant) const
{
    if (fFilter->acceptsAll())
        return target().generic_empty(aDeviant);
    IteratorPtr const first = generic_begin(aDeviant);
    return static_cast<Iterator const*>(first.get())->position()->equal(fEnd.get());
}

void GenericFilteredSequence::generic_insert(Deviant const& aDeviant, int aIndex, Ref aValue)
{
    views::require(aValue.payload != nullptr,
                   "GenericFilteredSequence::generic_insert: Attempting to insert an invalid ref!", kSource, __LINE__);
    checkTakes(aValue);
    int accepted = 0;
    int index = aIndex < 0 ? -1 : underlyingIndex(aDeviant, aIndex, accepted);
    if (index < 0 && aIndex == accepted)
        index = target().generic_size(aDeviant);
    views::require(index >= 0, "GenericFilteredSequence::generic_insert: Index out of bounds!", kSource, __LINE__);
    target().generic_insert(aDeviant, index, std::move(aValue));
}

IteratorPtr GenericFilteredSequence::generic_insert(Deviant const& aDeviant, IteratorIntf const* aPosition,
                                                    Ref aValue)
{
    checkTakes(aValue);
    return wrap(target().generic_insert(aDeviant, positionOf(aPosition), std::move(aValue)), aDeviant);
}

IteratorPtr GenericFilteredSequence::generic_erase(Deviant const& aDeviant, IteratorIntf const* aPosition)
{
    return wrap(target().generic_erase(aDeviant, positionOf(aPosition)), aDeviant);
}

IteratorPtr GenericFilteredSequence::generic_erase(Deviant const& aDeviant, IteratorIntf const* aFirst,
                                                   IteratorIntf const* aLast)
{
    return wrap(target().generic_erase(aDeviant, positionOf(aFirst), positionOf(aLast)), aDeviant);
}

void GenericFilteredSequence::generic_erase(Deviant const& aDeviant, int aIndex)
{
    if (aIndex < 0)
        Generic::checks::negativeIndex(kSource, __LINE__);
    int accepted = 0;
    int const index = underlyingIndex(aDeviant, aIndex, accepted);
    if (index < 0)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    target().generic_erase(aDeviant, index);
}

void GenericFilteredSequence::generic_pop_back(Deviant const& aDeviant)
{
    update_begin_end_cache(aDeviant);
    IteratorPtr it = fEnd->clone();
    while (!it->equal(fBegin.get())) {
        it->previous(aDeviant);
        if (passes(it->current(aDeviant))) {
            target().generic_erase(aDeviant, it.get());
            return;
        }
    }
    Generic::checks::empty(kSource, __LINE__);
}

void GenericFilteredSequence::generic_pop_front(Deviant const& aDeviant)
{
    IteratorPtr const first = generic_begin(aDeviant);
    auto const* position = static_cast<Iterator const*>(first.get())->position();
    if (position->equal(fEnd.get()))
        Generic::checks::empty(kSource, __LINE__);
    target().generic_erase(aDeviant, position);
}

void GenericFilteredSequence::generic_push_back(Deviant const& aDeviant, Ref aValue)
{
    checkTakes(aValue);
    target().generic_push_back(aDeviant, std::move(aValue));
}

void GenericFilteredSequence::generic_push_front(Deviant const& aDeviant, Ref aValue)
{
    checkTakes(aValue);
    target().generic_push_front(aDeviant, std::move(aValue));
}

void GenericFilteredSequence::generic_replace(Deviant const& aDeviant, int aIndex, Ref aValue)
{
    checkTakes(aValue);
    if (aIndex < 0)
        Generic::checks::negativeIndex(kSource, __LINE__);
    int accepted = 0;
    int const index = underlyingIndex(aDeviant, aIndex, accepted);
    if (index < 0)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    target().generic_replace(aDeviant, index, std::move(aValue));
}

bool GenericFilteredSequence::generic_contains(Deviant const& aDeviant, Ref aValue) const
{
    return fFilter->accepts(aValue) && target().generic_contains(aDeviant, std::move(aValue));
}

std::string GenericFilteredSequence::generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const
{
    std::string_view const element = fFilter->elementName();
    if (element.empty())
        return target().generic_getKestName(aImmutable, aIterator, aPrefix);
    return Generic::hostName(aImmutable, aIterator, aPrefix, element);
}

int GenericFilteredSequence::generic_removeAll(Deviant const& aDeviant, Ref aValue)
{
    views::require(fFilter->accepts(aValue), kFailsFilter, kSource, __LINE__);
    return target().generic_removeAll(aDeviant, std::move(aValue));
}

bool GenericFilteredSequence::specialized_equal(Deviant const&, SequenceIntf const*, Deviant const&, bool&) const
{
    return false;
}

void GenericFilteredSequence::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&) {}

GenericFilteredSequence::Iterator::Iterator(GenericFilteredSequence const* aSequence, IteratorPtr aPosition)
    : fSequence(const_cast<GenericFilteredSequence*>(aSequence)), fPosition(std::move(aPosition))
{
}

GenericFilteredSequence::Iterator::Iterator(GenericFilteredSequence const* aSequence, IteratorPtr aPosition,
                                            Deviant const& aDeviant)
    : Iterator(aSequence, std::move(aPosition))
{
    skipForward(aDeviant);
}

void GenericFilteredSequence::Iterator::skipForward(Deviant const& aDeviant)
{
    IteratorIntf const* const end = fSequence->fEnd.get();
    while (!fPosition->equal(end) && !fSequence->passes(fPosition->current(aDeviant)))
        fPosition->next(aDeviant);
}

void* GenericFilteredSequence::Iterator::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<Iterator, IteratorIntf>(this, aInfo);
}

Ref GenericFilteredSequence::Iterator::current(Deviant const& aDeviant) const
{
    return fPosition->current(aDeviant);
}

void GenericFilteredSequence::Iterator::next(Deviant const& aDeviant)
{
    fPosition->next(aDeviant);
    skipForward(aDeviant);
}

void GenericFilteredSequence::Iterator::previous(Deviant const& aDeviant)
{
    IteratorIntf const* const begin = fSequence->fBegin.get();
    do
        fPosition->previous(aDeviant);
    while (!fPosition->equal(begin) && !fSequence->passes(fPosition->current(aDeviant)));
}

IteratorPtr GenericFilteredSequence::Iterator::clone() const
{
    return makeIterator<Iterator>(fSequence.get(), fPosition->clone());
}

bool GenericFilteredSequence::Iterator::equal(IteratorIntf const* aOther) const
{
    auto const* other =
        aOther ? static_cast<Iterator const*>(aOther->cast(CooperativeVisitor::internal::classInfo<Iterator>()))
               : nullptr;
    return other && fPosition->equal(other->fPosition.get());
}

} // namespace TAV::filtered_sequence_internal
