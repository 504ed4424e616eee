#pragma once

// The predicate of a filtered view: which elements of the underlying sequence
// the view shows, and which values it takes in.

#include <tav/kernel/containers/sequence/ElementTraits.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace TAV::filtered_sequence_internal {

class TAV_EXPORT GenericFilter {
public:
    // aCoversAll: every element the underlying sequence can hold passes, so a
    // view may forward a clear or a count instead of walking.
    explicit GenericFilter(bool aCoversAll) : fCoversAll(aCoversAll) {}
    virtual ~GenericFilter();

    virtual bool accepts(Generic::Ref const& aValue) const = 0;
    // Raises "insertion not supported by filtered sequence" for a view that takes no insertions.
    virtual void checkInsertion() const;
    virtual std::unique_ptr<GenericFilter> clone() const = 0;
    // The element name of the view's host type; empty keeps the underlying one.
    virtual std::string_view elementName() const { return {}; }

    bool acceptsAll() const { return fCoversAll; }

protected:
    [[noreturn]] static void insertionNotSupported();

private:
    bool fCoversAll;
};

// Shows every element.
class TAV_EXPORT AcceptAllFilter final : public GenericFilter {
public:
    AcceptAllFilter() : GenericFilter(true) {}
    bool accepts(Generic::Ref const&) const override { return true; }
    std::unique_ptr<GenericFilter> clone() const override { return std::make_unique<AcceptAllFilter>(*this); }
};

// Shows the elements whose run-time class is U, by the cooperative cast.
// Values are trusted to be of the sequence's type, so a value filter passes
// every value. A read-only filter refuses insertions.
template <class U, bool Insertable = true>
class TypeFilter final : public GenericFilter {
public:
    explicit TypeFilter(bool aCoversAll = !Generic::ObjectElement<U>) : GenericFilter(aCoversAll) {}

    bool accepts(Generic::Ref const& aValue) const override
    {
        if constexpr (Generic::ObjectElement<U>)
            return Generic::ElementTraits<U>::cast(aValue) != nullptr;
        else
            return aValue.isValue();
    }
    void checkInsertion() const override
    {
        if constexpr (!Insertable)
            insertionNotSupported();
    }
    std::unique_ptr<GenericFilter> clone() const override { return std::make_unique<TypeFilter>(*this); }
    std::string_view elementName() const override { return Generic::elementName<U>(); }
};

// True when every element of a sequence of T is a U, so U's filter need not test them.
template <class T, class U>
constexpr bool coversAll()
{
    if constexpr (Generic::ObjectElement<T> && Generic::ObjectElement<U>)
        return std::is_base_of_v<typename Generic::ElementTraits<U>::Intf, typename Generic::ElementTraits<T>::Intf>;
    else
        return std::is_same_v<T, U>;
}

template <class T, class U, bool Insertable = true>
TypeFilter<U, Insertable> filterFor()
{
    return TypeFilter<U, Insertable>(coversAll<T, U>());
}

} // namespace TAV::filtered_sequence_internal
