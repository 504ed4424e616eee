#pragma once

#include <tav/Export.h>
#include <tav/TAV/String.h>

#include <map>
#include <string>

namespace TAV {

class Model;

namespace NSInterface {
class ModelIntf;
}

// The models of the process by URI. Holds no count: a model unbinds itself when it goes.
// Unsynchronised; used from the thread that owns the models.
class TAV_EXPORT ModelCache {
public:
    static ModelCache& instance();
    static String const UNTITLED;

    // Replaces what the URI named before; an empty handle raises the null-reference message.
    void bindModel(String const& aUri, Model const& aModel);
    void unbindModel(String const& aUri);
    // Every URI the model is bound under.
    void unbindModel(NSInterface::ModelIntf const* aModel);
    // The same at a model's end, which may come after the cache's at the library's unload.
    static void unbindIfCached(NSInterface::ModelIntf const* aModel);
    // The model on its root deviant, or an empty handle.
    Model getModelFromUri(String const& aUri) const;
    bool isModelUriInCache(String const& aUri) const;
    // "pathmap://calyxpath/" + name, then with a process-wide counter behind it until free.
    String getNextAvailableModelUri(String const& aName) const;
    // Keeps only the metamodels' models (URIs containing "MetaRegistry").
    void purge();

private:
    ModelCache() = default;
    friend struct ModelCacheAccess;

    std::map<std::u16string, NSInterface::ModelIntf*> fModels;
    static ModelCache* fInstance;
};

} // namespace TAV
