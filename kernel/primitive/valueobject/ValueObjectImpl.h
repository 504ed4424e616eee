#pragma once

#include <tav/TAV/DataType_h.h>
#include <tav/TAV/Type_h.h>
#include <tav/TAV/NSInterface/ValueObjectIntf.h>

namespace TAV::NSImplementation {

// The one value object: a value with its type description and, once the
// metamodel is loaded, the DataType that describes it.
class ValueObjectImpl final : public NSInterface::ValueObjectIntf {
public:
    ValueObjectImpl(BRIX::TypeInfo aTypeInfo, ImmutableDataType aMetaType, BRIX::any aValue);
    ~ValueObjectImpl() override;

    void incRef() override { ++fRefCount; }
    void decRef() override;
    int numRef() const override { return fRefCount; }

    BRIX::any const& getAny(Deviant) const override { return fValue; }
    BRIX::TypeInfo const& getTypeInfo(Deviant) const override { return fTypeInfo; }
    ImmutableDataType getMetaDataType(Deviant) const override { return fMetaType; }

    bool deviant_isValid(Deviant) override { return true; }
    // A value has no model to leave and nothing contained.
    void disconnectForDestroy(Deviant) override {}
    void destroyContents(Deviant, bool) override {}
    void destroy(Deviant) override {}
    String toString(Deviant d) const override;
    Object getDefaultValue(Deviant d) const override;
    ImmutableType getMetaType(Deviant d) const override;

private:
    BRIX::TypeInfo fTypeInfo;
    ImmutableDataType fMetaType;
    BRIX::any fValue;
    int fRefCount = 0;
};

} // namespace TAV::NSImplementation
