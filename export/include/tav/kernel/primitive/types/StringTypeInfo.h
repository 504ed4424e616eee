#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>

namespace TAV {

// The type description of TAV::String, whose values travel in a BRIX::any as
// TAV::String, never as a raw value. Text is UTF-8; the UTF-16 forms skip the
// round trip through UTF-8.
class TAV_EXPORT StringTypeInfo : public BRIX::Type {
public:
    static BRIX::TypeInfo Create();

    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
    BRIX::any convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const override;
    std::u16string convertToUString(BRIX::any const& value) const override;
    BRIX::any defaultConstruct() const override;
    bool isEqualTo(BRIX::any const& a, BRIX::any const& b) const override;
    bool isLessThan(BRIX::any const& a, BRIX::any const& b) const override;
    std::unique_ptr<BRIX::Type> clone() const override;
};

} // namespace TAV
