#include <tav/kernel/containers/sequence/ListQImpl.h>

#include "kernel/containers/sequence/SequenceChecks.h"

#include <tav/TAV/NSInterface/ClassObjectIntf.h>

#include <algorithm>
#include <cstring>

namespace TAV::ListQImplInternal {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/list/ListQImplForRefs";

using Element = ListQImplForRefs::Element;

void retain(Element aElement)
{
    aElement->incRef();
}
void release(Element aElement)
{
    aElement->decRef();
}
} // namespace

class ListQImplForRefs::Iterator : public Generic::IteratorIntf {
public:
    explicit Iterator(Element const* aPosition) : fPosition(aPosition) {}

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override
    {
        return Generic::familyCast<Iterator, IteratorIntf>(this, aInfo);
    }
    Generic::Ref current(Deviant const& aDeviant) const override { return Generic::Ref(*fPosition, aDeviant); }
    void next(Deviant const&) override { ++fPosition; }
    void previous(Deviant const&) override { --fPosition; }
    Generic::IteratorPtr clone() const override { return Generic::makeIterator<Iterator>(fPosition); }
    bool equal(IteratorIntf const* aOther) const override
    {
        return fPosition == static_cast<Iterator const*>(aOther)->fPosition;
    }

    Element const* fPosition;
};

ListQImplForRefs::~ListQImplForRefs()
{
    for (Element element : fElements)
        release(element);
}

void* ListQImplForRefs::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<ListQImplForRefs, SequenceIntf>(this, aInfo);
}

ListQImplForRefs::Element ListQImplForRefs::castOrFail(Generic::Ref const& aValue) const
{
    Element const element = fCast(aValue);
    if (!element)
        Generic::checks::nullElement(generic_getKestName(true, false, nullptr).c_str(), kSource, __LINE__);
    return element;
}

// Positions travel as offsets, so that a position taken before a detach
// still names the same place afterwards.
std::size_t ListQImplForRefs::offsetOf(Generic::IteratorIntf const* aPosition, bool aInsertion) const
{
    auto const* it = aPosition ? static_cast<Iterator const*>(aPosition->cast(
                                     CooperativeVisitor::internal::classInfo<Iterator>()))
                               : nullptr;
    if (!it)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    std::ptrdiff_t const offset = it->fPosition - fElements.constPointer();
    Generic::checks::index(static_cast<int>(offset), generic_size(Deviant()), aInsertion, kSource, __LINE__);
    return static_cast<std::size_t>(offset);
}

Generic::Ref ListQImplForRefs::generic_at(Deviant const& aDeviant, int aIndex) const
{
    Generic::checks::index(aIndex, generic_size(aDeviant), false, kSource, __LINE__);
    return Generic::Ref(fElements[static_cast<std::size_t>(aIndex)], aDeviant);
}

Generic::Ref ListQImplForRefs::generic_front(Deviant const& aDeviant) const
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    return Generic::Ref(fElements.front(), aDeviant);
}

Generic::Ref ListQImplForRefs::generic_back(Deviant const& aDeviant) const
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    return Generic::Ref(fElements.back(), aDeviant);
}

Generic::IteratorPtr ListQImplForRefs::generic_begin(Deviant const&) const
{
    return Generic::makeIterator<Iterator>(fElements.constPointer());
}

Generic::IteratorPtr ListQImplForRefs::generic_end(Deviant const&) const
{
    return Generic::makeIterator<Iterator>(fElements.constPointer() + fElements.size());
}

void ListQImplForRefs::generic_clear(Deviant const&)
{
    for (Element element : fElements)
        release(element);
    fElements.clear();
}

int ListQImplForRefs::generic_size(Deviant const&) const
{
    return static_cast<int>(fElements.size());
}

void ListQImplForRefs::generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    Generic::checks::index(aIndex, generic_size(aDeviant), true, kSource, __LINE__);
    Element const element = castOrFail(aValue);
    retain(element);
    fElements.insert(static_cast<std::size_t>(aIndex), element);
}

Generic::IteratorPtr ListQImplForRefs::generic_insert(Deviant const&, Generic::IteratorIntf const* aPosition,
                                                      Generic::Ref aValue)
{
    std::size_t const offset = offsetOf(aPosition, true);
    Element const element = castOrFail(aValue);
    retain(element);
    fElements.insert(offset, element);
    return Generic::makeIterator<Iterator>(fElements.constPointer() + offset);
}

Generic::IteratorPtr ListQImplForRefs::generic_erase(Deviant const&, Generic::IteratorIntf const* aPosition)
{
    std::size_t const offset = offsetOf(aPosition, false);
    release(fElements[offset]);
    fElements.erase(offset, offset + 1);
    return Generic::makeIterator<Iterator>(fElements.constPointer() + offset);
}

Generic::IteratorPtr ListQImplForRefs::generic_erase(Deviant const&, Generic::IteratorIntf const* aFirst,
                                                     Generic::IteratorIntf const* aLast)
{
    std::size_t const first = offsetOf(aFirst, true);
    std::size_t const last = offsetOf(aLast, true);
    if (last < first)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    for (std::size_t i = first; i < last; ++i)
        release(fElements[i]);
    if (first != last)
        fElements.erase(first, last);
    return Generic::makeIterator<Iterator>(fElements.constPointer() + first);
}

void ListQImplForRefs::generic_erase(Deviant const& aDeviant, int aIndex)
{
    Generic::checks::index(aIndex, generic_size(aDeviant), false, kSource, __LINE__);
    auto const offset = static_cast<std::size_t>(aIndex);
    release(fElements[offset]);
    fElements.erase(offset, offset + 1);
}

void ListQImplForRefs::generic_pop_back(Deviant const& aDeviant)
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    release(fElements.back());
    fElements.pop_back();
}

void ListQImplForRefs::generic_pop_front(Deviant const& aDeviant)
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    release(fElements.front());
    fElements.erase(0, 1);
}

void ListQImplForRefs::generic_push_back(Deviant const&, Generic::Ref aValue)
{
    Element const element = castOrFail(aValue);
    retain(element);
    fElements.push_back(element);
}

void ListQImplForRefs::generic_push_front(Deviant const&, Generic::Ref aValue)
{
    Element const element = castOrFail(aValue);
    retain(element);
    fElements.push_front(element);
}

// The slot's old element keeps the count this list took on it; the new one
// gets a count of its own, so that releasing it later frees nothing in use.
void ListQImplForRefs::generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    Generic::checks::index(aIndex, generic_size(aDeviant), false, kSource, __LINE__);
    Element const element = castOrFail(aValue);
    retain(element);
    fElements.set(static_cast<std::size_t>(aIndex), element);
}

bool ListQImplForRefs::generic_contains(Deviant const&, Generic::Ref aValue) const
{
    Element const element = fCast(aValue);
    return element && std::find(fElements.begin(), fElements.end(), element) != fElements.end();
}

int ListQImplForRefs::generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue)
{
    Element const element = fCast(aValue);
    if (!element)
        return 0;
    int removed = 0;
    for (Element const* p = fElements.constPointer(); p != fElements.constPointer() + fElements.size();) {
        if (*p != element) {
            ++p;
            continue;
        }
        Iterator const at(p);
        Generic::IteratorPtr const next = generic_erase(aDeviant, &at);
        p = static_cast<Iterator const*>(next.get())->fPosition;
        ++removed;
    }
    return removed;
}

bool ListQImplForRefs::specialized_equal(Deviant const&, Generic::SequenceIntf const* aOther, Deviant const&,
                                         bool& aHandled) const
{
    auto const* other = static_cast<ListQImplForRefs const*>(
        aOther->cast(CooperativeVisitor::internal::classInfo<ListQImplForRefs>()));
    if (!other)
        return false;
    aHandled = true;
    if (fElements.sharesWith(other->fElements))
        return true;
    if (fElements.size() != other->fElements.size())
        return false;
    return fElements.empty() ||
           std::memcmp(fElements.constPointer(), other->fElements.constPointer(),
                       fElements.size() * sizeof(Element)) == 0;
}

void ListQImplForRefs::specialized_assign(Deviant const& aDeviant, Generic::SequenceIntf const* aOther,
                                          Deviant const&, bool& aHandled)
{
    auto const* other = static_cast<ListQImplForRefs const*>(
        aOther->cast(CooperativeVisitor::internal::classInfo<ListQImplForRefs>()));
    if (!other)
        return;
    aHandled = true;
    generic_clear(aDeviant);
    fElements.share(other->fElements);
    for (Element element : fElements)
        retain(element);
}

} // namespace TAV::ListQImplInternal

namespace TAV::Generic {

NSInterface::ClassObjectIntf* asClassObject(ReferenceCountingIntf* aObject)
{
    return static_cast<NSInterface::ClassObjectIntf*>(
        aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ClassObjectIntf>()));
}

ReferenceCountingIntf* asCounted(NSInterface::ClassObjectIntf const* aObject)
{
    return const_cast<NSInterface::ClassObjectIntf*>(aObject);
}

} // namespace TAV::Generic
