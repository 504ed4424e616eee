#pragma once

#include <tav/Export.h>

#include <concepts>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace BRIX {

// A value of any copyable type. Type tests compare type_info names, with a
// leading '*' skipped, instead of type_info identity: domain libraries loaded
// with local symbols carry their own copy of the same type_info.
class TAV_EXPORT bad_any_cast : public std::bad_cast {
public:
    char const* what() const noexcept override;
};

// Equal when both name the same type, wherever each type_info was emitted.
TAV_EXPORT bool sameType(std::type_info const& a, std::type_info const& b) noexcept;

class any {
public:
    any() noexcept = default;
    template <class T, class V = std::decay_t<T>>
        requires(!std::is_same_v<V, any>)
    any(T&& value) : fHolder(std::make_unique<Holder<V>>(std::forward<T>(value)))
    {
    }
    any(any const& other) : fHolder(other.fHolder ? other.fHolder->clone() : nullptr) {}
    any(any&&) noexcept = default;
    any& operator=(any const& other)
    {
        any(other).swap(*this);
        return *this;
    }
    any& operator=(any&&) noexcept = default;
    ~any() = default;

    bool empty() const noexcept { return !fHolder; }
    void clear() noexcept { fHolder.reset(); }
    void swap(any& other) noexcept { fHolder.swap(other.fHolder); }
    std::type_info const& type() const noexcept { return fHolder ? fHolder->type() : typeid(void); }

    // Whether the held type has == and <, so that two values of it compare
    // as what they are rather than by their text.
    bool isOrdered() const noexcept { return fHolder && fHolder->isOrdered(); }
    // For two values of one ordered type; false otherwise.
    bool isEqualTo(any const& other) const { return sameHeldType(other) && fHolder->isEqualTo(*other.fHolder); }
    bool isLessThan(any const& other) const { return sameHeldType(other) && fHolder->isLessThan(*other.fHolder); }

    template <class T>
    T const* get() const noexcept
    {
        return fHolder && sameType(fHolder->type(), typeid(T)) ? &static_cast<Holder<T> const*>(fHolder.get())->fValue
                                                                : nullptr;
    }
    template <class T>
    T* get() noexcept
    {
        return const_cast<T*>(std::as_const(*this).get<T>());
    }

private:
    template <class T>
    static constexpr bool kOrdered = requires(T const& a, T const& b) {
        { a == b } -> std::convertible_to<bool>;
        { a < b } -> std::convertible_to<bool>;
    };

    struct HolderBase {
        virtual ~HolderBase() = default;
        virtual std::type_info const& type() const noexcept = 0;
        virtual std::unique_ptr<HolderBase> clone() const = 0;
        virtual bool isOrdered() const noexcept = 0;
        // Only for another holder of the same type.
        virtual bool isEqualTo(HolderBase const& other) const = 0;
        virtual bool isLessThan(HolderBase const& other) const = 0;
    };
    template <class T>
    struct Holder final : HolderBase {
        template <class U>
        explicit Holder(U&& value) : fValue(std::forward<U>(value))
        {
        }
        std::type_info const& type() const noexcept override { return typeid(T); }
        std::unique_ptr<HolderBase> clone() const override { return std::make_unique<Holder>(fValue); }
        bool isOrdered() const noexcept override { return kOrdered<T>; }
        bool isEqualTo(HolderBase const& other) const override
        {
            if constexpr (kOrdered<T>)
                return static_cast<bool>(fValue == static_cast<Holder const&>(other).fValue);
            return false;
        }
        bool isLessThan(HolderBase const& other) const override
        {
            if constexpr (kOrdered<T>)
                return static_cast<bool>(fValue < static_cast<Holder const&>(other).fValue);
            return false;
        }
        T fValue;
    };

    bool sameHeldType(any const& other) const noexcept
    {
        return isOrdered() && other.fHolder && sameType(fHolder->type(), other.fHolder->type());
    }

    std::unique_ptr<HolderBase> fHolder;
};

// Null when `a` is null or holds another type.
template <class T>
T const* any_cast(any const* a) noexcept
{
    return a ? a->get<T>() : nullptr;
}
template <class T>
T* any_cast(any* a) noexcept
{
    return a ? a->get<T>() : nullptr;
}

// bad_any_cast when `a` holds another type or nothing.
template <class T>
T any_cast(any const& a)
{
    using V = std::remove_cvref_t<T>;
    V const* value = a.get<V>();
    if (!value)
        throw bad_any_cast();
    return *value;
}

} // namespace BRIX
