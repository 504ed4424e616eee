#pragma once

// Type descriptions of a sequence and of an iterator over elements of a
// given type. They name their element type and convert nothing.

#include <BRIX/Type.h>

namespace TAV {

namespace Generic::detail {
// A description that holds its element type and refuses every conversion.
class TAV_EXPORT ElementTypeDescription : public BRIX::Type {
public:
    explicit ElementTypeDescription(BRIX::TypeInfo aElement) : fElement(std::move(aElement)) {}

    BRIX::TypeInfo const& elementType() const { return fElement; }
    BRIX::any convertFromString(std::string const& aText, BRIX::ErrorHolder& aErrors) const override;
    std::string convertToString(BRIX::any const& aValue) const override;
    BRIX::any defaultConstruct() const override;

private:
    BRIX::TypeInfo fElement;
};
} // namespace Generic::detail

class TAV_EXPORT SequenceType : public Generic::detail::ElementTypeDescription {
public:
    using ElementTypeDescription::ElementTypeDescription;
    static BRIX::TypeInfo Create(BRIX::TypeInfo aElement);
    std::unique_ptr<BRIX::Type> clone() const override;
};

class TAV_EXPORT IteratorType : public Generic::detail::ElementTypeDescription {
public:
    using ElementTypeDescription::ElementTypeDescription;
    static BRIX::TypeInfo Create(BRIX::TypeInfo aElement);
    std::unique_ptr<BRIX::Type> clone() const override;
};

} // namespace TAV
