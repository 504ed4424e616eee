#pragma once

#include <tav/kernel/containers/sequence/SequenceIntf.h>

namespace TAV {

// The counted base of sequences that stand for another: it counts itself, so
// that what it stands for may be embedded or shared.
class TAV_EXPORT SequenceProxy : public Generic::SequenceIntf {
public:
    SequenceProxy();
    SequenceProxy(SequenceProxy const&) = delete;
    SequenceProxy& operator=(SequenceProxy const&) = delete;

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;
    void incRef() override { ++fCount; }
    void decRef() override;
    int numRef() const override { return fCount; }

private:
    int fCount = 0;
};

// Forwards every operation to the sequence it holds. The comparison and
// assignment of two sequences look through one level of it.
class TAV_EXPORT GenericReferenceCountingSequenceProxy final : public SequenceProxy {
public:
    explicit GenericReferenceCountingSequenceProxy(Generic::SequencePtr aWrapped);

    Generic::SequenceIntf* wrapped() const { return fWrapped.get(); }

    TAV_SEQUENCE_ELEMENT_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

private:
    Generic::SequenceIntf& target() const;

    Generic::SequencePtr fWrapped;
};

} // namespace TAV
