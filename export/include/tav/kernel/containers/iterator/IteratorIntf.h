#pragma once

#include <tav/Export.h>
#include <tav/kernel/util/Ref.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>
#include <tav/kernel/util/SmartPtr.h>

namespace TAV::Generic {

class IteratorIntf;
using IteratorPtr = SmartPtr<IteratorIntf, ReferenceCounted>;

// A position in an untyped sequence. Each implementation keeps its own kind
// of position, so `equal` compares only iterators of one sequence.
class TAV_EXPORT IteratorIntf : public ReferenceCountingIntf {
public:
    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;

    virtual Ref current(Deviant const& aDeviant) const = 0;
    virtual void next(Deviant const& aDeviant) = 0;
    virtual void previous(Deviant const& aDeviant) = 0;
    virtual IteratorPtr clone() const = 0;
    virtual bool equal(IteratorIntf const* aOther) const = 0;
};

// "Decrementing the ref count of a ref with count already 0".
[[noreturn]] TAV_EXPORT void countUnderflow();

// Counting for a sequence or iterator made on the heap. The classes below it
// count nothing, so that one embedded in an object reports 0 and is never
// freed by a holder.
template <class Base>
class HeapCounted final : public Base {
public:
    using Base::Base;

    void incRef() override { ++fCount; }
    void decRef() override
    {
        if (fCount < 1)
            countUnderflow();
        if (--fCount == 0)
            delete this;
    }
    int numRef() const override { return fCount; }

private:
    int fCount = 0;
};

// The cast of a class of the sequence family: itself, else what its base answers.
template <class Self, class Base>
void* familyCast(Self const* aSelf, CooperativeVisitor::internal::ClassInfo const& aInfo)
{
    if (aInfo == CooperativeVisitor::internal::classInfo<Self>())
        return const_cast<Self*>(aSelf);
    return aSelf->Base::cast(aInfo);
}

template <class It, class... Args>
IteratorPtr makeIterator(Args&&... aArgs)
{
    return IteratorPtr(new HeapCounted<It>(static_cast<Args&&>(aArgs)...));
}

} // namespace TAV::Generic
