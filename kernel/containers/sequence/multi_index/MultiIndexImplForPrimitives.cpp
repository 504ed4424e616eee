#include <tav/kernel/containers/sequence/MultiIndexImpl.h>

#include <tav/TAV/ExternalToolInfo.h>
#include <tav/TAV/String.h>

namespace TAV::MultiIndexImplInternal {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/multi_index/MultiIndexImplForPrimitives";

template <class T>
void retainElement(T const&)
{
}
template <class T>
void releaseElement(T const&)
{
}
template <class T>
Generic::Ref toRef(T const& aElement, Deviant)
{
    return Generic::Ref::fromValue(aElement);
}
} // namespace

} // namespace TAV::MultiIndexImplInternal

#define TAV_MI_TEMPLATE template <class T, bool aIsUnique, class Key>
#define TAV_MI_CLASS MultiIndexImplForPrimitives<T, aIsUnique, Key>
#define TAV_MI_NAME MultiIndexImplForPrimitives
#include "kernel/containers/sequence/multi_index/MultiIndexBody.inc"

namespace TAV::MultiIndexImplInternal {

// A value index trusts a value's type: the typed handle puts in only T.
template <class T, bool aIsUnique, class Key>
T const& MultiIndexImplForPrimitives<T, aIsUnique, Key>::castOrFail(Generic::Ref const& aValue) const
{
    if (!aValue.payload || !aValue.isValue())
        Generic::checks::nullElement(this->generic_getKestName(true, false, nullptr).c_str(), kSource, __LINE__);
    return aValue.value<T>();
}

template <class T, bool aIsUnique, class Key>
std::optional<T> MultiIndexImplForPrimitives<T, aIsUnique, Key>::keyOf(Generic::Ref const& aValue) const
{
    if (!aValue.payload || !aValue.isValue())
        return std::nullopt;
    return aValue.value<T>();
}

template class MultiIndexImplForPrimitives<String, true>;
template class MultiIndexImplForPrimitives<String, false>;
template class MultiIndexImplForPrimitives<ExternalToolInfo, true>;

} // namespace TAV::MultiIndexImplInternal
