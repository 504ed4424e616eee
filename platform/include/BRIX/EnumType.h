#pragma once

#include <BRIX/Type.h>

#include <memory>
#include <string>

namespace BRIX {

// The type description of an enumeration value class X: X is built from an
// int and gives `static getLiterals()`, a map from value to literal, and
// `static getTypeName()`. Text is the literal; a value without one writes as
// its number, which no literal reads back.
template <class X>
class SpecificEnumType : public Type {
public:
    static TypeInfo Create() { return TypeInfo(std::make_unique<SpecificEnumType>()); }

    any convertFromString(std::string const& text, ErrorHolder& errors) const override
    {
        for (auto const& [value, literal] : X::getLiterals())
            if (literal == text)
                return X(value);
        BRIX_ADD_ERROR(errors, "Can't convert string '" + text + "' to " + std::string(X::getTypeName()));
        return {};
    }

    std::string convertToString(any const& value) const override
    {
        int const number = valueOf(value);
        auto const& literals = X::getLiterals();
        auto const it = literals.find(number);
        return it == literals.end() ? std::to_string(number) : std::string(it->second);
    }

    any defaultConstruct() const override { return X(); }

    std::unique_ptr<Type> clone() const override { return std::make_unique<SpecificEnumType>(*this); }

private:
    static int valueOf(any const& value) { return static_cast<int>(any_cast<X>(value)); }
};

} // namespace BRIX
