#pragma once

#include <tav/Export.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>

namespace TAV {

class ImmutableClassObject;
class ClassObject;
class ImmutableObject;
class Object;
template <class T>
class ImmutableSequence;
template <class T>
class Sequence;

// How one property is read and written on any object, whatever its metaclass.
// Counted on its own, with a plain count: storages belong to their model's thread.
class TAV_EXPORT PropertyStorageIntf : public ReferenceCountingIntf {
public:
    PropertyStorageIntf() = default;
    PropertyStorageIntf(PropertyStorageIntf const&) = delete;
    PropertyStorageIntf& operator=(PropertyStorageIntf const&) = delete;

    void incRef() override;
    void decRef() override;
    int numRef() const override;

    virtual bool has(ImmutableClassObject const& aObject) const = 0;
    virtual ImmutableSequence<ImmutableObject> get(ImmutableClassObject const& aObject) const = 0;
    virtual Sequence<Object> get(ImmutableClassObject const& aObject) = 0;
    virtual ImmutableObject getOne(ImmutableClassObject const& aObject) const = 0;
    virtual Object getOne(ImmutableClassObject const& aObject) = 0;
    virtual void setOrAdd(ClassObject aObject, Object const& aValue) = 0;
    virtual void setOrAddEndOnly(ClassObject aObject, Object const& aValue) = 0;
    virtual void remove(ClassObject aObject, Object const& aValue) = 0;
    virtual void removeEndOnly(ClassObject aObject, Object const& aValue) = 0;
    virtual void remove(ClassObject aObject) = 0;
    virtual void removeEndOnly(ClassObject aObject) = 0;
    virtual void removeOne(ClassObject aObject) = 0;
    virtual void removeOneEndOnly(ClassObject aObject) = 0;

protected:
    // The base retracts a registered storage from the deviant registry.
    ~PropertyStorageIntf() override;

private:
    int fCount = 0;
};

// What every property storage overrides.
#define TAV_PROPERTY_STORAGE_OPERATIONS                                                             \
    bool has(ImmutableClassObject const& aObject) const override;                                   \
    ImmutableSequence<ImmutableObject> get(ImmutableClassObject const& aObject) const override;     \
    Sequence<Object> get(ImmutableClassObject const& aObject) override;                             \
    ImmutableObject getOne(ImmutableClassObject const& aObject) const override;                     \
    Object getOne(ImmutableClassObject const& aObject) override;                                    \
    void setOrAdd(ClassObject aObject, Object const& aValue) override;                              \
    void setOrAddEndOnly(ClassObject aObject, Object const& aValue) override;                       \
    void remove(ClassObject aObject, Object const& aValue) override;                                \
    void removeEndOnly(ClassObject aObject, Object const& aValue) override;                         \
    void remove(ClassObject aObject) override;                                                      \
    void removeEndOnly(ClassObject aObject) override;                                               \
    void removeOne(ClassObject aObject) override;                                                   \
    void removeOneEndOnly(ClassObject aObject) override;

} // namespace TAV
