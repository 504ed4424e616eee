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

#define TAV_MULTI_INDEX_OPERATIONS                                                                                   \
    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;                                 \
    Generic::Ref generic_at(Deviant const& aDeviant, int aIndex) const override;                                     \
    Generic::Ref generic_front(Deviant const& aDeviant) const override;                                              \
    Generic::Ref generic_back(Deviant const& aDeviant) const override;                                               \
    Generic::IteratorPtr generic_begin(Deviant const& aDeviant) const override;                                      \
    Generic::IteratorPtr generic_end(Deviant const& aDeviant) const override;                                        \
    void generic_clear(Deviant const& aDeviant) override;                                                            \
    int generic_size(Deviant const& aDeviant) const override;                                                        \
    void generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue) override;                          \
    Generic::IteratorPtr generic_insert(Deviant const& aDeviant, Generic::IteratorIntf const* aPosition,             \
                                        Generic::Ref aValue) override;                                               \
    Generic::IteratorPtr generic_erase(Deviant const& aDeviant, Generic::IteratorIntf const* aPosition) override;    \
    Generic::IteratorPtr generic_erase(Deviant const& aDeviant, Generic::IteratorIntf const* aFirst,                 \
                                       Generic::IteratorIntf const* aLast) override;                                 \
    void generic_erase(Deviant const& aDeviant, int aIndex) override;                                                \
    void generic_pop_back(Deviant const& aDeviant) override;                                                         \
    void generic_pop_front(Deviant const& aDeviant) override;                                                        \
    void generic_push_back(Deviant const& aDeviant, Generic::Ref aValue) override;                                   \
    void generic_push_front(Deviant const& aDeviant, Generic::Ref aValue) override;                                  \
    void generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue) override;                         \
    bool generic_contains(Deviant const& aDeviant, Generic::Ref aValue) const override;                              \
    int generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue) override;                                    \
    bool specialized_equal(Deviant const& aDeviant, Generic::SequenceIntf const* aOther,                             \
                           Deviant const& aOtherDeviant, bool& aHandled) const override;                             \
    void specialized_assign(Deviant const& aDeviant, Generic::SequenceIntf const* aOther,                            \
                            Deviant const& aOtherDeviant, bool& aHandled) override;

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

    TAV_MULTI_INDEX_OPERATIONS

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

    TAV_MULTI_INDEX_OPERATIONS

    bool internal_hasContainer() const { return fContainer != nullptr; }

private:
    Container& container() const;
    T const& castOrFail(Generic::Ref const& aValue) const;
    std::optional<Element> keyOf(Generic::Ref const& aValue) const;

    mutable Container* fContainer = nullptr;
};

#undef TAV_MULTI_INDEX_OPERATIONS

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
