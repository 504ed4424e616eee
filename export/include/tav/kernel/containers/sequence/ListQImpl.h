#pragma once

// Lists: a vector shared copy-on-write between lists, for computed results
// and temporary lists. Positions are pointers into the buffer, so a write
// invalidates every iterator; insert and erase hand back a fresh one.

#include <tav/TAV/String.h>
#include <tav/kernel/containers/sequence/COWWrapper.h>
#include <tav/kernel/containers/sequence/ElementTraits.h>
#include <tav/kernel/containers/sequence/SequenceIntf.h>

#include <vector>

namespace TAV {

namespace ListQImplInternal {

// The one body of every list of references: raw interface pointers, one
// count per occurrence, typed only by the cast function and the host name.
class TAV_EXPORT ListQImplForRefs : public Generic::SequenceIntf {
public:
    using Element = NSInterface::ClassObjectIntf*;
    using Elements = std::vector<Element>;
    using CastFn = Element (*)(Generic::Ref const&);
    class Iterator;

    explicit ListQImplForRefs(CastFn aCast) : fCast(aCast) {}
    ListQImplForRefs(ListQImplForRefs const&) = delete;
    ListQImplForRefs& operator=(ListQImplForRefs const&) = delete;
    ~ListQImplForRefs() override;

    TAV_SEQUENCE_STORAGE_OPERATIONS

    // The block, for tests and benchmarks of sharing.
    Performance::COWWrapperContainerSequential<Elements> const& internal_elements() const { return fElements; }

private:
    Element castOrFail(Generic::Ref const& aValue) const;
    std::size_t offsetOf(Generic::IteratorIntf const* aPosition, bool aInsertion) const;

    Performance::COWWrapperContainerSequential<Elements> fElements;
    CastFn fCast;
};

// Lists of values: no counts, equality is the value's.
template <class T>
class TAV_EXPORT ListQImplForPrimitives : public Generic::SequenceIntf {
public:
    using Elements = std::vector<T>;
    class Iterator;

    ListQImplForPrimitives() = default;
    ListQImplForPrimitives(ListQImplForPrimitives const&) = delete;
    ListQImplForPrimitives& operator=(ListQImplForPrimitives const&) = delete;

    TAV_SEQUENCE_STORAGE_OPERATIONS

    Performance::COWWrapperContainerSequential<Elements> const& internal_elements() const { return fElements; }

protected:
    T const& valueOrFail(Generic::Ref const& aValue) const;
    std::size_t offsetOf(Generic::IteratorIntf const* aPosition, bool aInsertion) const;

    Performance::COWWrapperContainerSequential<Elements> fElements;
};

extern template class ListQImplForPrimitives<String>;

} // namespace ListQImplInternal

// A list of T: of references for a handle type, of values otherwise.
template <class T>
class ListQImpl : public ListQImplInternal::ListQImplForPrimitives<T> {
public:
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override
    {
        return Generic::hostName(aImmutable, aIterator, aPrefix, Generic::elementName<T>());
    }
};

template <Generic::ObjectElement T>
class ListQImpl<T> : public ListQImplInternal::ListQImplForRefs {
public:
    ListQImpl() : ListQImplForRefs(&Generic::ElementTraits<T>::cast) {}
    ~ListQImpl() override = default;

    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override
    {
        return Generic::hostName(aImmutable, aIterator, aPrefix, Generic::elementName<T>());
    }
};

} // namespace TAV
