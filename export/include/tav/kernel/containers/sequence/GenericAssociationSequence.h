#pragma once

// The multi-valued end of a bi-directional association: every insertion and
// removal on this end updates the element's opposite end first, then the
// sequence it guards, so that the two ends stay consistent.

#include <tav/TAV/detail/Object_hdecl.h>
#include <tav/kernel/containers/sequence/SequenceIntf.h>

namespace TAV {

struct IntrospectiveMethods;

class TAV_EXPORT GenericAssociationSequence : public Generic::SequenceIntf {
public:
    GenericAssociationSequence(Object const& aOwner, Generic::SequencePtr const& aInner,
                               IntrospectiveMethods const* aOppositeMethods, unsigned aOppositePropertyId,
                               bool aOppositeIsSingleValued);
    GenericAssociationSequence(GenericAssociationSequence const&) = delete;
    GenericAssociationSequence& operator=(GenericAssociationSequence const&) = delete;
    ~GenericAssociationSequence() override;

    TAV_SEQUENCE_ELEMENT_OPERATIONS
    bool generic_empty(Deviant const& aDeviant) const override;
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

private:
    // Refuses an element of another model before either end changes.
    void checkSameModel(Generic::Ref const& aElement) const;
    // The element's opposite end gains, or loses, the owner.
    void link(Deviant const& aDeviant, Generic::Ref const& aElement) const;
    void unlink(Deviant const& aDeviant, Generic::Ref const& aElement) const;

    Generic::SequencePtr inner;
    IntrospectiveMethods const* oppositeMethods;
    unsigned oppositePropertyId;
    Object owner;
    bool oppositeIsSingleValued;
};

} // namespace TAV
