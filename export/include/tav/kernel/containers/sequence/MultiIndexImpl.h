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
template <bool aIsUnique, class Key = Generic::identity<NSInterface::ClassObjectIntf const*>>
class TAV_EXPORT MultiIndexImplForRefs : public Generic::SequenceIntf {
public:
    using Element = NSInterface::ClassObjectIntf const*;
    using CastFn = NSInterface::ClassObjectIntf* (*)(Generic::Ref const&);
    struct Container;
    class Iterator;

    explicit MultiIndexImplForRefs(CastFn aCast) : fCast(aCast) {}
    MultiIndexImplForRefs(MultiIndexImplForRefs const&) = delete;
    MultiIndexImplForRefs& operator=(MultiIndexImplForRefs const&) = delete;
    ~MultiIndexImplForRefs() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS

    // Whether the container has been made, for tests of the empty form.
    bool internal_hasContainer() const { return fContainer != nullptr; }

private:
    Container& container() const;
    Element castOrFail(Generic::Ref const& aValue) const;
    // The element to look up, or nothing when the value can't be one.
    std::optional<Element> keyOf(Generic::Ref const& aValue) const;

    mutable Container* fContainer = nullptr;
    CastFn fCast;
};

// The same over values ordered by T's operator<, with no counts.
template <class T, bool aIsUnique, class Key = Generic::identity<T>>
class TAV_EXPORT MultiIndexImplForPrimitives : public Generic::SequenceIntf {
public:
    using Element = T;
    struct Container;
    class Iterator;

    MultiIndexImplForPrimitives() = default;
    MultiIndexImplForPrimitives(MultiIndexImplForPrimitives const&) = delete;
    MultiIndexImplForPrimitives& operator=(MultiIndexImplForPrimitives const&) = delete;
    ~MultiIndexImplForPrimitives() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS

    bool internal_hasContainer() const { return fContainer != nullptr; }

private:
    Container& container() const;
    T const& castOrFail(Generic::Ref const& aValue) const;
    std::optional<Element> keyOf(Generic::Ref const& aValue) const;

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
    MultiIndexImpl() : MultiIndexImplInternal::MultiIndexImplForRefs<aIsUnique>(&Generic::ElementTraits<T>::cast) {}
    ~MultiIndexImpl() override = default;

    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override
    {
        return Generic::hostName(aImmutable, aIterator, aPrefix, Generic::elementName<T>());
    }
};

} // namespace TAV
