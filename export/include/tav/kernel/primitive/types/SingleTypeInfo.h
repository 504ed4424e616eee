#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>

namespace TAV {

// The type description of TAV::Single, whose values travel in a BRIX::any as
// TAV::Single, never as a raw value. Text is "inf", "-inf", "NaN", or the
// shortest text that reads back as the same float.
class TAV_EXPORT SingleTypeInfo : public BRIX::Type {
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
