#include <tav/kernel/containers/sequence/ListQImpl.h>

#include "kernel/containers/sequence/SequenceChecks.h"

#include <tav/TAV/String.h>

#include <algorithm>

namespace TAV::ListQImplInternal {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/list/ListQImplForPrimitives";
} // namespace

template <class T>
class ListQImplForPrimitives<T>::Iterator : public Generic::IteratorIntf {
public:
    explicit Iterator(T const* aPosition) : fPosition(aPosition) {}

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override
    {
        return Generic::familyCast<Iterator, IteratorIntf>(this, aInfo);
    }
    Generic::Ref current(Deviant const&) const override { return Generic::Ref::fromValue(*fPosition); }
    void next(Deviant const&) override { ++fPosition; }
    void previous(Deviant const&) override { --fPosition; }
    Generic::IteratorPtr clone() const override { return Generic::makeIterator<Iterator>(fPosition); }
    bool equal(IteratorIntf const* aOther) const override
    {
        return fPosition == static_cast<Iterator const*>(aOther)->fPosition;
    }

    T const* fPosition;
};

template <class T>
void* ListQImplForPrimitives<T>::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<ListQImplForPrimitives, SequenceIntf>(this, aInfo);
}

// A value list trusts a value's type: the typed handle puts in only T.
template <class T>
T const& ListQImplForPrimitives<T>::valueOrFail(Generic::Ref const& aValue) const
{
    if (!aValue.payload || !aValue.isValue())
        Generic::checks::nullElement(this->generic_getKestName(true, false, nullptr).c_str(), kSource, __LINE__);
    return aValue.value<T>();
}

template <class T>
std::size_t ListQImplForPrimitives<T>::offsetOf(Generic::IteratorIntf const* aPosition, bool aInsertion) const
{
    auto const* it = aPosition ? static_cast<Iterator const*>(aPosition->cast(
                                     CooperativeVisitor::internal::classInfo<Iterator>()))
                               : nullptr;
    if (!it)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    std::ptrdiff_t const offset = it->fPosition - fElements.constPointer();
    Generic::checks::index(static_cast<int>(offset), static_cast<int>(fElements.size()), aInsertion, kSource,
                           __LINE__);
    return static_cast<std::size_t>(offset);
}

template <class T>
Generic::Ref ListQImplForPrimitives<T>::generic_at(Deviant const& aDeviant, int aIndex) const
{
    Generic::checks::index(aIndex, generic_size(aDeviant), false, kSource, __LINE__);
    // The container's own check stands behind it, for an int size that overflowed.
    return Generic::Ref::fromValue(fElements.constData().at(static_cast<std::size_t>(aIndex)));
}

template <class T>
Generic::Ref ListQImplForPrimitives<T>::generic_front(Deviant const& aDeviant) const
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    return Generic::Ref::fromValue(fElements.front());
}

template <class T>
Generic::Ref ListQImplForPrimitives<T>::generic_back(Deviant const& aDeviant) const
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    return Generic::Ref::fromValue(fElements.back());
}

template <class T>
Generic::IteratorPtr ListQImplForPrimitives<T>::generic_begin(Deviant const&) const
{
    return Generic::makeIterator<Iterator>(fElements.constPointer());
}

template <class T>
Generic::IteratorPtr ListQImplForPrimitives<T>::generic_end(Deviant const&) const
{
    return Generic::makeIterator<Iterator>(fElements.constPointer() + fElements.size());
}

template <class T>
void ListQImplForPrimitives<T>::generic_clear(Deviant const&)
{
    fElements.clear();
}

template <class T>
int ListQImplForPrimitives<T>::generic_size(Deviant const&) const
{
    return static_cast<int>(fElements.size());
}

template <class T>
void ListQImplForPrimitives<T>::generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    Generic::checks::index(aIndex, generic_size(aDeviant), true, kSource, __LINE__);
    fElements.insert(static_cast<std::size_t>(aIndex), valueOrFail(aValue));
}

template <class T>
Generic::IteratorPtr ListQImplForPrimitives<T>::generic_insert(Deviant const&, Generic::IteratorIntf const* aPosition,
                                                               Generic::Ref aValue)
{
    std::size_t const offset = offsetOf(aPosition, true);
    fElements.insert(offset, valueOrFail(aValue));
    return Generic::makeIterator<Iterator>(fElements.constPointer() + offset);
}

template <class T>
Generic::IteratorPtr ListQImplForPrimitives<T>::generic_erase(Deviant const&, Generic::IteratorIntf const* aPosition)
{
    std::size_t const offset = offsetOf(aPosition, false);
    fElements.erase(offset, offset + 1);
    return Generic::makeIterator<Iterator>(fElements.constPointer() + offset);
}

template <class T>
Generic::IteratorPtr ListQImplForPrimitives<T>::generic_erase(Deviant const&, Generic::IteratorIntf const* aFirst,
                                                              Generic::IteratorIntf const* aLast)
{
    std::size_t const first = offsetOf(aFirst, true);
    std::size_t const last = offsetOf(aLast, true);
    if (last < first)
        Generic::checks::indexOutOfBounds(kSource, __LINE__);
    if (first != last)
        fElements.erase(first, last);
    return Generic::makeIterator<Iterator>(fElements.constPointer() + first);
}

template <class T>
void ListQImplForPrimitives<T>::generic_erase(Deviant const& aDeviant, int aIndex)
{
    Generic::checks::index(aIndex, generic_size(aDeviant), false, kSource, __LINE__);
    fElements.erase(static_cast<std::size_t>(aIndex), static_cast<std::size_t>(aIndex) + 1);
}

template <class T>
void ListQImplForPrimitives<T>::generic_pop_back(Deviant const& aDeviant)
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    fElements.pop_back();
}

template <class T>
void ListQImplForPrimitives<T>::generic_pop_front(Deviant const& aDeviant)
{
    Generic::checks::notEmpty(generic_size(aDeviant), kSource, __LINE__);
    fElements.erase(0, 1);
}

template <class T>
void ListQImplForPrimitives<T>::generic_push_back(Deviant const&, Generic::Ref aValue)
{
    fElements.push_back(valueOrFail(aValue));
}

template <class T>
void ListQImplForPrimitives<T>::generic_push_front(Deviant const&, Generic::Ref aValue)
{
    fElements.push_front(valueOrFail(aValue));
}

template <class T>
void ListQImplForPrimitives<T>::generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue)
{
    Generic::checks::index(aIndex, generic_size(aDeviant), false, kSource, __LINE__);
    fElements.set(static_cast<std::size_t>(aIndex), valueOrFail(aValue));
}

template <class T>
bool ListQImplForPrimitives<T>::generic_contains(Deviant const&, Generic::Ref aValue) const
{
    if (!aValue.payload || !aValue.isValue())
        return false;
    return std::find(fElements.begin(), fElements.end(), aValue.value<T>()) != fElements.end();
}

template <class T>
int ListQImplForPrimitives<T>::generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue)
{
    if (!aValue.payload || !aValue.isValue())
        return 0;
    T const& value = aValue.value<T>();
    int removed = 0;
    for (T const* p = fElements.constPointer(); p != fElements.constPointer() + fElements.size();) {
        if (!(*p == value)) {
            ++p;
            continue;
        }
        Iterator const at(p);
        Generic::IteratorPtr const next = this->generic_erase(aDeviant, &at);
        p = static_cast<Iterator const*>(next.get())->fPosition;
        ++removed;
    }
    return removed;
}

template <class T>
bool ListQImplForPrimitives<T>::specialized_equal(Deviant const&, Generic::SequenceIntf const* aOther,
                                                  Deviant const&, bool& aHandled) const
{
    auto const* other = static_cast<ListQImplForPrimitives const*>(
        aOther->cast(CooperativeVisitor::internal::classInfo<ListQImplForPrimitives>()));
    if (!other)
        return false;
    aHandled = true;
    return fElements.sharesWith(other->fElements) || fElements.constData() == other->fElements.constData();
}

template <class T>
void ListQImplForPrimitives<T>::specialized_assign(Deviant const&, Generic::SequenceIntf const* aOther,
                                                   Deviant const&, bool& aHandled)
{
    auto const* other = static_cast<ListQImplForPrimitives const*>(
        aOther->cast(CooperativeVisitor::internal::classInfo<ListQImplForPrimitives>()));
    if (!other)
        return;
    aHandled = true;
    fElements.clear();
    fElements.share(other->fElements);
}

template class ListQImplForPrimitives<String>;

} // namespace TAV::ListQImplInternal
