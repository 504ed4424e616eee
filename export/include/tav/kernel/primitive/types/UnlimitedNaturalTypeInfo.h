#pragma once

#include <BRIX/Type.h>
#include <tav/Export.h>

namespace TAV {

// The type description of TAV::UnlimitedNatural, whose values travel in a
// BRIX::any as TAV::UnlimitedNatural, never as a raw value. As Integer,
// unsigned; unlimited is "*", and "-1" reads as unlimited too.
class TAV_EXPORT UnlimitedNaturalTypeInfo : public BRIX::Type {
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
