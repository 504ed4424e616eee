#pragma once

// A single-valued property shown as a sequence of at most one element,
// reached through its metaclass's table, so that it can be one part of a
// derived union.

#include <tav/TAV/ClassObject_h.h>
#include <tav/kernel/containers/sequence/SequenceProxy.h>

namespace TAV {

struct IntrospectiveMethods;

class TAV_EXPORT GenericPropertyToSequenceProxy : public SequenceProxy {
public:
    // aLower is the property's lower bound: with 1, the table's `has` answers
    // true always, so being set is read from the value.
    GenericPropertyToSequenceProxy(ImmutableClassObject aObject, IntrospectiveMethods const* aMethods,
                                   unsigned aPropertyId, int aLower);

    TAV_SEQUENCE_STORAGE_OPERATIONS
    std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const override;

    bool isSet(Deviant const& aDeviant) const;
    Generic::Ref value(Deviant const& aDeviant) const;

private:
    friend class GenericPropertyToSequenceIterator;

    NSInterface::ClassObjectIntf* object() const;
    Generic::Ref validValue(Deviant const& aDeviant) const;
    void set(Deviant const& aDeviant, Generic::Ref const& aValue);
    void unset(Deviant const& aDeviant);
    Generic::IteratorPtr iterator(bool aAtEnd) const;
    bool atEnd(Generic::IteratorIntf const* aPosition) const;

    ImmutableClassObject fObject;
    IntrospectiveMethods const* fMethods;
    unsigned fPropertyId;
    int fLower;
};

// Before or after the one element.
class TAV_EXPORT GenericPropertyToSequenceIterator : public Generic::IteratorIntf {
public:
    GenericPropertyToSequenceIterator(GenericPropertyToSequenceProxy const* aProxy, bool aAtEnd);

    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;
    Generic::Ref current(Deviant const& aDeviant) const override;
    void next(Deviant const&) override { fAtEnd = true; }
    void previous(Deviant const&) override { fAtEnd = false; }
    Generic::IteratorPtr clone() const override;
    bool equal(Generic::IteratorIntf const* aOther) const override;

    bool atEnd() const { return fAtEnd; }

private:
    Generic::SmartPtr<GenericPropertyToSequenceProxy> fProxy;
    bool fAtEnd;
};

} // namespace TAV
