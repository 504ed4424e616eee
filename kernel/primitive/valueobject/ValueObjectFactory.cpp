#include "kernel/primitive/valueobject/ValueObjectImpl.h"

#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/util/Asserter.h>

namespace TAV {

namespace {

ValueObject make(std::string const& aTypeName, BRIX::any aValue)
{
    return ValueObjectFactory::createWithType(aTypeName, TypeInfoRegistry::getTypeInfo(aTypeName), std::move(aValue));
}

} // namespace

ValueObject ValueObjectFactory::createWithType(std::string const& aTypeName, BRIX::TypeInfo const& aTypeInfo,
                                               BRIX::any aValue)
{
    return ValueObject(new NSImplementation::ValueObjectImpl(aTypeInfo, TypeInfoRegistry::getMetaType(aTypeName),
                                                             std::move(aValue)),
                       Deviant());
}

bool ValueObjectFactory::isValueObjectType(std::string const& aTypeName)
{
    return TypeInfoRegistry::hasType(aTypeName);
}

ValueObject ValueObjectFactory::create(std::string const& aTypeName)
{
    if (!isValueObjectType(aTypeName))
        return ValueObject();
    return make(aTypeName, TypeInfoRegistry::getTypeInfo(aTypeName).defaultConstruct());
}

ValueObject ValueObjectFactory::create(std::string const& aTypeName, BRIX::any const& aValue)
{
    if (!isValueObjectType(aTypeName))
        return ValueObject();
    return make(aTypeName, aValue);
}

ValueObject ValueObjectFactory::createFromString(std::string const& aTypeName, String const& aText)
{
    if (!isValueObjectType(aTypeName))
        return ValueObject();
    BRIX::ErrorHolder errors;
    BRIX::any value = TypeInfoRegistry::getTypeInfo(aTypeName).convertFromUString(aText.str(), errors);
    if (errors.hasError())
        Asserter::MakeAlways<Exception>("%s", errors.getErrorText().c_str())
            .handle("kernel/primitive/valueobject/ValueObjectFactory", __LINE__, "");
    return make(aTypeName, std::move(value));
}

} // namespace TAV
