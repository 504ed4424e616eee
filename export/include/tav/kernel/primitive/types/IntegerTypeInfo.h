#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>

namespace TAV {

// The type description of TAV::Integer, whose values travel in a BRIX::any as
// TAV::Integer, never as a raw value. Text is decimal, or hexadecimal after
// "0x" when read.
class TAV_EXPORT IntegerTypeInfo : public BRIX::Type {
public:
    static BRIX::TypeInfo Create();

    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override;
    std::string convertToString(BRIX::any const& value) const override;
    BRIX::any defaultConstruct() const override;
    bool isEqualTo(BRIX::any const& a, BRIX::any const& b) const override;
    bool isLessThan(BRIX::any const& a, BRIX::any const& b) const override;
    std::unique_ptr<BRIX::Type> clone() const override;
};

} // namespace TAV
