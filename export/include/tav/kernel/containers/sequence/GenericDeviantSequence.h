#pragma once

// A multi-valued property of one object as seen through one deviant. It holds
// no elements: each operation finds the property's storage anew in the
// object's read or write state of the deviant, so that a write makes the
// deviation the first time and later reads see it.

#include <tav/kernel/containers/sequence/SequenceIntf.h>
#include <tav/kernel/deviant/Deviant.h>

namespace TAV {

struct IntrospectiveMethods;

namespace NSInterface {
class ClassObjectIntf;
}

class TAV_EXPORT GenericDeviantSequence : public Generic::SequenceIntf {
public:
    class Iterator;

    // aObject is the owner's ClassObject; the sequence holds one count on it.
    GenericDeviantSequence(void* aObject, Deviant const& aDeviant, IntrospectiveMethods const* aMethods,
                           unsigned aPropertyId);
    GenericDeviantSequence(GenericDeviantSequence const&) = delete;
    GenericDeviantSequence& operator=(GenericDeviantSequence const&) = delete;
    ~GenericDeviantSequence() override;

    TAV_SEQUENCE_ELEMENT_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

private:
    // The storage in the state that aDeviant reads (or writes) the owner through.
    Generic::SequenceIntf* resolve(Deviant const& aDeviant, bool aForWrite) const;
    // An insertion that grew the storage refers to the element's model.
    template <class Insert>
    void insertCounted(Deviant const& aDeviant, Generic::Ref const& aValue, Insert aInsert);
    Generic::Ref takeForRemoval(Deviant const& aDeviant, int aIndex) const;
    int indexOf(Generic::IteratorIntf const* aPosition) const;

    NSInterface::ClassObjectIntf* object;
    Deviant deviant;
    IntrospectiveMethods const* methods;
    unsigned propertyId;
    // The storage found in cachedState: a loop of reads under one deviant asks for it once.
    mutable NSInterface::ClassObjectIntf const* cachedState = nullptr;
    mutable Generic::SequenceIntf* cachedSequence = nullptr;
    mutable Generic::SequencePtr heldSequence;
};

// A position by index: valid across writes, which may move the storage to
// another state, and across erasures before it, which shift what it shows.
class TAV_EXPORT GenericDeviantSequence::Iterator : public Generic::IteratorIntf {
public:
    Iterator(GenericDeviantSequence const* aSequence, int aIndex);

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;
    Generic::Ref current(Deviant const& aDeviant) const override;
    void next(Deviant const& aDeviant) override;
    void previous(Deviant const& aDeviant) override;
    Generic::IteratorPtr clone() const override;
    bool equal(Generic::IteratorIntf const* aOther) const override;

    int index() const { return fIndex; }

private:
    GenericDeviantSequence const* fSequence;
    int fIndex;
};

} // namespace TAV
