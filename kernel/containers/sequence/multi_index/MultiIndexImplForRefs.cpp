#include <tav/kernel/containers/sequence/MultiIndexImpl.h>

#include <tav/TAV/NSInterface/ClassObjectIntf.h>

#include <iterator>

namespace TAV::MultiIndexImplInternal {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/multi_index/MultiIndexImplForRefs";

using Element = NSInterface::ClassObjectIntf const*;

void retainElement(Element aElement)
{
    const_cast<NSInterface::ClassObjectIntf*>(aElement)->incRef();
}
void releaseElement(Element aElement)
{
    const_cast<NSInterface::ClassObjectIntf*>(aElement)->decRef();
}
Generic::Ref toRef(Element aElement, Deviant aDeviant)
{
    return Generic::Ref(Generic::asCounted(aElement), aDeviant);
}
} // namespace

} // namespace TAV::MultiIndexImplInternal

#define TAV_MI_TEMPLATE template <bool aIsUnique, class Key>
#define TAV_MI_CLASS MultiIndexImplForRefs<aIsUnique, Key>
#define TAV_MI_NAME MultiIndexImplForRefs
#include "kernel/containers/sequence/multi_index/MultiIndexBody.inc"

namespace TAV::MultiIndexImplInternal {

template <bool aIsUnique, class Key>
typename MultiIndexImplForRefs<aIsUnique, Key>::Element
MultiIndexImplForRefs<aIsUnique, Key>::castOrFail(Generic::Ref const& aValue) const
{
    Element const element = castElement(aValue);
    if (!element)
        Generic::checks::nullElement(generic_getKestName(true, false, nullptr).c_str(), kSource, __LINE__);
    return element;
}

template <bool aIsUnique, class Key>
std::optional<typename MultiIndexImplForRefs<aIsUnique, Key>::Element>
MultiIndexImplForRefs<aIsUnique, Key>::keyOf(Generic::Ref const& aValue) const
{
    if (Element const element = castElement(aValue))
        return element;
    return std::nullopt;
}

template <bool aIsUnique, class Key>
bool MultiIndexImplForRefs<aIsUnique, Key>::rawAdd(Element aElement)
{
    if (!container().sequence().push_back(aElement).second)
        return false;
    retainElement(aElement);
    return true;
}

template <bool aIsUnique, class Key>
bool MultiIndexImplForRefs<aIsUnique, Key>::rawRemove(Element aElement)
{
    if (!fContainer)
        return false;
    auto& values = fContainer->values();
    auto const [first, last] = values.equal_range(aElement);
    auto const removed = std::distance(first, last);
    values.erase(first, last);
    // Released after the nodes are gone: the last count may free an object whose
    // state holds this very list.
    for (auto i = removed; i > 0; --i)
        releaseElement(aElement);
    return removed != 0;
}

template <bool aIsUnique, class Key>
bool MultiIndexImplForRefs<aIsUnique, Key>::rawContains(Element aElement) const
{
    return fContainer && fContainer->values().count(aElement) != 0;
}

template class MultiIndexImplForRefs<true>;
template class MultiIndexImplForRefs<false>;

} // namespace TAV::MultiIndexImplInternal
