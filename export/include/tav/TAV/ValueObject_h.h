#pragma once

#include <tav/TAV/Object_h.h>

#include <BRIX/Type.h>

namespace TAV {

namespace NSInterface {
class ValueObjectIntf;
}

class ImmutableDataType;
class ImmutableType;

// The handle of a value object. Equality compares the values; the ordering
// compares the objects, which is enough to keep value objects in a set.
class TAV_EXPORT ImmutableValueObject : public ImmutableObject {
public:
    ImmutableValueObject() = default;
    ImmutableValueObject(NSInterface::ValueObjectIntf const* aObject, Deviant aDeviant);
    // Any handle, by the cooperative cast: empty if the object is no value.
    explicit ImmutableValueObject(ImmutableObject const& aOther);

    NSInterface::ValueObjectIntf* internal_intf() const;

    BRIX::any getValue() const { return getAny(); }
    BRIX::any const& getAny() const;
    BRIX::TypeInfo const& getTypeInfo() const;
    ImmutableDataType getMetaDataType() const;
    String toString() const;

    friend TAV_EXPORT bool operator==(ImmutableValueObject const& a, ImmutableValueObject const& b);
    friend bool operator!=(ImmutableValueObject const& a, ImmutableValueObject const& b) { return !(a == b); }
    friend bool operator<(ImmutableValueObject const& a, ImmutableValueObject const& b)
    {
        return a.fObject < b.fObject;
    }
    friend bool operator<=(ImmutableValueObject const& a, ImmutableValueObject const& b) { return !(b < a); }
    friend bool operator>(ImmutableValueObject const& a, ImmutableValueObject const& b) { return b < a; }
    friend bool operator>=(ImmutableValueObject const& a, ImmutableValueObject const& b) { return !(a < b); }
};

class TAV_EXPORT ValueObject : public ImmutableValueObject {
public:
    using MutableHandleTag = void;
    ValueObject() = default;
    ValueObject(NSInterface::ValueObjectIntf* aObject, Deviant aDeviant);
    explicit ValueObject(Object const& aOther) : ImmutableValueObject(static_cast<ImmutableObject const&>(aOther)) {}
    operator Object() const { return Object(*this); }
};

// Whether the object is a value rather than a model object.
TAV_EXPORT bool isValueObject(ImmutableObject const& aObject);
// Whether the type is a data type, whose instances travel as values.
TAV_EXPORT bool isDataType(ImmutableType const& aType);

} // namespace TAV
