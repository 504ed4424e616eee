#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/Object_h.h>
#include <tav/TAV/String.h>

namespace TAV {

class ImmutableDataType;
class ValueObject;

// A named value. The value is any object, a value object or a model object,
// or none at all; read from text it is always a String value.
//
// Every field reads as a property with at most one value: hasX is false
// exactly when removeX would change nothing (but an argument always has its
// name), and the Object forms carry the field as reflection would see it.
class TAV_EXPORT Argument {
public:
    Argument() = default;
    explicit Argument(String aName, Object aValue = Object()) : fName(std::move(aName)), fValue(std::move(aValue)) {}

    // An argument always has a name, if only the empty one.
    bool hasName() const { return true; }
    String const& getName() const { return fName; }
    void setName(String const& aName) { fName = aName; }
    void removeName() { fName.clear(); }
    ImmutableObject getNameAsImmutableObject() const;
    bool hasObjectName() const { return hasName(); }
    // A null object empties the field; anything but a String value asserts.
    void setOrAddObjectName(Object const& aValue);
    // A field has one value to remove, so the given one is not looked at.
    void removeObjectName(Object const&) { removeName(); }
    void removeObjectFirstName() { removeName(); }

    // Set when the handle is not null.
    bool hasValue() const { return fValue.internal_counted() != nullptr; }
    Object const& getValue() const { return fValue; }
    void setValue(Object const& aValue) { fValue = aValue; }
    void removeValue() { fValue = Object(); }
    ImmutableObject getValueAsImmutableObject() const { return fValue; }
    bool hasObjectValue() const { return hasValue(); }
    void setOrAddObjectValue(Object const& aValue) { setValue(aValue); }
    void removeObjectValue(Object const&) { removeValue(); }
    void removeObjectFirstValue() { removeValue(); }

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static Argument fromString(String const& aText);
    explicit Argument(ImmutableObject const& aObject);
    operator ValueObject() const;
    operator Object() const;

    // Values are equal by what they hold, other objects by identity; in the
    // order, no value comes first, then values, then model objects.
    friend TAV_EXPORT bool operator==(Argument const& a, Argument const& b);
    friend bool operator!=(Argument const& a, Argument const& b) { return !(a == b); }
    friend TAV_EXPORT bool operator<(Argument const& a, Argument const& b);

private:
    String fName;
    Object fValue;
};

} // namespace TAV
