#pragma once

// The empty sequence that takes everything and keeps nothing: what a derived
// property with no parts shows.

#include <tav/kernel/containers/sequence/SequenceIntf.h>

namespace TAV {

class TAV_EXPORT GenericNullSequence : public Generic::SequenceIntf {
public:
    class Iterator;

    // One instance for the process; the library holds a count on it until exit.
    static GenericNullSequence* getSingleton();

    TAV_SEQUENCE_STORAGE_OPERATIONS
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

protected:
    GenericNullSequence() = default;
};

// Holds nothing; every one is equal to every other.
class TAV_EXPORT GenericNullSequence::Iterator : public Generic::IteratorIntf {
public:
    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;
    Generic::Ref current(Deviant const&) const override { return {}; }
    void next(Deviant const&) override {}
    void previous(Deviant const&) override {}
    Generic::IteratorPtr clone() const override;
    bool equal(Generic::IteratorIntf const* aOther) const override;
};

} // namespace TAV
