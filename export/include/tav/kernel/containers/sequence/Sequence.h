#pragma once

// The typed value handles on an untyped sequence: a counted pointer and the
// deviant it is read through, nothing more. Copies share the sequence.

#include <tav/kernel/containers/sequence/ElementTraits.h>
#include <tav/kernel/containers/sequence/SequenceIntf.h>

#include <cstddef>
#include <iterator>

namespace TAV {

// Owns the two fields and the null check of every sequence handle.
class TAV_EXPORT SequenceRef {
public:
    SequenceRef() = default;
    SequenceRef(Generic::SequencePtr aSequence, Deviant aDeviant)
        : fSequence(std::move(aSequence)), fDeviant(aDeviant)
    {
    }

    bool isNull() const { return !fSequence; }
    Deviant getDeviant() const { return fDeviant; }
    // The counted sequence itself, null on a null handle.
    Generic::SequencePtr const& internal_pointer() const { return fSequence; }
    // Raises the null-sequence assertion on a null handle, as every use does.
    Generic::SequenceIntf* internal_sequence() const
    {
        if (!fSequence)
            nullSequence();
        return fSequence.get();
    }

protected:
    [[noreturn]] static void nullSequence();

    Generic::SequencePtr fSequence;
    Deviant fDeviant;
};

static_assert(sizeof(SequenceRef) == 2 * sizeof(void*), "a sequence handle is two words");

// A forward walk that converts each element on reading.
template <class E>
class SequenceIterator {
public:
    using value_type = E;
    using difference_type = std::ptrdiff_t;

    SequenceIterator() = default;
    SequenceIterator(Generic::IteratorPtr aPosition, Deviant aDeviant)
        : fPosition(std::move(aPosition)), fDeviant(aDeviant)
    {
    }

    E operator*() const { return Generic::ElementTraits<E>::fromRef(fPosition->current(fDeviant)); }
    SequenceIterator& operator++()
    {
        fPosition->next(fDeviant);
        return *this;
    }
    void operator++(int) { ++*this; }
    friend bool operator==(SequenceIterator const& a, SequenceIterator const& b)
    {
        return a.fPosition->equal(b.fPosition.get());
    }
    Generic::IteratorIntf const* internal_position() const { return fPosition.get(); }

private:
    Generic::IteratorPtr fPosition;
    Deviant fDeviant;
};

// The reading operations; elements show as T's immutable handle.
template <class T>
class ImmutableSequence : public SequenceRef {
public:
    using Element = typename Generic::ElementTraits<T>::Immutable;
    using const_iterator = SequenceIterator<Element>;

    using SequenceRef::SequenceRef;

    Element at(int aIndex) const { return fromRef(seq().generic_at(fDeviant, aIndex)); }
    Element operator[](int aIndex) const { return at(aIndex); }
    Element front() const { return fromRef(seq().generic_front(fDeviant)); }
    Element back() const { return fromRef(seq().generic_back(fDeviant)); }
    int size() const { return seq().generic_size(fDeviant); }
    bool empty() const { return seq().generic_empty(fDeviant); }
    bool contains(Element const& aValue) const
    {
        return seq().generic_contains(fDeviant, Generic::ElementTraits<Element>::toRef(aValue, fDeviant));
    }
    const_iterator begin() const { return const_iterator(seq().generic_begin(fDeviant), fDeviant); }
    const_iterator end() const { return const_iterator(seq().generic_end(fDeviant), fDeviant); }

    // Element by element, each side under its own deviant.
    bool equals(SequenceRef const& aOther) const
    {
        return seq().generic_equal(fDeviant, aOther.internal_sequence(), aOther.getDeviant());
    }

protected:
    Generic::SequenceIntf& seq() const { return *internal_sequence(); }
    Generic::Ref toRef(T const& aValue) const { return Generic::ElementTraits<T>::toRef(aValue, fDeviant); }
    static Element fromRef(Generic::Ref const& aRef) { return Generic::ElementTraits<Element>::fromRef(aRef); }
};

// Every operation; converts each element between T and the untyped Ref.
template <class T>
class Sequence : public ImmutableSequence<T> {
    using Base = ImmutableSequence<T>;

public:
    using iterator = SequenceIterator<T>;

    using Base::Base;

    T at(int aIndex) const { return Generic::ElementTraits<T>::fromRef(seq().generic_at(fDeviant, aIndex)); }
    T operator[](int aIndex) const { return at(aIndex); }
    T front() const { return Generic::ElementTraits<T>::fromRef(seq().generic_front(fDeviant)); }
    T back() const { return Generic::ElementTraits<T>::fromRef(seq().generic_back(fDeviant)); }
    iterator begin() const { return iterator(seq().generic_begin(fDeviant), fDeviant); }
    iterator end() const { return iterator(seq().generic_end(fDeviant), fDeviant); }

    void push_back(T const& aValue) const { seq().generic_push_back(fDeviant, this->toRef(aValue)); }
    void push_front(T const& aValue) const { seq().generic_push_front(fDeviant, this->toRef(aValue)); }
    void insert(int aIndex, T const& aValue) const { seq().generic_insert(fDeviant, aIndex, this->toRef(aValue)); }
    iterator insert(iterator const& aPosition, T const& aValue) const
    {
        return iterator(seq().generic_insert(fDeviant, aPosition.internal_position(), this->toRef(aValue)), fDeviant);
    }
    void replace(int aIndex, T const& aValue) const { seq().generic_replace(fDeviant, aIndex, this->toRef(aValue)); }
    void erase(int aIndex) const { seq().generic_erase(fDeviant, aIndex); }
    iterator erase(iterator const& aPosition) const
    {
        return iterator(seq().generic_erase(fDeviant, aPosition.internal_position()), fDeviant);
    }
    iterator erase(iterator const& aFirst, iterator const& aLast) const
    {
        return iterator(seq().generic_erase(fDeviant, aFirst.internal_position(), aLast.internal_position()),
                        fDeviant);
    }
    void pop_back() const { seq().generic_pop_back(fDeviant); }
    void pop_front() const { seq().generic_pop_front(fDeviant); }
    void clear() const { seq().generic_clear(fDeviant); }
    int removeAll(T const& aValue) const { return seq().generic_removeAll(fDeviant, this->toRef(aValue)); }
    // Clears, then takes the other's elements; from itself, that empties it.
    void assign(SequenceRef const& aOther) const
    {
        seq().generic_assign(fDeviant, aOther.internal_sequence(), aOther.getDeviant());
    }

private:
    using Base::fDeviant;
    using Base::seq;
};

} // namespace TAV
