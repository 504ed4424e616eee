#pragma once

#include <tav/TAV/Argument.h>
#include <tav/TAV/ExternalToolInfo.h>
#include <tav/TAV/TestDefaultValue.h>
#include <tav/kernel/primitive/types/ValueTypeInfos.h>

namespace TAV {

// The structured values: their fields, each as its own text, joined by the
// escaping of Serializer::DatatypeStringRepresenter. Text that does not fit
// asserts rather than reporting in the error holder. Apart from
// ValueTypeInfos.h because the fields hold object handles.
template <class Self, class V>
class TAV_EXPORT StructuredTypeInfo : public ValueTypeInfo<Self, V> {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override
    {
        return this->convertFromUString(String::to_ustring(text), errors);
    }
    std::string convertToString(BRIX::any const& value) const override
    {
        return String::to_string(this->convertToUString(value));
    }
};

// name|value; the value is read as a String.
class TAV_EXPORT ArgumentTypeInfo final : public StructuredTypeInfo<ArgumentTypeInfo, Argument> {
public:
    BRIX::any convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const override;
    std::u16string convertToUString(BRIX::any const& value) const override;
};

// tool|externalId
class TAV_EXPORT ExternalToolInfoTypeInfo final
    : public StructuredTypeInfo<ExternalToolInfoTypeInfo, ExternalToolInfo> {
public:
    BRIX::any convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const override;
    std::u16string convertToUString(BRIX::any const& value) const override;
};

// One field: the argument's own text, escaped once more.
class TAV_EXPORT TestDefaultValueTypeInfo final
    : public StructuredTypeInfo<TestDefaultValueTypeInfo, TestDefaultValue> {
public:
    BRIX::any convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const override;
    std::u16string convertToUString(BRIX::any const& value) const override;
};

} // namespace TAV
