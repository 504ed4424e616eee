#include <tav/kernel/containers/sequence/GenericAssociationSequence.h>

#include <tav/TAV/Object_h.h>
#include <tav/kernel/containers/sequence/ElementTraits.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <vector>

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/association/GenericAssociationSequence";

NSInterface::ClassObjectIntf* classObjectOf(Generic::Ref const& aElement)
{
    ReferenceCountingIntf* const object = aElement.object();
    return object ? Generic::asClassObject(object) : nullptr;
}

// The far end is written through this write's deviant when both ends are of one
// model; an element that may be elsewhere (a transient end) through its own.
Deviant farDeviant(Deviant const& aDeviant, Generic::Ref const& aElement)
{
    Deviant const other = aElement.deviant;
    if (other.isNull() || other.getRootDeviant() == aDeviant.getRootDeviant())
        return aDeviant;
    return other;
}
} // namespace

GenericAssociationSequence::GenericAssociationSequence(Object const& aOwner, Generic::SequencePtr const& aInner,
                                                       IntrospectiveMethods const* aOppositeMethods,
                                                       unsigned aOppositePropertyId, bool aOppositeIsSingleValued)
    : inner(aInner), oppositeMethods(aOppositeMethods), oppositePropertyId(aOppositePropertyId), owner(aOwner),
      oppositeIsSingleValued(aOppositeIsSingleValued)
{
}

GenericAssociationSequence::~GenericAssociationSequence() = default;

void* GenericAssociationSequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericAssociationSequence, SequenceIntf>(this, aInfo);
}

void GenericAssociationSequence::checkSameModel(Generic::Ref const& aElement) const
{
    if (!classObjectOf(aElement))
        return;
    if (owner.getDeviant().isInDifferentModel(aElement.deviant, oppositeMethods, oppositePropertyId))
        Asserter::MakeAlways<Exception>("Cross-model bi-directional associations are currently disallowed!")
            .handle(kSource, __LINE__, "");
}

void GenericAssociationSequence::link(Deviant const& aDeviant, Generic::Ref const& aElement) const
{
    NSInterface::ClassObjectIntf* const far = classObjectOf(aElement);
    if (!far)
        return; // the guarded sequence refuses it, with its own words
    Deviant const at = farDeviant(aDeviant, aElement);
    if (oppositeIsSingleValued) {
        oppositeMethods->setOnlySingleValued(far, at, oppositePropertyId, owner);
        return;
    }
    Generic::SequencePtr const sequence = oppositeMethods->getOnlyMultiValued(far, at, oppositePropertyId, true);
    ReferenceCountingIntf* const self = Generic::asCounted(Generic::asClassObject(owner.internal_counted()));
    sequence->generic_push_back(at, Generic::Ref(self, owner.getDeviant()));
}

void GenericAssociationSequence::unlink(Deviant const& aDeviant, Generic::Ref const& aElement) const
{
    NSInterface::ClassObjectIntf* const far = classObjectOf(aElement);
    if (!far)
        return;
    Deviant const at = farDeviant(aDeviant, aElement);
    if (oppositeIsSingleValued) {
        oppositeMethods->removeOnlySingleValued(far, at, oppositePropertyId);
        return;
    }
    Generic::SequencePtr const sequence = oppositeMethods->getOnlyMultiValued(far, at, oppositePropertyId, true);
    ReferenceCountingIntf* const self = Generic::asCounted(Generic::asClassObject(owner.internal_counted()));
    sequence->generic_removeAll(at, Generic::Ref(self, owner.getDeviant()));
}

Generic::Ref GenericAssociationSequence::generic_at(Deviant const& aDeviant, int aIndex) const
{
    return inner->generic_at(aDeviant, aIndex);
}

Generic::Ref GenericAssociationSequence::generic_front(Deviant const& aDeviant) const
{
    return inner->generic_front(aDeviant);
}

Generic::Ref GenericAssociationSequence::generic_back(Deviant const& aDeviant) const
{
    return inner->generic_back(aDeviant);
}

Generic::IteratorPtr GenericAssociationSequence::generic_begin(Deviant const& aDeviant) const
{
    return inner->generic_begin(aDeviant);
}

Generic::IteratorPtr GenericAssociationSequence::generic_end(Deviant const& aDeviant) const
{
    return inner->generic_end(aDeviant);
}

int GenericAssociationSequence::generic_size(Deviant const& aDeviant) const
{
    return inner->generic_size(aDeviant);
}

bool GenericAssociationSequence::generic_empty(Deviant const& aDeviant) const
{
    return inner->generic_empty(aDeviant);
}

bool GenericAssociationSequence::generic_contains(Deviant const& aDeviant, Generic::Ref aValue) const
{
    return inner->generic_contains(aDeviant, std::move(aValue));
}

std::string GenericAssociationSequence::generic_getKestName(bool aImmutable, bool aIterator,
                                                            char const* aPrefix) const
{
    return inner->generic_getKestName(aImmutable, aIterator, aPrefix);
}

void GenericAssociationSequence::generic_push_back(Deviant const& aDeviant, Generic::Ref aValue)
{
    checkSameModel(aValue);
    link(aDeviant, aValue);
    inner->generic_push_back(aDeviant, std::move(aValue));
}

void GenericAssociationSequence::generic_push_front(Deviant const& aDeviant, Generic::Ref aValue)
{
    checkSameModel(aValue);
    link(aDeviant, aValue);
    inner->generic_push_front(aDeviant, std::move(aValue));
}

void GenericAssociationSequence::generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    checkSameModel(aValue);
    link(aDeviant, aValue);
    inner->generic_insert(aDeviant, aIndex, std::move(aValue));
}

Generic::IteratorPtr GenericAssociationSequence::generic_insert(Deviant const& aDeviant,
                                                                Generic::IteratorIntf const* aPosition,
                                                                Generic::Ref aValue)
{
    checkSameModel(aValue);
    link(aDeviant, aValue);
    return inner->generic_insert(aDeviant, aPosition, std::move(aValue));
}

// The model check comes first, so that a refused value leaves the old element linked.
// A value already elsewhere in a unique storage would be refused by it after the old
// element had been unlinked: such a replace changes neither end.
void GenericAssociationSequence::generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    checkSameModel(aValue);
    Generic::Ref const old = inner->generic_at(aDeviant, aIndex);
    if (!(old == aValue) && inner->generic_contains(aDeviant, aValue))
        return;
    unlink(aDeviant, old);
    link(aDeviant, aValue);
    inner->generic_replace(aDeviant, aIndex, std::move(aValue));
}

int GenericAssociationSequence::generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue)
{
    int const removed = inner->generic_removeAll(aDeviant, aValue);
    if (removed > 0)
        unlink(aDeviant, aValue);
    return removed;
}

void GenericAssociationSequence::generic_clear(Deviant const& aDeviant)
{
    int const size = inner->generic_size(aDeviant);
    for (int i = 0; i < size; ++i)
        unlink(aDeviant, inner->generic_at(aDeviant, i));
    inner->generic_clear(aDeviant);
}

void GenericAssociationSequence::generic_erase(Deviant const& aDeviant, int aIndex)
{
    unlink(aDeviant, inner->generic_at(aDeviant, aIndex));
    inner->generic_erase(aDeviant, aIndex);
}

Generic::IteratorPtr GenericAssociationSequence::generic_erase(Deviant const& aDeviant,
                                                               Generic::IteratorIntf const* aPosition)
{
    if (aPosition)
        unlink(aDeviant, aPosition->current(aDeviant));
    return inner->generic_erase(aDeviant, aPosition);
}

Generic::IteratorPtr GenericAssociationSequence::generic_erase(Deviant const& aDeviant,
                                                               Generic::IteratorIntf const* aFirst,
                                                               Generic::IteratorIntf const* aLast)
{
    // Bounded by the size, so that a range the guarded sequence will refuse ends here too.
    std::vector<Generic::Ref> elements;
    int const size = inner->generic_size(aDeviant);
    if (aFirst && aLast)
        for (Generic::IteratorPtr it = aFirst->clone(); !it->equal(aLast) && int(elements.size()) < size;
             it->next(aDeviant))
            elements.push_back(it->current(aDeviant));
    for (Generic::Ref const& element : elements)
        unlink(aDeviant, element);
    return inner->generic_erase(aDeviant, aFirst, aLast);
}

void GenericAssociationSequence::generic_pop_back(Deviant const& aDeviant)
{
    unlink(aDeviant, inner->generic_back(aDeviant));
    inner->generic_pop_back(aDeviant);
}

void GenericAssociationSequence::generic_pop_front(Deviant const& aDeviant)
{
    unlink(aDeviant, inner->generic_front(aDeviant));
    inner->generic_pop_front(aDeviant);
}

} // namespace TAV
