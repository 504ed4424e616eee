#include <tav/kernel/containers/sequence/views/GenericPropertyToSequenceProxy.h>

#include "kernel/containers/sequence/SequenceChecks.h"
#include "kernel/containers/sequence/views/ObjectRefs.h"
#include "kernel/containers/sequence/views/ViewFailure.h"

#include <tav/kernel/util/IntrospectiveMethods.h>

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/property2sequence/GenericPropertyToSequenceProxy";
constexpr char const* kNullRef = "Cannot access NULL ref. Use isValid() before calling methods";
} // namespace

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::Ref;

GenericPropertyToSequenceProxy::GenericPropertyToSequenceProxy(ImmutableClassObject aObject,
                                                               IntrospectiveMethods const* aMethods,
                                                               unsigned aPropertyId, int aLower)
    : fObject(std::move(aObject)), fMethods(aMethods), fPropertyId(aPropertyId), fLower(aLower)
{
}

NSInterface::ClassObjectIntf* GenericPropertyToSequenceProxy::object() const
{
    NSInterface::ClassObjectIntf* const object = fObject.internal_intf();
    views::require(object != nullptr, kNullRef, kSource, __LINE__);
    return object;
}

bool GenericPropertyToSequenceProxy::isSet(Deviant const& aDeviant) const
{
    if (fLower != 1)
        return fMethods->hasSingleValued(object(), aDeviant, fPropertyId);
    Object const current = fMethods->getSingleValued(object(), aDeviant, fPropertyId);
    return current.internal_intf() && current.internal_intf()->deviant_isValid(aDeviant);
}

Ref GenericPropertyToSequenceProxy::value(Deviant const& aDeviant) const
{
    if (!isSet(aDeviant))
        return {};
    return views::refOf(fMethods->getSingleValued(object(), aDeviant, fPropertyId));
}

Ref GenericPropertyToSequenceProxy::validValue(Deviant const& aDeviant) const
{
    Ref result = value(aDeviant);
    views::require(result.payload != nullptr, kNullRef, kSource, __LINE__);
    return result;
}

void GenericPropertyToSequenceProxy::set(Deviant const& aDeviant, Ref const& aValue)
{
    fMethods->setSingleValued(object(), aDeviant, fPropertyId, views::objectOf(aValue));
}

void GenericPropertyToSequenceProxy::unset(Deviant const& aDeviant)
{
    if (isSet(aDeviant))
        fMethods->removeSingleValued(object(), aDeviant, fPropertyId);
}

IteratorPtr GenericPropertyToSequenceProxy::iterator(bool aAtEnd) const
{
    return Generic::makeIterator<GenericPropertyToSequenceIterator>(this, aAtEnd);
}

bool GenericPropertyToSequenceProxy::atEnd(IteratorIntf const* aPosition) const
{
    auto const* position = aPosition ? static_cast<GenericPropertyToSequenceIterator const*>(aPosition->cast(
                                           CooperativeVisitor::internal::classInfo<GenericPropertyToSequenceIterator>()))
                                     : nullptr;
    return !position || position->atEnd();
}

void* GenericPropertyToSequenceProxy::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericPropertyToSequenceProxy, SequenceProxy>(this, aInfo);
}

Ref GenericPropertyToSequenceProxy::generic_at(Deviant const& aDeviant, int aIndex) const
{
    if (aIndex < 0)
        Generic::checks::negativeIndex(kSource, __LINE__);
    if (aIndex > 0)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    return validValue(aDeviant);
}
Ref GenericPropertyToSequenceProxy::generic_front(Deviant const& aDeviant) const
{
    return validValue(aDeviant);
}
Ref GenericPropertyToSequenceProxy::generic_back(Deviant const& aDeviant) const
{
    return validValue(aDeviant);
}
IteratorPtr GenericPropertyToSequenceProxy::generic_begin(Deviant const& aDeviant) const
{
    return iterator(!isSet(aDeviant));
}
IteratorPtr GenericPropertyToSequenceProxy::generic_end(Deviant const&) const
{
    return iterator(true);
}
int GenericPropertyToSequenceProxy::generic_size(Deviant const& aDeviant) const
{
    return isSet(aDeviant) ? 1 : 0;
}
bool GenericPropertyToSequenceProxy::generic_contains(Deviant const& aDeviant, Ref aValue) const
{
    Ref const current = value(aDeviant);
    return current.payload && current == aValue;
}
std::string GenericPropertyToSequenceProxy::generic_getKestName(bool aImmutable, bool aIterator,
                                                                char const* aPrefix) const
{
    return Generic::hostName(aImmutable, aIterator, aPrefix, "ClassObject");
}

void GenericPropertyToSequenceProxy::generic_push_back(Deviant const& aDeviant, Ref aValue)
{
    set(aDeviant, aValue);
}
void GenericPropertyToSequenceProxy::generic_push_front(Deviant const& aDeviant, Ref aValue)
{
    set(aDeviant, aValue);
}
void GenericPropertyToSequenceProxy::generic_insert(Deviant const& aDeviant, int aIndex, Ref aValue)
{
    views::require(aIndex == 0, "Cannot add elements.", kSource, __LINE__);
    set(aDeviant, aValue);
}
IteratorPtr GenericPropertyToSequenceProxy::generic_insert(Deviant const& aDeviant, IteratorIntf const*, Ref aValue)
{
    set(aDeviant, aValue);
    return iterator(false);
}
void GenericPropertyToSequenceProxy::generic_replace(Deviant const& aDeviant, int, Ref aValue)
{
    set(aDeviant, aValue);
}

void GenericPropertyToSequenceProxy::generic_erase(Deviant const& aDeviant, int)
{
    unset(aDeviant);
}
void GenericPropertyToSequenceProxy::generic_pop_back(Deviant const& aDeviant)
{
    unset(aDeviant);
}
void GenericPropertyToSequenceProxy::generic_pop_front(Deviant const& aDeviant)
{
    unset(aDeviant);
}
void GenericPropertyToSequenceProxy::generic_clear(Deviant const& aDeviant)
{
    unset(aDeviant);
}
IteratorPtr GenericPropertyToSequenceProxy::generic_erase(Deviant const& aDeviant, IteratorIntf const* aPosition)
{
    views::require(!atEnd(aPosition), "PropertyToSequence: not an end iterator", kSource, __LINE__);
    unset(aDeviant);
    return iterator(true);
}
IteratorPtr GenericPropertyToSequenceProxy::generic_erase(Deviant const& aDeviant, IteratorIntf const* aFirst,
                                                          IteratorIntf const*)
{
    views::require(!atEnd(aFirst), "PropertyToSequence: end iterator", kSource, __LINE__);
    unset(aDeviant);
    return iterator(true);
}
int GenericPropertyToSequenceProxy::generic_removeAll(Deviant const& aDeviant, Ref aValue)
{
    if (!generic_contains(aDeviant, aValue))
        return 0;
    unset(aDeviant);
    return 1;
}

bool GenericPropertyToSequenceProxy::specialized_equal(Deviant const&, SequenceIntf const*, Deviant const&,
                                                       bool&) const
{
    return false;
}
void GenericPropertyToSequenceProxy::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&) {}

GenericPropertyToSequenceIterator::GenericPropertyToSequenceIterator(GenericPropertyToSequenceProxy const* aProxy,
                                                                     bool aAtEnd)
    : fProxy(const_cast<GenericPropertyToSequenceProxy*>(aProxy)), fAtEnd(aAtEnd)
{
}

void* GenericPropertyToSequenceIterator::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericPropertyToSequenceIterator, IteratorIntf>(this, aInfo);
}

Ref GenericPropertyToSequenceIterator::current(Deviant const& aDeviant) const
{
    return fAtEnd ? Ref() : fProxy->value(aDeviant);
}

IteratorPtr GenericPropertyToSequenceIterator::clone() const
{
    return Generic::makeIterator<GenericPropertyToSequenceIterator>(fProxy.get(), fAtEnd);
}

bool GenericPropertyToSequenceIterator::equal(IteratorIntf const* aOther) const
{
    auto const* other = aOther ? static_cast<GenericPropertyToSequenceIterator const*>(aOther->cast(
                                     CooperativeVisitor::internal::classInfo<GenericPropertyToSequenceIterator>()))
                               : nullptr;
    return other && other->fAtEnd == fAtEnd && other->fProxy->fObject.internal_sameObject(fProxy->fObject);
}

} // namespace TAV
