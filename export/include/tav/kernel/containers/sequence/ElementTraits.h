#pragma once

// How a typed sequence turns its element type into the untyped Ref and back:
// object handles travel as their counted object, values as a counted copy.

#include <tav/kernel/family/HandleBase.h>
#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/kernel/util/Ref.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace TAV {

namespace Generic {

template <class T>
concept ObjectElement = std::is_base_of_v<HandleBase, T>;

// The object's ClassObject sub-object, or null when it has none.
TAV_EXPORT NSInterface::ClassObjectIntf* asClassObject(ReferenceCountingIntf* aObject);
TAV_EXPORT ReferenceCountingIntf* asCounted(NSInterface::ClassObjectIntf const* aObject);

// "TAV.SequenceOfImmutableNamedElement" and its kin, from the element's name.
TAV_EXPORT std::string hostName(bool aImmutable, bool aIterator, char const* aPrefix, std::string_view aElement);

namespace detail {
template <class T>
constexpr std::string_view rawTypeName()
{
    std::string_view name = __PRETTY_FUNCTION__;
    name.remove_prefix(name.find("T = ") + 4);
    return name.substr(0, name.find_first_of(";]"));
}
} // namespace detail

// The unqualified name of T without "Immutable", known at compile time and
// without run-time type information.
template <class T>
constexpr std::string_view elementName()
{
    std::string_view name = detail::rawTypeName<T>();
    name.remove_prefix(name.rfind("::") == std::string_view::npos ? 0 : name.rfind("::") + 2);
    if (name.starts_with("Immutable"))
        name.remove_prefix(9);
    return name;
}

template <class T>
struct ElementTraits {
    using Immutable = T;
    static Ref toRef(T const& aValue, Deviant) { return Ref::fromValue(aValue); }
    static T fromRef(Ref const& aRef) { return aRef.value<T>(); }
};

namespace detail {
// The generated interfaces answer `This` with their immutable handle.
template <class Intf>
using ImmutableOf = decltype(std::declval<Intf const&>().This(Deviant()));
} // namespace detail

template <ObjectElement T>
struct ElementTraits<T> {
    using Intf = std::remove_pointer_t<decltype(std::declval<T const&>().internal_intf())>;
    using Immutable = detail::ImmutableOf<Intf>;

    // The payload is the object's ClassObject sub-object, as the storage hands
    // it out, so that refs to one object compare equal whatever made them.
    static Ref toRef(T const& aHandle, Deviant)
    {
        ReferenceCountingIntf* const object = aHandle.internal_counted();
        return Ref(object ? asCounted(asClassObject(object)) : nullptr, aHandle.getDeviant());
    }
    static T fromRef(Ref const& aRef)
    {
        ReferenceCountingIntf* const object = aRef.object();
        if (!object)
            return T();
        return T(static_cast<Intf*>(object->cast(CooperativeVisitor::internal::classInfo<Intf>())), aRef.deviant);
    }
    // The cast function of the untyped storage: null for anything but a T.
    static NSInterface::ClassObjectIntf* cast(Ref const& aRef)
    {
        ReferenceCountingIntf* const object = aRef.object();
        if (!object || !object->cast(CooperativeVisitor::internal::classInfo<Intf>()))
            return nullptr;
        return asClassObject(object);
    }
};

} // namespace Generic
} // namespace TAV
