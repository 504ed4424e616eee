#include <tav/kernel/containers/sequence/MultiIndexImpl.h>

#include <tav/TAV/NSInterface/ClassObjectIntf.h>

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
    Element const element = fCast(aValue);
    if (!element)
        Generic::checks::nullElement(generic_getKestName(true, false, nullptr).c_str(), kSource, __LINE__);
    return element;
}

template <bool aIsUnique, class Key>
std::optional<typename MultiIndexImplForRefs<aIsUnique, Key>::Element>
MultiIndexImplForRefs<aIsUnique, Key>::keyOf(Generic::Ref const& aValue) const
{
    if (Element const element = fCast(aValue))
        return element;
    return std::nullopt;
}

template class MultiIndexImplForRefs<true>;
template class MultiIndexImplForRefs<false>;

} // namespace TAV::MultiIndexImplInternal
