#include <tav/kernel/primitive/types/StructuredTypeInfos.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/serializer/utils/DatatypeStringRepresenter.h>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/primitive/types/StructuredTypeInfos";

using Fields = std::vector<std::u16string>;
using Serializer::DatatypeStringRepresenter;

void fail(char const* message, int line)
{
    Asserter::MakeAlways<Exception>("%s", message).handle(kSource, line, "");
}

// Exactly `count` fields: missing trailing ones are empty, extra ones assert.
Fields fieldsOf(std::u16string const& text, std::size_t count)
{
    Fields fields;
    try {
        fields = DatatypeStringRepresenter::splitString(text);
    } catch (...) {
        fail("Failed to convert string to type!", __LINE__);
    }
    if (fields.size() > count)
        fail("Incorrect parameters count!", __LINE__);
    fields.resize(count);
    return fields;
}

Argument argumentOf(std::u16string const& text)
{
    Fields fields = fieldsOf(text, 2);
    // The value class rather than the registry: String values are needed
    // before String is registered, and the value object is the same.
    return Argument(String(std::move(fields[0])), ValueObjectFactory::createFrom(String(std::move(fields[1]))));
}

// No value writes as the empty text; a model object has no text to write.
std::u16string textOf(Object const& value)
{
    if (!value.internal_counted())
        return {};
    if (!isValueObject(value))
        fail("Failed to convert type to string", __LINE__);
    return ImmutableValueObject(value).toString().str();
}

} // namespace

BRIX::any ArgumentTypeInfo::convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    return argumentOf(text);
}

std::u16string ArgumentTypeInfo::convertToUString(BRIX::any const& value) const
{
    Argument const& argument = valueOf(value);
    return DatatypeStringRepresenter::combineStrings({argument.getName().str(), textOf(argument.getValue())});
}

BRIX::any ExternalToolInfoTypeInfo::convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    Fields fields = fieldsOf(text, 2);
    return ExternalToolInfo(String(std::move(fields[0])), String(std::move(fields[1])));
}

std::u16string ExternalToolInfoTypeInfo::convertToUString(BRIX::any const& value) const
{
    ExternalToolInfo const& info = valueOf(value);
    return DatatypeStringRepresenter::combineStrings({info.getTool().str(), info.getExternalId().str()});
}

BRIX::any TestDefaultValueTypeInfo::convertFromUString(std::u16string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    return TestDefaultValue(argumentOf(fieldsOf(text, 1)[0]));
}

std::u16string TestDefaultValueTypeInfo::convertToUString(BRIX::any const& value) const
{
    std::u16string argument = ArgumentTypeInfo().convertToUString(valueOf(value).getArgument());
    return DatatypeStringRepresenter::combineStrings({std::move(argument)});
}

} // namespace TAV
