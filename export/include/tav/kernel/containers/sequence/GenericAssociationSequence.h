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
