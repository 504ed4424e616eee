#pragma once

#include <tav/kernel/util/propertystorage/PropertyStorageIntf.h>

#include <cstdint>

namespace TAV {

struct IntrospectiveMethods;

// A multi-valued property: every operation works on the sequence its declaring
// class's table hands out, the association-aware one or, for EndOnly, the raw one.
class TAV_EXPORT MultiValuedPropertyManager : public PropertyStorageIntf {
public:
    MultiValuedPropertyManager(IntrospectiveMethods const* aMethods, unsigned aPropertyId);

    bool has(ImmutableClassObject const& aObject) const override;
    ImmutableSequence<ImmutableObject> get(ImmutableClassObject const& aObject) const override;
    Sequence<Object> get(ImmutableClassObject const& aObject) override;
    ImmutableObject getOne(ImmutableClassObject const& aObject) const override;
    Object getOne(ImmutableClassObject const& aObject) override;
    void setOrAdd(ClassObject aObject, Object const& aValue) override;
    void setOrAddEndOnly(ClassObject aObject, Object const& aValue) override;
    void remove(ClassObject aObject, Object const& aValue) override;
    void removeEndOnly(ClassObject aObject, Object const& aValue) override;
    void remove(ClassObject aObject) override;
    void removeEndOnly(ClassObject aObject) override;
    // Drops the first element, if any.
    void removeOne(ClassObject aObject) override;
    void removeOneEndOnly(ClassObject aObject) override;

private:
    IntrospectiveMethods const* methods; // not owned
    std::uint32_t propertyId;
};

} // namespace TAV
