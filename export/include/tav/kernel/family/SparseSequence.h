#pragma once

#include <tav/kernel/containers/sequence/MultiIndexImpl.h>
#include <tav/kernel/family/SparseMap.h>

namespace TAV::family {

// The value of a rarely set multi-valued property in its SparseMap: a storage
// on the heap, counted, so that a sequence that found it keeps it alive even
// when the state's entry goes. Copies are deep, as a field's are.
template <class T>
class SparseSequence {
public:
    using Storage = MultiIndexImpl<T, true>;

    SparseSequence() : fStorage(new Generic::HeapCounted<Storage>()) {}
    SparseSequence(SparseSequence const& aOther) : SparseSequence() { *this = aOther; }
    SparseSequence& operator=(SparseSequence const& aOther)
    {
        static_cast<Storage&>(*fStorage) = static_cast<Storage const&>(*aOther.fStorage);
        return *this;
    }

    bool empty() const { return fStorage->generic_size(Deviant()) == 0; }
    Generic::SequencePtr pointer() const { return Generic::SequencePtr(fStorage.get()); }

private:
    Generic::SmartPtr<Storage> fStorage;
};

// The state's entry, made at first need.
template <class T>
Generic::SequencePtr sparseSequence(SparseMap<SparseSequence<T>>& aMap, NSInterface::ClassObjectIntf const* aKey)
{
    return aMap[aKey].pointer();
}

template <class T>
bool hasSparseSequence(SparseMap<SparseSequence<T>> const& aMap, NSInterface::ClassObjectIntf const* aKey)
{
    auto const it = aMap.find(aKey);
    return it != aMap.end() && !it->second.empty();
}

} // namespace TAV::family
