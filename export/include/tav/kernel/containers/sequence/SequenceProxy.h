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

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;
    Generic::Ref generic_at(Deviant const& aDeviant, int aIndex) const override;
    Generic::Ref generic_front(Deviant const& aDeviant) const override;
    Generic::Ref generic_back(Deviant const& aDeviant) const override;
    Generic::IteratorPtr generic_begin(Deviant const& aDeviant) const override;
    Generic::IteratorPtr generic_end(Deviant const& aDeviant) const override;
    void generic_clear(Deviant const& aDeviant) override;
    int generic_size(Deviant const& aDeviant) const override;
    bool generic_empty(Deviant const& aDeviant) const override;
    void generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue) override;
    Generic::IteratorPtr generic_insert(Deviant const& aDeviant, Generic::IteratorIntf const* aPosition,
                                        Generic::Ref aValue) override;
    Generic::IteratorPtr generic_erase(Deviant const& aDeviant, Generic::IteratorIntf const* aPosition) override;
    Generic::IteratorPtr generic_erase(Deviant const& aDeviant, Generic::IteratorIntf const* aFirst,
                                       Generic::IteratorIntf const* aLast) override;
    void generic_erase(Deviant const& aDeviant, int aIndex) override;
    void generic_pop_back(Deviant const& aDeviant) override;
    void generic_pop_front(Deviant const& aDeviant) override;
    void generic_push_back(Deviant const& aDeviant, Generic::Ref aValue) override;
    void generic_push_front(Deviant const& aDeviant, Generic::Ref aValue) override;
    void generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue) override;
    bool generic_contains(Deviant const& aDeviant, Generic::Ref aValue) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;
    int generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue) override;

private:
    Generic::SequenceIntf& target() const;

    Generic::SequencePtr fWrapped;
};

} // namespace TAV
