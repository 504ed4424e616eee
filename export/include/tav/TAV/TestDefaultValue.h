#pragma once

#include <tav/TAV/Argument.h>

namespace TAV {

class ImmutableDataType;

// A default for a test: one argument, "default-argument" until set. The
// argument is set when it differs from that default; the Object forms are as
// on Argument.
class TAV_EXPORT TestDefaultValue {
public:
    TestDefaultValue() = default;
    explicit TestDefaultValue(Argument aArgument) : fArgument(std::move(aArgument)) {}

    static Argument defaultArgument() { return Argument(String("default-argument")); }

    bool hasArgument() const { return fArgument != defaultArgument(); }
    Argument const& getArgument() const { return fArgument; }
    void setArgument(Argument const& aArgument) { fArgument = aArgument; }
    void removeArgument() { fArgument = defaultArgument(); }
    ImmutableObject getArgumentAsImmutableObject() const;
    bool hasObjectArgument() const { return hasArgument(); }
    // A null object resets the field; anything but an Argument value asserts.
    void setOrAddObjectArgument(Object const& aValue);
    void removeObjectArgument(Object const&) { removeArgument(); }
    void removeObjectFirstArgument() { removeArgument(); }

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static TestDefaultValue fromString(String const& aText);
    explicit TestDefaultValue(ImmutableObject const& aObject);
    operator ValueObject() const;
    operator Object() const;

    friend bool operator==(TestDefaultValue const& a, TestDefaultValue const& b) { return a.fArgument == b.fArgument; }
    friend bool operator!=(TestDefaultValue const& a, TestDefaultValue const& b) { return !(a == b); }
    friend bool operator<(TestDefaultValue const& a, TestDefaultValue const& b) { return a.fArgument < b.fArgument; }

private:
    Argument fArgument = defaultArgument();
};

} // namespace TAV
