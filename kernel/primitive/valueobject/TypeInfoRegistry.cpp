#include <tav/TAV/DataType_h.h>
#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/util/Asserter.h>

#include <BRIX/ModuleObjectDeleter.h>

#include <unordered_map>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/primitive/valueobject/TypeInfoRegistry";

template <class V>
std::unordered_map<std::string, V>& map()
{
    static auto* sMap = [] {
        auto* m = new std::unordered_map<std::string, V>();
        BRIX::ModuleObjectDeleter::registerForCleanup(m);
        return m;
    }();
    return *sMap;
}

auto& typeInfos() { return map<BRIX::TypeInfo>(); }
auto& metaTypes() { return map<ImmutableDataType>(); }

void check(bool aCondition, int aLine)
{
    Asserter::Make<Exception>(aCondition, "%s", Asserter::sNoMessage).handle(kSource, aLine, "");
}

} // namespace

void TypeInfoRegistry::registerTypeInfo(std::string const& aName, BRIX::TypeInfo const& aTypeInfo)
{
    check(!typeInfos().contains(aName), __LINE__);
    typeInfos().emplace(aName, aTypeInfo);
}

void TypeInfoRegistry::registerMetaType(std::string const& aName, BRIX::TypeInfo const& aTypeInfo,
                                        ImmutableDataType const& aMetaType)
{
    registerTypeInfo(aName, aTypeInfo);
    check(aMetaType.isValid(), __LINE__);
    metaTypes().insert_or_assign(aName, aMetaType);
}

void TypeInfoRegistry::unregisterTypeInfo(std::string const& aName)
{
    typeInfos().erase(aName);
}

void TypeInfoRegistry::unregisterMetaType(std::string const& aName)
{
    metaTypes().erase(aName);
    typeInfos().erase(aName);
}

bool TypeInfoRegistry::hasType(std::string const& aName)
{
    return typeInfos().contains(aName);
}

BRIX::TypeInfo const& TypeInfoRegistry::getTypeInfo(std::string const& aName)
{
    auto const it = typeInfos().find(aName);
    check(it != typeInfos().end(), __LINE__);
    return it->second;
}

ImmutableDataType TypeInfoRegistry::getMetaType(std::string const& aName)
{
    auto const it = metaTypes().find(aName);
    return it == metaTypes().end() ? ImmutableDataType() : it->second;
}

} // namespace TAV
