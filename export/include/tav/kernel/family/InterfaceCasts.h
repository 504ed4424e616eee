#pragma once

#include <type_traits>

namespace TAV::NSInterface {
class ObjectIntf;
}

namespace TAV::family {

// The direct bases of a generated interface, in declaration order. Every interface
// names its own as `BaseInterfaces`; the hand-written root has none.
template <class... B>
struct Bases {};

namespace detail {

template <class T, class Like>
using SameConst = std::conditional_t<std::is_const_v<Like>, T const, T>;

template <class I>
concept HasBases = requires { typename I::BaseInterfaces; };

template <class A, class I>
constexpr bool reaches()
{
    return std::is_same_v<A, I> || std::is_base_of_v<A, I>;
}

} // namespace detail

template <class A, class I>
detail::SameConst<A, I>* upcast(I* aObject);

namespace detail {

template <class A, class I, class B0, class... Bs>
detail::SameConst<A, I>* upcastVia(I* aObject, Bases<B0, Bs...>)
{
    if constexpr (reaches<A, B0>())
        return family::upcast<A>(static_cast<SameConst<B0, I>*>(aObject));
    else
        return upcastVia<A>(aObject, Bases<Bs...>{});
}

} // namespace detail

// `aObject` as its sub-object of interface A, reached along the first base that leads
// there at each step: with several bases, A may be in the object more than once, and
// this picks the copy every generated table and stored pointer agrees on.
template <class A, class I>
detail::SameConst<A, I>* upcast(I* aObject)
{
    using Plain = std::remove_const_t<I>;
    if constexpr (std::is_same_v<Plain, A>)
        return aObject;
    else if constexpr (detail::HasBases<Plain>)
        return detail::upcastVia<A>(aObject, typename Plain::BaseInterfaces{});
    else
        return static_cast<detail::SameConst<A, I>*>(aObject);
}

// The canonical ObjectIntf of an interface: reached through first bases only.
template <class I>
auto canonical(I* aObject)
{
    return upcast<NSInterface::ObjectIntf>(aObject);
}

template <class B0, class... Bs>
B0 firstOf(Bases<B0, Bs...>);

// Back from the canonical ObjectIntf to interface I, down the first-base chain.
template <class I, class O>
detail::SameConst<I, O>* fromCanonical(O* aObject)
{
    using Plain = std::remove_const_t<I>;
    if constexpr (std::is_same_v<Plain, NSInterface::ObjectIntf>)
        return aObject;
    else {
        using First = decltype(firstOf(typename Plain::BaseInterfaces{}));
        return static_cast<detail::SameConst<I, O>*>(fromCanonical<First>(aObject));
    }
}

} // namespace TAV::family
