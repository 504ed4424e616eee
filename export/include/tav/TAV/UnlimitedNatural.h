#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>
#include <tav/TAV/ScalarValue.h>
#include <tav/TAV/String.h>

#include <cstdint>

namespace TAV {

class ImmutableDataType;

// All ones stands for unlimited ("*").
class TAV_EXPORT UnlimitedNatural : public ScalarValue<UnlimitedNatural, std::uint32_t> {
public:
    using ScalarValue::ScalarValue;
    // Asserts on a text that is no UnlimitedNatural, as fromString does.
    explicit UnlimitedNatural(String const& text);

    static std::string const& getTypeName();
    static BRIX::TypeInfo const& getTypeInfo();
    // The metamodel DataType of the class: null until the metamodel stands.
    static ImmutableDataType MetaDataType();
    ImmutableDataType getMetaDataType() const;
    String toString() const;
    static UnlimitedNatural fromString(String const& text);

    static constexpr std::uint32_t kUnlimited = 0xFFFFFFFFu;
    bool isUnlimited() const { return fValue == kUnlimited; }
};

} // namespace TAV
