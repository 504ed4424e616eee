#include <tav/kernel/containers/sequence/views/GenericSubsetSequence.h>

#include "kernel/containers/sequence/SequenceChecks.h"
#include "kernel/containers/sequence/views/ObjectRefs.h"

#include <tav/kernel/util/IntrospectiveMethods.h>

#include <algorithm>

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/views/GenericSubsetSequence";

bool isSingleValued(SubsetEntry const& aEntry)
{
    MetaPropertyDescription const* const description =
        aEntry.methods->descriptions ? aEntry.methods->descriptions[aEntry.propertyId] : nullptr;
    return description && !(description->flags & MetaPropertyDescription::kMultiValued);
}
} // namespace

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::Ref;

GenericSubsetSequence::GenericSubsetSequence(ClassObject aOwner, Generic::SequencePtr aSequence,
                                             std::vector<SubsetEntry> aSubsets)
    : fOwner(std::move(aOwner)), fSequence(std::move(aSequence)), fSubsets(std::move(aSubsets))
{
}

GenericSubsetSequence::~GenericSubsetSequence() = default;

Generic::SequencePtr makeSubsetSequence(ClassObject aOwner, Generic::SequencePtr aSequence,
                                        std::vector<SubsetEntry> aSubsets)
{
    return Generic::SequencePtr(new Generic::HeapCounted<GenericSubsetSequence>(
        std::move(aOwner), std::move(aSequence), std::move(aSubsets)));
}

Generic::SequenceIntf& GenericSubsetSequence::target() const
{
    if (!fSequence)
        Generic::checks::nullUnderlying(kSource, __LINE__);
    return *fSequence;
}

// A single-valued subset loses its value only if it is one of the removed.
void GenericSubsetSequence::removeFromSubsets(Deviant const& aDeviant, std::vector<Ref> const& aValues) const
{
    NSInterface::ClassObjectIntf* const owner = fOwner.internal_intf();
    if (!owner || aValues.empty())
        return;
    for (SubsetEntry const& entry : fSubsets) {
        if (isSingleValued(entry)) {
            Ref const asRef = views::refOf(entry.methods->getSingleValued(owner, aDeviant, entry.propertyId));
            if (asRef.payload && std::find(aValues.begin(), aValues.end(), asRef) != aValues.end())
                entry.methods->removeSingleValued(owner, aDeviant, entry.propertyId);
            continue;
        }
        Generic::SequencePtr const subset = entry.methods->getMultiValued(owner, aDeviant, entry.propertyId, true);
        for (Ref const& value : aValues)
            subset->generic_removeAll(aDeviant, value);
    }
}

void* GenericSubsetSequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericSubsetSequence, SequenceIntf>(this, aInfo);
}

Ref GenericSubsetSequence::generic_at(Deviant const& aDeviant, int aIndex) const
{
    return target().generic_at(aDeviant, aIndex);
}
Ref GenericSubsetSequence::generic_front(Deviant const& aDeviant) const
{
    return target().generic_front(aDeviant);
}
Ref GenericSubsetSequence::generic_back(Deviant const& aDeviant) const
{
    return target().generic_back(aDeviant);
}
IteratorPtr GenericSubsetSequence::generic_begin(Deviant const& aDeviant) const
{
    return target().generic_begin(aDeviant);
}
IteratorPtr GenericSubsetSequence::generic_end(Deviant const& aDeviant) const
{
    return target().generic_end(aDeviant);
}
int GenericSubsetSequence::generic_size(Deviant const& aDeviant) const
{
    return target().generic_size(aDeviant);
}
bool GenericSubsetSequence::generic_empty(Deviant const& aDeviant) const
{
    return target().generic_empty(aDeviant);
}
bool GenericSubsetSequence::generic_contains(Deviant const& aDeviant, Ref aValue) const
{
    return target().generic_contains(aDeviant, aValue);
}
std::string GenericSubsetSequence::generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const
{
    return target().generic_getKestName(aImmutable, aIterator, aPrefix);
}
void GenericSubsetSequence::generic_insert(Deviant const& aDeviant, int aIndex, Ref aValue)
{
    target().generic_insert(aDeviant, aIndex, aValue);
}
IteratorPtr GenericSubsetSequence::generic_insert(Deviant const& aDeviant, IteratorIntf const* aPosition, Ref aValue)
{
    return target().generic_insert(aDeviant, aPosition, aValue);
}
IteratorPtr GenericSubsetSequence::generic_erase(Deviant const& aDeviant, IteratorIntf const* aPosition)
{
    return target().generic_erase(aDeviant, aPosition);
}
IteratorPtr GenericSubsetSequence::generic_erase(Deviant const& aDeviant, IteratorIntf const* aFirst,
                                                 IteratorIntf const* aLast)
{
    return target().generic_erase(aDeviant, aFirst, aLast);
}
void GenericSubsetSequence::generic_erase(Deviant const& aDeviant, int aIndex)
{
    target().generic_erase(aDeviant, aIndex);
}
void GenericSubsetSequence::generic_pop_back(Deviant const& aDeviant)
{
    target().generic_pop_back(aDeviant);
}
void GenericSubsetSequence::generic_pop_front(Deviant const& aDeviant)
{
    target().generic_pop_front(aDeviant);
}
void GenericSubsetSequence::generic_push_back(Deviant const& aDeviant, Ref aValue)
{
    target().generic_push_back(aDeviant, aValue);
}
void GenericSubsetSequence::generic_push_front(Deviant const& aDeviant, Ref aValue)
{
    target().generic_push_front(aDeviant, aValue);
}
void GenericSubsetSequence::generic_replace(Deviant const& aDeviant, int aIndex, Ref aValue)
{
    target().generic_replace(aDeviant, aIndex, aValue);
}

void GenericSubsetSequence::generic_clear(Deviant const& aDeviant)
{
    std::vector<Ref> removed;
    for (IteratorPtr it = target().generic_begin(aDeviant), end = target().generic_end(aDeviant); !it->equal(end.get());
         it->next(aDeviant))
        removed.push_back(it->current(aDeviant));
    target().generic_clear(aDeviant);
    removeFromSubsets(aDeviant, removed);
}

int GenericSubsetSequence::generic_removeAll(Deviant const& aDeviant, Ref aValue)
{
    int const removed = target().generic_removeAll(aDeviant, aValue);
    removeFromSubsets(aDeviant, {aValue});
    return removed;
}

bool GenericSubsetSequence::specialized_equal(Deviant const&, SequenceIntf const*, Deviant const&, bool&) const
{
    return false;
}
void GenericSubsetSequence::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&) {}

} // namespace TAV
