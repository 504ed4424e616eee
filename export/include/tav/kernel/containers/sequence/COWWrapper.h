#pragma once

// Implicitly shared containers: copies share one block with an atomic count,
// and a write first detaches onto a block of its own. Every empty wrapper
// shares one null block per container type, so empty allocates nothing.

#include <BRIX/ModuleObjectDeleter.h>

#include <atomic>
#include <cstddef>
#include <utility>

namespace TAV::Performance {

template <class C>
struct COWWrapperTypedData {
    std::atomic<int> ref;
    C data;

    COWWrapperTypedData(int aRef, C aData) : ref(aRef), data(std::move(aData)) {}

    // Made at first use with the count of its static holder, which the
    // module clean-up list drops at exit; wrappers still on it keep it alive.
    static COWWrapperTypedData* getSharedNull()
    {
        static COWWrapperTypedData* const sNull = [] {
            auto* block = new COWWrapperTypedData(1, C());
            BRIX::ModuleObjectDeleter::registerForCleanup(
                [](void* p) { release(static_cast<COWWrapperTypedData*>(p)); }, block);
            return block;
        }();
        return sNull;
    }

    static void acquire(COWWrapperTypedData* aBlock) { aBlock->ref.fetch_add(1, std::memory_order_relaxed); }
    // Frees the block when its count falls below 1.
    static void release(COWWrapperTypedData* aBlock)
    {
        if (aBlock->ref.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete aBlock;
    }
};

template <class C>
class COWWrapper {
public:
    using Data = COWWrapperTypedData<C>;

    COWWrapper() : d(Data::getSharedNull()) { Data::acquire(d); }
    COWWrapper(COWWrapper const& aOther) : d(aOther.d) { Data::acquire(d); }
    COWWrapper& operator=(COWWrapper const& aOther)
    {
        share(aOther);
        return *this;
    }
    virtual ~COWWrapper() { Data::release(d); }

    // Before any write: a block of its own.
    void detach()
    {
        if (d->ref.load(std::memory_order_acquire) != 1)
            detach_helper();
    }
    // Copies the content into a new block with a count of 1 and drops one
    // count on the old block.
    void detach_helper()
    {
        Data* const copy = new Data(1, d->data);
        Data::release(std::exchange(d, copy));
    }

    // Takes the other's block; nothing when they share it already.
    void share(COWWrapper const& aOther)
    {
        if (d == aOther.d)
            return;
        Data::acquire(aOther.d);
        Data::release(std::exchange(d, aOther.d));
    }
    // Back on the shared null block, without copying anything.
    void reset()
    {
        Data* const null = Data::getSharedNull();
        if (d == null)
            return;
        Data::acquire(null);
        Data::release(std::exchange(d, null));
    }

    bool sharesWith(COWWrapper const& aOther) const { return d == aOther.d; }
    int blockCount() const { return d->ref.load(std::memory_order_relaxed); }
    C const& constData() const { return d->data; }
    C& data()
    {
        detach();
        return d->data;
    }

protected:
    Data* d;
};

// Container-wide forwarders.
template <class C>
class COWWrapperContainer : public COWWrapper<C> {
public:
    using value_type = typename C::value_type;
    using const_iterator = typename C::const_iterator;

    std::size_t size() const { return this->constData().size(); }
    bool empty() const { return this->constData().empty(); }
    const_iterator begin() const { return this->constData().begin(); }
    const_iterator end() const { return this->constData().end(); }
    void clear() { this->reset(); }
};

// Sequential forwarders: reads never detach, writes always do.
template <class C>
class COWWrapperContainerSequential : public COWWrapperContainer<C> {
public:
    using value_type = typename C::value_type;

    value_type const& operator[](std::size_t aIndex) const { return this->constData()[aIndex]; }
    value_type const& front() const { return this->constData().front(); }
    value_type const& back() const { return this->constData().back(); }
    value_type const* constPointer() const { return this->constData().data(); }

    void push_back(value_type aValue) { this->data().push_back(std::move(aValue)); }
    void push_front(value_type aValue)
    {
        C& c = this->data();
        c.insert(c.begin(), std::move(aValue));
    }
    void insert(std::size_t aOffset, value_type aValue)
    {
        C& c = this->data();
        c.insert(c.begin() + static_cast<std::ptrdiff_t>(aOffset), std::move(aValue));
    }
    void erase(std::size_t aFirst, std::size_t aLast)
    {
        C& c = this->data();
        c.erase(c.begin() + static_cast<std::ptrdiff_t>(aFirst), c.begin() + static_cast<std::ptrdiff_t>(aLast));
    }
    void pop_back() { this->data().pop_back(); }
    void set(std::size_t aIndex, value_type aValue) { this->data()[aIndex] = std::move(aValue); }
};

} // namespace TAV::Performance
