#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ObjectHandle.h>

#include <memory>
#include <string>

namespace TAV {

class ImmutableDataType;
class ImmutableObject;
class Object;
class ValueObject;

// UTF-16 text. An 8-bit (UTF-8) copy is built on the first c_str() and
// dropped by every mutation, so callers that never ask for it never pay.
class TAV_EXPORT String {
public:
    String() = default;
    String(char const* utf8);
    String(std::string const& utf8);
    String(std::u16string text) : fText(std::move(text)) {}
    String(char16_t const* text) : fText(text ? text : u"") {}
    // The text of the value class: Integer, UnlimitedNatural ("*" for all
    // ones), Double, Single, Boolean. Explicit, so that no number passes for
    // a String unnoticed.
    explicit String(int value);
    explicit String(unsigned int value);
    explicit String(double value);
    explicit String(float value);
    explicit String(bool value);
    String(String const& other) : fText(other.fText) {}
    String(String&& other) noexcept = default;
    String& operator=(String const& other);
    String& operator=(String&& other) noexcept;
    ~String() = default;

    operator std::u16string const&() const { return fText; }
    std::u16string const& str() const { return fText; }
    // Valid until the next mutation of this String.
    char const* c_str() const;
    std::string toUtf8() const;

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const { return *this; }
    // As the scalar value classes: a String travels as a ValueObject.
    template <ObjectHandle H>
    explicit String(H const& aObject) : String(fromObject(aObject))
    {
    }
    operator ValueObject() const;
    operator Object() const;
    static String fromString(String const& text) { return text; }

    // UTF-16 to UTF-8 and back; malformed input becomes U+FFFD.
    static std::string to_string(std::u16string const& text);
    static std::u16string to_ustring(std::string const& text);

    bool empty() const { return fText.empty(); }
    std::size_t size() const { return fText.size(); }
    void clear();
    String& operator+=(String const& other);

    friend bool operator==(String const& a, String const& b) { return a.fText == b.fText; }
    friend bool operator!=(String const& a, String const& b) { return a.fText != b.fText; }
    friend bool operator<(String const& a, String const& b) { return a.fText < b.fText; }

private:
    static String fromObject(ImmutableObject const& aObject);
    std::u16string fText;
    mutable std::unique_ptr<std::string> fUtf8;
};

} // namespace TAV
