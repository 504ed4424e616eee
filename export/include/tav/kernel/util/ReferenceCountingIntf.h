#pragma once

#include <tav/Export.h>
#include <tav/kernel/util/Cleanup.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

namespace TAV {

class ListOfReferences;

// Root of every counted interface. Counting itself lives in the concrete
// implementations; the interfaces only fix the slots.
class TAV_EXPORT ReferenceCountingIntf : public Cleanup {
public:
    ReferenceCountingIntf() = default;
    // A copy is a new object: it is not registered anywhere yet.
    ReferenceCountingIntf(ReferenceCountingIntf const&) : Cleanup() {}
    ReferenceCountingIntf& operator=(ReferenceCountingIntf const&) { return *this; }
    ~ReferenceCountingIntf() override;

    virtual void incRef();
    virtual void decRef();
    virtual int numRef() const;
    virtual ListOfReferences* getListOfReferences();
    virtual CooperativeVisitor::VisitEntry getVisitMethod(CooperativeVisitor::DispatchTable const& table) const;
    virtual void* cast(CooperativeVisitor::internal::ClassInfo const& info) const;

    // Set by DeviantRegistry, so that the destructor knows to retract.
    bool fRegistered = false;
    // Set on a state at its first value in a sparse map (SparseMap); states
    // without it need not look there.
    mutable bool fInSparseMaps = false;
};

} // namespace TAV
