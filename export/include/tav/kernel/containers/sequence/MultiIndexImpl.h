#pragma once

// Storage with two indices over one set of nodes: the sequence's order and
// the elements' values, unique or not. Positions are nodes, valid until their
// own element is erased. The container is made at first need and kept out of
// this header.

#include <tav/TAV/ExternalToolInfo.h>
#include <tav/TAV/String.h>
#include <tav/kernel/containers/sequence/ElementTraits.h>
#include <tav/kernel/containers/sequence/SequenceIntf.h>

#include <optional>

namespace TAV {

namespace Generic {
// The key of the value index: the element itself.
template <class T>
struct TAV_EXPORT identity {};
} // namespace Generic

namespace MultiIndexImplInternal {

// The one body of every multi-index of references, per uniqueness: raw
// interface pointers ordered by address, one count per stored occurrence.
// Two words and a vtable: the element's class is checked by the typed
// subclass's castElement, so no cast function is stored per list.
template <bool aIsUnique, class Key = Generic::identity<NSInterface::ClassObjectIntf const*>>
class TAV_EXPORT MultiIndexImplForRefs : public Generic::SequenceIntf {
public:
    using Element = NSInterface::ClassObjectIntf const*;
    struct Container;
    class Iterator;

    MultiIndexImplForRefs() = default;
    // A copy holds its own count on each element, as the original does.
    MultiIndexImplForRefs(MultiIndexImplForRefs const& aOther);
    MultiIndexImplForRefs& operator=(MultiIndexImplForRefs const& aOther);
    ~MultiIndexImplForRefs() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS

    // For association upkeep, which writes the far end directly: no Ref, no
    // virtual call. Add appends (a unique index refuses a duplicate), remove
    // takes every occurrence; both say whether the content changed.
    bool rawAdd(Element aElement);
    bool rawRemove(Element aElement);
    bool rawContains(Element aElement) const;

    // Whether the container has been made, for tests of the empty form.
    bool internal_hasContainer() const { return fContainer != nullptr; }

protected:
    // The element's ClassObject if it is of the typed subclass's class, else null.
    virtual NSInterface::ClassObjectIntf* castElement(Generic::Ref const& aValue) const = 0;

private:
    Container& container() const;
    Element castOrFail(Generic::Ref const& aValue) const;
    // The element to look up, or nothing when the value can't be one.
    std::optional<Element> keyOf(Generic::Ref const& aValue) const;
    void copyFrom(Container const* aSource);

    mutable Container* fContainer = nullptr;
};

// The same over values ordered by T's operator<, with no counts.
template <class T, bool aIsUnique, class Key = Generic::identity<T>>
class TAV_EXPORT MultiIndexImplForPrimitives : public Generic::SequenceIntf {
public:
    using Element = T;
    struct Container;
    class Iterator;

    MultiIndexImplForPrimitives() = default;
    MultiIndexImplForPrimitives(MultiIndexImplForPrimitives const& aOther);
    MultiIndexImplForPrimitives& operator=(MultiIndexImplForPrimitives const& aOther);
    ~MultiIndexImplForPrimitives() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS

    bool internal_hasContainer() const { return fContainer != nullptr; }

private:
    Container& container() const;
    T const& castOrFail(Generic::Ref const& aValue) const;
    std::optional<Element> keyOf(Generic::Ref const& aValue) const;
    void copyFrom(Container const* aSource);

    mutable Container* fContainer = nullptr;
};


extern template class MultiIndexImplForRefs<true>;
extern template class MultiIndexImplForRefs<false>;
extern template class MultiIndexImplForPrimitives<String, true>;
extern template class MultiIndexImplForPrimitives<String, false>;
extern template class MultiIndexImplForPrimitives<ExternalToolInfo, true>;

} // namespace MultiIndexImplInternal

// A multi-index of T: of references for a handle type, of values otherwise.
template <class T, bool aIsUnique, class Key = Generic::identity<T>>
class MultiIndexImpl : public MultiIndexImplInternal::MultiIndexImplForPrimitives<T, aIsUnique, Key> {
public:
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override
    {
        return Generic::hostName(aImmutable, aIterator, aPrefix, Generic::elementName<T>());
    }
};

template <Generic::ObjectElement T, bool aIsUnique, class Key>
class MultiIndexImpl<T, aIsUnique, Key> : public MultiIndexImplInternal::MultiIndexImplForRefs<aIsUnique> {
public:
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override
    {
        return Generic::hostName(aImmutable, aIterator, aPrefix, Generic::elementName<T>());
    }

protected:
    NSInterface::ClassObjectIntf* castElement(Generic::Ref const& aValue) const override
    {
        return Generic::ElementTraits<T>::cast(aValue);
    }
};

} // namespace TAV
