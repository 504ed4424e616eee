#pragma once

#include <BRIX/Type.h>
#include <tav/TAV/NSInterface/ObjectIntf.h>

namespace TAV {

class ImmutableDataType;

namespace NSInterface {

// A value where an object is expected: counted like a model object, but
// without identity, model or deviations. ObjectIntf is a virtual base, so
// that one object can be a value and a class object at once, with one count.
class TAV_EXPORT ValueObjectIntf : public virtual ObjectIntf {
public:
    ~ValueObjectIntf() override;

    CooperativeVisitor::VisitEntry getVisitMethod(CooperativeVisitor::DispatchTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;

    virtual BRIX::any const& getAny(Deviant d) const = 0;
    virtual BRIX::TypeInfo const& getTypeInfo(Deviant d) const = 0;
    virtual ImmutableDataType getMetaDataType(Deviant d) const = 0;
};

} // namespace NSInterface
} // namespace TAV
