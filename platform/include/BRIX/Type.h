#pragma once

#include <BRIX/ErrorHolder.h>
#include <BRIX/any.h>
#include <tav/Export.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace BRIX {

using ByteArray = std::vector<std::uint8_t>;

// A type description: makes, copies, compares and converts to and from text
// the values of one type, carried in an `any`. Text conversions report bad
// input in the ErrorHolder, never by throwing; a value of another type is a
// bad_any_cast.
class TAV_EXPORT Type {
public:
    virtual any convertFromString(std::string const& text, ErrorHolder& errors) const = 0;
    virtual std::string convertToString(any const& value) const = 0;
    // The UTF-8 bytes of the text form, unless a type knows better.
    virtual any convertFromByteArray(ByteArray const& bytes, ErrorHolder& errors) const;
    virtual ByteArray convertToByteArray(any const& value) const;
    // Through UTF-8, unless a type's text is UTF-16 at heart.
    virtual any convertFromUString(std::u16string const& text, ErrorHolder& errors) const;
    virtual std::u16string convertToUString(any const& value) const;
    virtual any defaultConstruct() const = 0;
    // A value is valid when it is of this type, that is when it converts.
    virtual bool isValid(any const& value) const;
    // Values of a type with == and < compare as themselves, a NaN equal to a
    // NaN and after every number; values of other types by their text form.
    // The empty value is equal only to itself, and comes first.
    virtual bool isEqualTo(any const& a, any const& b) const;
    virtual bool isLessThan(any const& a, any const& b) const;
    virtual std::unique_ptr<Type> clone() const = 0;
    virtual ~Type();
};

// A shared, immutable handle on a Type. Copies share the description.
class TAV_EXPORT TypeInfo {
public:
    TypeInfo() noexcept = default;
    explicit TypeInfo(std::unique_ptr<Type> type) : fType(std::move(type)) {}

    bool isValid() const noexcept { return fType != nullptr; }
    explicit operator bool() const noexcept { return isValid(); }
    Type const& type() const;
    Type const* operator->() const { return &type(); }

    any convertFromString(std::string const& text, ErrorHolder& errors) const
    {
        return type().convertFromString(text, errors);
    }
    std::string convertToString(any const& value) const { return type().convertToString(value); }
    any convertFromUString(std::u16string const& text, ErrorHolder& errors) const
    {
        return type().convertFromUString(text, errors);
    }
    std::u16string convertToUString(any const& value) const { return type().convertToUString(value); }
    any defaultConstruct() const { return type().defaultConstruct(); }

    // The same description object, not merely an equal one.
    friend bool operator==(TypeInfo const& a, TypeInfo const& b) noexcept { return a.fType == b.fType; }

private:
    std::shared_ptr<Type const> fType;
};

} // namespace BRIX
