#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/String.h>
#include <tav/TAV/UnlimitedNatural.h>

#include <memory>

namespace TAV {

// What the description of every value class shares: values travel in the
// BRIX::any as the value class V itself, never as a raw number; the default is
// V's. Values compare by BRIX::Type's own order, which is V's.
template <class Self, class V>
class TAV_EXPORT ValueTypeInfo : public BRIX::Type {
public:
    static BRIX::TypeInfo Create() { return BRIX::TypeInfo(std::make_unique<Self>()); }

    BRIX::any defaultConstruct() const override { return V(); }
    std::unique_ptr<BRIX::Type> clone() const override
    {
        return std::make_unique<Self>(static_cast<Self const&>(*this));
    }

protected:
    // bad_any_cast for a value of another type, or none.
    static V const& valueOf(BRIX::any const& value)
    {
        V const* v = BRIX::any_cast<V>(&value);
        if (!v)
            throw BRIX::bad_any_cast();
        return *v;
    }
};

// "true" or "false", nothing else.
class TAV_EXPORT BooleanTypeInfo final : public ValueTypeInfo<BooleanTypeInfo, Boolean> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
};

// Decimal, or hexadecimal after "0x".
class TAV_EXPORT IntegerTypeInfo final : public ValueTypeInfo<IntegerTypeInfo, Integer> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
};

// As Integer, with "*" (or "-1" on reading) for unlimited.
class TAV_EXPORT UnlimitedNaturalTypeInfo final : public ValueTypeInfo<UnlimitedNaturalTypeInfo, UnlimitedNatural> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
};

// The floats: "inf", "-inf", "NaN", or the shortest text that reads back exactly.
class TAV_EXPORT DoubleTypeInfo final : public ValueTypeInfo<DoubleTypeInfo, Double> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
};

class TAV_EXPORT RealTypeInfo final : public ValueTypeInfo<RealTypeInfo, Real> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
};

class TAV_EXPORT SingleTypeInfo final : public ValueTypeInfo<SingleTypeInfo, Single> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
};

// UTF-8 text; the UTF-16 forms skip the round trip through UTF-8.
class TAV_EXPORT StringTypeInfo final : public ValueTypeInfo<StringTypeInfo, String> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
    BRIX::any convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const override;
    std::u16string convertToUString(BRIX::any const& value) const override;
};

} // namespace TAV
