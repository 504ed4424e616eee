#pragma once

#include <tav/kernel/containers/iterator/IteratorIntf.h>

#include <string>

namespace TAV::Generic {

class SequenceIntf;
using SequencePtr = SmartPtr<SequenceIntf, ReferenceCounted>;

// The untyped sequence. Every operation takes the deviant through which the
// content is read, since what a sequence shows may depend on the view.
class TAV_EXPORT SequenceIntf : public ReferenceCountingIntf {
public:
    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;

    virtual Ref generic_at(Deviant const& aDeviant, int aIndex) const = 0;
    virtual Ref generic_front(Deviant const& aDeviant) const = 0;
    virtual Ref generic_back(Deviant const& aDeviant) const = 0;
    virtual IteratorPtr generic_begin(Deviant const& aDeviant) const = 0;
    virtual IteratorPtr generic_end(Deviant const& aDeviant) const = 0;
    virtual void generic_clear(Deviant const& aDeviant) = 0;
    virtual int generic_size(Deviant const& aDeviant) const = 0;
    virtual bool generic_empty(Deviant const& aDeviant) const;
    virtual void generic_insert(Deviant const& aDeviant, int aIndex, Ref aValue) = 0;
    // Returns an iterator at the new element.
    virtual IteratorPtr generic_insert(Deviant const& aDeviant, IteratorIntf const* aPosition, Ref aValue) = 0;
    // Each erase by position returns an iterator at the element after the erased ones.
    virtual IteratorPtr generic_erase(Deviant const& aDeviant, IteratorIntf const* aPosition) = 0;
    virtual IteratorPtr generic_erase(Deviant const& aDeviant, IteratorIntf const* aFirst,
                                      IteratorIntf const* aLast) = 0;
    virtual void generic_erase(Deviant const& aDeviant, int aIndex) = 0;
    virtual void generic_pop_back(Deviant const& aDeviant) = 0;
    virtual void generic_pop_front(Deviant const& aDeviant) = 0;
    virtual void generic_push_back(Deviant const& aDeviant, Ref aValue) = 0;
    virtual void generic_push_front(Deviant const& aDeviant, Ref aValue) = 0;
    virtual void generic_replace(Deviant const& aDeviant, int aIndex, Ref aValue) = 0;
    virtual bool generic_contains(Deviant const& aDeviant, Ref aValue) const = 0;
    // The host's name of this sequence type (or, with aIterator, of its iterator).
    virtual std::string generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const = 0;
    // Returns how many elements were removed.
    virtual int generic_removeAll(Deviant const& aDeviant, Ref aValue);
    // Hooks for a faster road between two sequences of one kind; each leaves
    // aHandled false when it has nothing better than the generic walk.
    virtual bool specialized_equal(Deviant const& aDeviant, SequenceIntf const* aOther, Deviant const& aOtherDeviant,
                                   bool& aHandled) const;
    virtual void specialized_assign(Deviant const& aDeviant, SequenceIntf const* aOther,
                                    Deviant const& aOtherDeviant, bool& aHandled);

    // Both sides are read under their own deviant, through one level of
    // counting proxy.
    bool generic_equal(Deviant const& aDeviant, SequenceIntf const* aOther, Deviant const& aOtherDeviant) const;
    // Clears first, so assigning a sequence to itself empties it.
    void generic_assign(Deviant const& aDeviant, SequenceIntf const* aOther, Deviant const& aOtherDeviant);
};

// What every sequence class overrides: the cast and the element operations.
#define TAV_SEQUENCE_ELEMENT_OPERATIONS \
    void* cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const override;                                 \
    Generic::Ref generic_at(Deviant const& aDeviant, int aIndex) const override;                                     \
    Generic::Ref generic_front(Deviant const& aDeviant) const override;                                              \
    Generic::Ref generic_back(Deviant const& aDeviant) const override;                                               \
    Generic::IteratorPtr generic_begin(Deviant const& aDeviant) const override;                                      \
    Generic::IteratorPtr generic_end(Deviant const& aDeviant) const override;                                        \
    void generic_clear(Deviant const& aDeviant) override;                                                            \
    int generic_size(Deviant const& aDeviant) const override;                                                        \
    void generic_insert(Deviant const& aDeviant, int aIndex, Generic::Ref aValue) override;                          \
    Generic::IteratorPtr generic_insert(Deviant const& aDeviant, Generic::IteratorIntf const* aPosition,             \
                                        Generic::Ref aValue) override;                                               \
    Generic::IteratorPtr generic_erase(Deviant const& aDeviant, Generic::IteratorIntf const* aPosition) override;    \
    Generic::IteratorPtr generic_erase(Deviant const& aDeviant, Generic::IteratorIntf const* aFirst,                 \
                                       Generic::IteratorIntf const* aLast) override;                                 \
    void generic_erase(Deviant const& aDeviant, int aIndex) override;                                                \
    void generic_pop_back(Deviant const& aDeviant) override;                                                         \
    void generic_pop_front(Deviant const& aDeviant) override;                                                        \
    void generic_push_back(Deviant const& aDeviant, Generic::Ref aValue) override;                                   \
    void generic_push_front(Deviant const& aDeviant, Generic::Ref aValue) override;                                  \
    void generic_replace(Deviant const& aDeviant, int aIndex, Generic::Ref aValue) override;                         \
    bool generic_contains(Deviant const& aDeviant, Generic::Ref aValue) const override;                              \
    int generic_removeAll(Deviant const& aDeviant, Generic::Ref aValue) override;

// What every storage class of a sequence overrides: the element operations and the
// faster roads between two sequences of one kind.
#define TAV_SEQUENCE_STORAGE_OPERATIONS \
    TAV_SEQUENCE_ELEMENT_OPERATIONS \
    bool specialized_equal(Deviant const& aDeviant, Generic::SequenceIntf const* aOther,                             \
                           Deviant const& aOtherDeviant, bool& aHandled) const override;                             \
    void specialized_assign(Deviant const& aDeviant, Generic::SequenceIntf const* aOther,                            \
                            Deviant const& aOtherDeviant, bool& aHandled) override;

} // namespace TAV::Generic
