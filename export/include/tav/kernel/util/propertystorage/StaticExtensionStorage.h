#pragma once

#include <tav/TAV/Stereotype_h.h>
#include <tav/kernel/util/propertystorage/PropertyStorageIntf.h>

namespace TAV {

// The static extension of a stereotype: the stereotype objects of that stereotype
// among an object's applied stereotype instances. What get gives is a copy.
class TAV_EXPORT StaticExtensionStorage : public PropertyStorageIntf {
public:
    explicit StaticExtensionStorage(ImmutableStereotype aStereotype);

    bool has(ImmutableClassObject const& aObject) const override;
    ImmutableSequence<ImmutableObject> get(ImmutableClassObject const& aObject) const override;
    Sequence<Object> get(ImmutableClassObject const& aObject) override;
    ImmutableObject getOne(ImmutableClassObject const& aObject) const override;
    Object getOne(ImmutableClassObject const& aObject) override;
    // Replaces the object's instance of the stereotype: one is applied at most once.
    void setOrAdd(ClassObject aObject, Object const& aValue) override;
    void setOrAddEndOnly(ClassObject aObject, Object const& aValue) override;
    void remove(ClassObject aObject, Object const& aValue) override;
    void removeEndOnly(ClassObject aObject, Object const& aValue) override;
    void remove(ClassObject aObject) override;
    void removeEndOnly(ClassObject aObject) override;
    void removeOne(ClassObject aObject) override;
    void removeOneEndOnly(ClassObject aObject) override;

private:
    ImmutableStereotype stereotype;
};

} // namespace TAV
