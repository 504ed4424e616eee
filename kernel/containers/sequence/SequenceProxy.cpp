#include <tav/kernel/containers/sequence/SequenceProxy.h>

#include "kernel/containers/sequence/SequenceChecks.h"

#include <tav/kernel/util/Asserter.h>

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/SequenceProxy";
}

SequenceProxy::SequenceProxy()
{
    Asserter::Make<Exception>(numRef() >= 0, "%s", Asserter::sNoMessage).handle(kSource, __LINE__, "");
}

void* SequenceProxy::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<SequenceProxy, SequenceIntf>(this, aInfo);
}

void SequenceProxy::decRef()
{
    if (fCount < 1)
        Generic::countUnderflow();
    if (--fCount == 0)
        delete this;
}

GenericReferenceCountingSequenceProxy::GenericReferenceCountingSequenceProxy(Generic::SequencePtr aWrapped)
    : fWrapped(std::move(aWrapped))
{
}

Generic::SequenceIntf& GenericReferenceCountingSequenceProxy::target() const
{
    if (!fWrapped)
        Generic::checks::nullUnderlying(kSource, __LINE__);
    return *fWrapped;
}

void* GenericReferenceCountingSequenceProxy::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericReferenceCountingSequenceProxy, SequenceProxy>(this, aInfo);
}

Generic::Ref GenericReferenceCountingSequenceProxy::generic_at(Deviant const& aDeviant, int aIndex) const
{
    return target().generic_at(aDeviant, aIndex);
}
Generic::Ref GenericReferenceCountingSequenceProxy::generic_front(Deviant const& aDeviant) const
{
    return target().generic_front(aDeviant);
}
Generic::Ref GenericReferenceCountingSequenceProxy::generic_back(Deviant const& aDeviant) const
{
    return target().generic_back(aDeviant);
}
Generic::IteratorPtr GenericReferenceCountingSequenceProxy::generic_begin(Deviant const& aDeviant) const
{
    return target().generic_begin(aDeviant);
}
Generic::IteratorPtr GenericReferenceCountingSequenceProxy::generic_end(Deviant const& aDeviant) const
{
    return target().generic_end(aDeviant);
}
void GenericReferenceCountingSequenceProxy::generic_clear(Deviant const& aDeviant)
{
    target().generic_clear(aDeviant);
}
int GenericReferenceCountingSequenceProxy::generic_size(Deviant const& aDeviant) const
{
    return target().generic_size(aDeviant);
}
bool GenericReferenceCountingSequenceProxy::generic_empty(Deviant const& aDeviant) const
{
    return target().generic_empty(aDeviant);
}
void GenericReferenceCountingSequenceProxy::generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    target().generic_insert(aDeviant, aIndex, std::move(aValue));
}
Generic::IteratorPtr GenericReferenceCountingSequenceProxy::generic_insert(Deviant const& aDeviant,
                                                                           Generic::IteratorIntf const* aPosition,
                                                                           Generic::Ref aValue)
{
    return target().generic_insert(aDeviant, aPosition, std::move(aValue));
}
Generic::IteratorPtr GenericReferenceCountingSequenceProxy::generic_erase(Deviant const& aDeviant,
                                                                          Generic::IteratorIntf const* aPosition)
{
    return target().generic_erase(aDeviant, aPosition);
}
Generic::IteratorPtr GenericReferenceCountingSequenceProxy::generic_erase(Deviant const& aDeviant,
                                                                          Generic::IteratorIntf const* aFirst,
                                                                          Generic::IteratorIntf const* aLast)
{
    return target().generic_erase(aDeviant, aFirst, aLast);
}
void GenericReferenceCountingSequenceProxy::generic_erase(Deviant const& aDeviant, int aIndex)
{
    target().generic_erase(aDeviant, aIndex);
}
void GenericReferenceCountingSequenceProxy::generic_pop_back(Deviant const& aDeviant)
{
    target().generic_pop_back(aDeviant);
}
void GenericReferenceCountingSequenceProxy::generic_pop_front(Deviant const& aDeviant)
{
    target().generic_pop_front(aDeviant);
}
void GenericReferenceCountingSequenceProxy::generic_push_back(Deviant const& aDeviant, Generic::Ref aValue)
{
    target().generic_push_back(aDeviant, std::move(aValue));
}
void GenericReferenceCountingSequenceProxy::generic_push_front(Deviant const& aDeviant, Generic::Ref aValue)
{
    target().generic_push_front(aDeviant, std::move(aValue));
}
void GenericReferenceCountingSequenceProxy::generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    target().generic_replace(aDeviant, aIndex, std::move(aValue));
}
bool GenericReferenceCountingSequenceProxy::generic_contains(Deviant const& aDeviant, Generic::Ref aValue) const
{
    return target().generic_contains(aDeviant, std::move(aValue));
}
std::string GenericReferenceCountingSequenceProxy::generic_getKestName(bool aImmutable, bool aIterator,
                                                                       char const* aPrefix) const
{
    return target().generic_getKestName(aImmutable, aIterator, aPrefix);
}
int GenericReferenceCountingSequenceProxy::generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue)
{
    return target().generic_removeAll(aDeviant, std::move(aValue));
}

} // namespace TAV
