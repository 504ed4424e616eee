#include <tav/TAV/DataType_h.h>
#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/util/Asserter.h>

#include <BRIX/ModuleObjectDeleter.h>

#include <functional>
#include <string_view>
#include <unordered_map>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/primitive/valueobject/TypeInfoRegistry";
constexpr std::string_view kKernelPrefix = "TAV.";

// The key of a name: a kernel type's bare name.
std::string_view keyOf(std::string const& aName)
{
    std::string_view const name(aName);
    return name.starts_with(kKernelPrefix) ? name.substr(kKernelPrefix.size()) : name;
}

// Looked up by string_view, so that a lookup makes no string.
struct KeyHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view aKey) const noexcept { return std::hash<std::string_view>()(aKey); }
};

template <class V>
using Map = std::unordered_map<std::string, V, KeyHash, std::equal_to<>>;

template <class V>
Map<V>& map()
{
    static auto* sMap = [] {
        auto* m = new Map<V>();
        BRIX::ModuleObjectDeleter::registerForCleanup(m);
        return m;
    }();
    return *sMap;
}

auto& typeInfos() { return map<BRIX::TypeInfo>(); }
auto& metaTypes() { return map<ImmutableDataType>(); }

template <class V>
void erase(Map<V>& aMap, std::string_view aKey)
{
    if (auto const it = aMap.find(aKey); it != aMap.end())
        aMap.erase(it);
}

void check(bool aCondition, int aLine)
{
    Asserter::Make<Exception>(aCondition, "%s", Asserter::sNoMessage).handle(kSource, aLine, "");
}

} // namespace

void TypeInfoRegistry::registerTypeInfo(std::string const& aName, BRIX::TypeInfo const& aTypeInfo)
{
    std::string_view const key = keyOf(aName);
    check(!typeInfos().contains(key), __LINE__);
    typeInfos().emplace(key, aTypeInfo);
}

void TypeInfoRegistry::registerMetaType(std::string const& aName, BRIX::TypeInfo const& aTypeInfo,
                                        ImmutableDataType const& aMetaType)
{
    registerTypeInfo(aName, aTypeInfo);
    check(aMetaType.isValid(), __LINE__);
    metaTypes().insert_or_assign(std::string(keyOf(aName)), aMetaType);
}

void TypeInfoRegistry::unregisterTypeInfo(std::string const& aName)
{
    erase(typeInfos(), keyOf(aName));
}

void TypeInfoRegistry::unregisterMetaType(std::string const& aName)
{
    erase(metaTypes(), keyOf(aName));
    erase(typeInfos(), keyOf(aName));
}

bool TypeInfoRegistry::hasType(std::string const& aName)
{
    return typeInfos().contains(keyOf(aName));
}

BRIX::TypeInfo const& TypeInfoRegistry::getTypeInfo(std::string const& aName)
{
    auto const it = typeInfos().find(keyOf(aName));
    check(it != typeInfos().end(), __LINE__);
    return it->second;
}

ImmutableDataType TypeInfoRegistry::getMetaType(std::string const& aName)
{
    auto const it = metaTypes().find(keyOf(aName));
    return it == metaTypes().end() ? ImmutableDataType() : it->second;
}

} // namespace TAV
