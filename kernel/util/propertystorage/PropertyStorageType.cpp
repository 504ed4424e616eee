#include <tav/kernel/util/propertystorage/PropertyStorageType.h>

#include "kernel/primitive/types/TypeInfoSupport.h"
#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/util/propertystorage/PropertyStorage.h>

namespace TAV {

BRIX::TypeInfo PropertyStorageType::Create()
{
    BRIX::TypeInfo info(std::make_unique<PropertyStorageType>());
    // The registry drops the package prefix, so one entry answers to both names.
    if (!TypeInfoRegistry::hasType(kName))
        TypeInfoRegistry::registerTypeInfo(kName, info);
    return info;
}

BRIX::any PropertyStorageType::convertFromString(std::string const&, BRIX::ErrorHolder& aErrors) const
{
    internal::assertNoErrorYet(aErrors, "kernel/util/propertystorage/PropertyStorageType", __LINE__);
    return BRIX::any(PropertyStorage());
}

std::string PropertyStorageType::convertToString(BRIX::any const&) const
{
    return {};
}

BRIX::any PropertyStorageType::defaultConstruct() const
{
    return BRIX::any(PropertyStorage());
}

std::unique_ptr<BRIX::Type> PropertyStorageType::clone() const
{
    return std::make_unique<PropertyStorageType>(*this);
}

} // namespace TAV
