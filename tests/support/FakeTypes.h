#pragma once

// Fakes of the platform's type machinery, shared by the tests that need a
// type without a value class.

#include <BRIX/Type.h>

#include <memory>
#include <string>
#include <typeinfo>

namespace tavtest {

// type_info's name constructor is protected: a starred and a plain name stand
// for one type as two libraries may each emit it.
struct NamedTypeInfo : std::type_info {
    explicit NamedTypeInfo(char const* name) : std::type_info(name) {}
};

// The least a description must give, over plain decimal ints defaulting to 7;
// the rest comes from BRIX::Type.
class IntType : public BRIX::Type {
public:
    static BRIX::TypeInfo Create() { return BRIX::TypeInfo(std::make_unique<IntType>()); }

    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override
    {
        std::size_t used = 0;
        try {
            int const v = std::stoi(text, &used);
            if (used == text.size())
                return v;
        } catch (std::exception const&) {
        }
        BRIX_ADD_ERROR(errors, "Can't convert string '" + text + "' to test int");
        return {};
    }
    std::string convertToString(BRIX::any const& value) const override
    {
        return std::to_string(BRIX::any_cast<int>(value));
    }
    BRIX::any defaultConstruct() const override { return 7; }
    std::unique_ptr<BRIX::Type> clone() const override { return std::make_unique<IntType>(); }
};

} // namespace tavtest
