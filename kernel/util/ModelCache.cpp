#include <tav/kernel/util/ModelCache.h>

#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>

#include <tav/kernel/util/Asserter.h>

#include <BRIX/ModuleObjectDeleter.h>

#include <iterator>

namespace TAV {

ModelCache* ModelCache::fInstance = nullptr;
String const ModelCache::UNTITLED(u"untitled");

namespace {
constexpr char16_t kPrefix[] = u"pathmap://calyxpath/";
constexpr char16_t kKept[] = u"MetaRegistry";
// Shared by every name and never reset, so a URI once handed out is not offered again.
unsigned gUntitledCounter = 0;
} // namespace

ModelCache& ModelCache::instance()
{
    if (!fInstance) {
        fInstance = new ModelCache;
        BRIX::ModuleObjectDeleter::registerForCleanup(
            [](void* p) {
                delete static_cast<ModelCache*>(p);
                fInstance = nullptr;
            },
            fInstance);
    }
    return *fInstance;
}

void ModelCache::bindModel(String const& aUri, Model const& aModel)
{
    NSInterface::ModelIntf* model = aModel.internal_intf();
    if (!model)
        Asserter::MakeAlways<Exception>("Cannot access NULL ref. Use isValid() before calling methods")
            .handle("export/include/tav/TAV/Model_h", __LINE__, "");
    fModels[aUri.str()] = model;
}

void ModelCache::unbindModel(String const& aUri)
{
    fModels.erase(aUri.str());
}

void ModelCache::unbindModel(NSInterface::ModelIntf const* aModel)
{
    std::erase_if(fModels, [aModel](auto const& entry) { return entry.second == aModel; });
}

void ModelCache::unbindIfCached(NSInterface::ModelIntf const* aModel)
{
    if (fInstance)
        fInstance->unbindModel(aModel);
}

Model ModelCache::getModelFromUri(String const& aUri) const
{
    auto const it = fModels.find(aUri.str());
    if (it == fModels.end())
        return Model();
    return Model(it->second, it->second->getRootDeviant());
}

bool ModelCache::isModelUriInCache(String const& aUri) const
{
    return fModels.contains(aUri.str());
}

String ModelCache::getNextAvailableModelUri(String const& aName) const
{
    std::u16string const base = kPrefix + aName.str();
    if (!fModels.contains(base))
        return String(base);
    for (;;) {
        std::u16string candidate = base;
        for (char c : std::to_string(++gUntitledCounter))
            candidate.push_back(static_cast<char16_t>(c));
        if (!fModels.contains(candidate))
            return String(std::move(candidate));
    }
}

void ModelCache::purge()
{
    std::erase_if(fModels,
                  [](auto const& entry) { return entry.first.find(kKept) == std::u16string::npos; });
}

} // namespace TAV
