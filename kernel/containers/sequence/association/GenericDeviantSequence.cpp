#include <tav/kernel/containers/sequence/GenericDeviantSequence.h>

#include "kernel/containers/sequence/SequenceChecks.h"

#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/association/GenericDeviantSequence";

using NSInterface::ClassObjectIntf;

[[noreturn]] void nullSequence(int aLine)
{
    Asserter::MakeAlways<Exception>("operating on null sequence").handle(kSource, aLine, "");
    __builtin_unreachable();
}
} // namespace

GenericDeviantSequence::GenericDeviantSequence(void* aObject, Deviant const& aDeviant,
                                               IntrospectiveMethods const* aMethods, unsigned aPropertyId)
    : object(static_cast<ClassObjectIntf*>(aObject)), deviant(aDeviant), methods(aMethods), propertyId(aPropertyId)
{
    if (object)
        object->incRef();
}

GenericDeviantSequence::~GenericDeviantSequence()
{
    heldSequence = Generic::SequencePtr();
    if (object)
        object->decRef();
}

void* GenericDeviantSequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericDeviantSequence, SequenceIntf>(this, aInfo);
}

// Storage embedded in a state counts nothing (numRef 0) and is found again at the
// same place as long as the state is the same, so it is kept by address alone.
// Counted storage is held, and looked up again on each operation: it is not the
// state's field, and a state at a reused address may no longer have it.
Generic::SequenceIntf* GenericDeviantSequence::resolve(Deviant const& aDeviant, bool aForWrite) const
{
    ClassObjectIntf const* const state =
        !object ? nullptr
        : aForWrite ? object->getWriteDeviantI(aDeviant, static_cast<ClassObjectIntf const*>(object))
                    : object->getReadDeviantI(aDeviant, static_cast<ClassObjectIntf const*>(object));
    if (state && state == cachedState && cachedSequence && !heldSequence)
        return cachedSequence;
    Generic::SequencePtr found;
    if (state)
        found = methods->getOnlyMultiValued(const_cast<ClassObjectIntf*>(state), deviant, propertyId, aForWrite);
    if (!(found == heldSequence))
        heldSequence = found;
    cachedState = state;
    cachedSequence = found.get();
    if (!found)
        nullSequence(__LINE__);
    if (found->numRef() == 0)
        heldSequence = Generic::SequencePtr();
    return cachedSequence;
}

Generic::Ref GenericDeviantSequence::generic_at(Deviant const& aDeviant, int aIndex) const
{
    return resolve(aDeviant, false)->generic_at(aDeviant, aIndex);
}

Generic::Ref GenericDeviantSequence::generic_front(Deviant const& aDeviant) const
{
    return resolve(aDeviant, false)->generic_front(aDeviant);
}

Generic::Ref GenericDeviantSequence::generic_back(Deviant const& aDeviant) const
{
    return resolve(aDeviant, false)->generic_back(aDeviant);
}

Generic::IteratorPtr GenericDeviantSequence::generic_begin(Deviant const&) const
{
    return Generic::makeIterator<Iterator>(this, 0);
}

Generic::IteratorPtr GenericDeviantSequence::generic_end(Deviant const& aDeviant) const
{
    return Generic::makeIterator<Iterator>(this, resolve(aDeviant, false)->generic_size(aDeviant));
}

int GenericDeviantSequence::generic_size(Deviant const& aDeviant) const
{
    return resolve(aDeviant, false)->generic_size(aDeviant);
}

bool GenericDeviantSequence::generic_empty(Deviant const& aDeviant) const
{
    return resolve(aDeviant, false)->generic_empty(aDeviant);
}

bool GenericDeviantSequence::generic_contains(Deviant const& aDeviant, Generic::Ref aValue) const
{
    return resolve(aDeviant, false)->generic_contains(aDeviant, std::move(aValue));
}

std::string GenericDeviantSequence::generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const
{
    return resolve(deviant, false)->generic_getKestName(aImmutable, aIterator, aPrefix);
}

template <class Insert>
void GenericDeviantSequence::insertCounted(Deviant const& aDeviant, Generic::Ref const& aValue, Insert aInsert)
{
    int const before = resolve(aDeviant, false)->generic_size(aDeviant);
    aInsert(resolve(aDeviant, true), Generic::Ref(aValue));
    int const after = resolve(aDeviant, false)->generic_size(aDeviant);
    if (after > before)
        aDeviant.setOrAddReferred(aValue.deviant, methods, propertyId);
}

void GenericDeviantSequence::generic_push_back(Deviant const& aDeviant, Generic::Ref aValue)
{
    insertCounted(aDeviant, aValue, [&](SequenceIntf* s, Generic::Ref v) { s->generic_push_back(aDeviant, v); });
}

void GenericDeviantSequence::generic_push_front(Deviant const& aDeviant, Generic::Ref aValue)
{
    insertCounted(aDeviant, aValue, [&](SequenceIntf* s, Generic::Ref v) { s->generic_push_front(aDeviant, v); });
}

void GenericDeviantSequence::generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    insertCounted(aDeviant, aValue,
                  [&](SequenceIntf* s, Generic::Ref v) { s->generic_insert(aDeviant, aIndex, v); });
}

Generic::IteratorPtr GenericDeviantSequence::generic_insert(Deviant const& aDeviant,
                                                            Generic::IteratorIntf const* aPosition,
                                                            Generic::Ref aValue)
{
    int const index = indexOf(aPosition);
    generic_insert(aDeviant, index, std::move(aValue));
    return Generic::makeIterator<Iterator>(this, index);
}

void GenericDeviantSequence::generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    SequenceIntf* const storage = resolve(aDeviant, true);
    Generic::Ref const old = storage->generic_at(aDeviant, aIndex);
    storage->generic_replace(aDeviant, aIndex, aValue);
    // A value that a unique storage refused leaves the old one, and its record, in place.
    if (!(storage->generic_at(aDeviant, aIndex) == aValue))
        return;
    aDeviant.removeReferred(old.deviant, methods, propertyId);
    aDeviant.setOrAddReferred(aValue.deviant, methods, propertyId);
}

Generic::Ref GenericDeviantSequence::takeForRemoval(Deviant const& aDeviant, int aIndex) const
{
    return resolve(aDeviant, false)->generic_at(aDeviant, aIndex);
}

void GenericDeviantSequence::generic_erase(Deviant const& aDeviant, int aIndex)
{
    Generic::Ref const element = takeForRemoval(aDeviant, aIndex);
    resolve(aDeviant, true)->generic_erase(aDeviant, aIndex);
    aDeviant.removeReferred(element.deviant, methods, propertyId);
}

Generic::IteratorPtr GenericDeviantSequence::generic_erase(Deviant const& aDeviant,
                                                           Generic::IteratorIntf const* aPosition)
{
    int const index = indexOf(aPosition);
    generic_erase(aDeviant, index);
    return Generic::makeIterator<Iterator>(this, index);
}

Generic::IteratorPtr GenericDeviantSequence::generic_erase(Deviant const& aDeviant,
                                                           Generic::IteratorIntf const* aFirst,
                                                           Generic::IteratorIntf const* aLast)
{
    int const first = indexOf(aFirst);
    int const last = indexOf(aLast);
    if (last < first || last > generic_size(aDeviant))
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    for (int i = first; i < last; ++i)
        generic_erase(aDeviant, first);
    return Generic::makeIterator<Iterator>(this, first);
}

void GenericDeviantSequence::generic_pop_back(Deviant const& aDeviant)
{
    Generic::Ref const element = resolve(aDeviant, false)->generic_back(aDeviant);
    resolve(aDeviant, true)->generic_pop_back(aDeviant);
    aDeviant.removeReferred(element.deviant, methods, propertyId);
}

void GenericDeviantSequence::generic_pop_front(Deviant const& aDeviant)
{
    Generic::Ref const element = resolve(aDeviant, false)->generic_front(aDeviant);
    resolve(aDeviant, true)->generic_pop_front(aDeviant);
    aDeviant.removeReferred(element.deviant, methods, propertyId);
}

void GenericDeviantSequence::generic_clear(Deviant const& aDeviant)
{
    SequenceIntf const* const storage = resolve(aDeviant, false);
    int const size = storage->generic_size(aDeviant);
    for (int i = 0; i < size; ++i)
        aDeviant.removeReferred(storage->generic_at(aDeviant, i).deviant, methods, propertyId);
    resolve(aDeviant, true)->generic_clear(aDeviant);
}

int GenericDeviantSequence::generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue)
{
    Deviant const referred = aValue.deviant;
    int const removed = resolve(aDeviant, true)->generic_removeAll(aDeviant, std::move(aValue));
    if (removed > 0)
        aDeviant.removeReferred(referred, methods, propertyId);
    return removed;
}

int GenericDeviantSequence::indexOf(Generic::IteratorIntf const* aPosition) const
{
    auto const* it = aPosition ? static_cast<Iterator const*>(
                                     aPosition->cast(CooperativeVisitor::internal::classInfo<Iterator>()))
                               : nullptr;
    if (!it)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    return it->index();
}

GenericDeviantSequence::Iterator::Iterator(GenericDeviantSequence const* aSequence, int aIndex)
    : fSequence(aSequence), fIndex(aIndex)
{
    Asserter::Make<Exception>(aSequence != nullptr, "null sequence for iterator constructor")
        .handle(kSource, __LINE__, "");
}

void* GenericDeviantSequence::Iterator::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<Iterator, IteratorIntf>(this, aInfo);
}

Generic::Ref GenericDeviantSequence::Iterator::current(Deviant const& aDeviant) const
{
    return fSequence->generic_at(aDeviant, fIndex);
}

void GenericDeviantSequence::Iterator::next(Deviant const&)
{
    ++fIndex;
}

void GenericDeviantSequence::Iterator::previous(Deviant const&)
{
    --fIndex;
}

Generic::IteratorPtr GenericDeviantSequence::Iterator::clone() const
{
    return Generic::makeIterator<Iterator>(fSequence, fIndex);
}

bool GenericDeviantSequence::Iterator::equal(Generic::IteratorIntf const* aOther) const
{
    auto const* other = aOther ? static_cast<Iterator const*>(aOther->cast(CooperativeVisitor::internal::classInfo<Iterator>()))
                               : nullptr;
    return other && other->fIndex == fIndex;
}

} // namespace TAV
