#pragma once

#include <tav/kernel/deviant/DeviantManager.h>

#include <cstdint>
#include <map>
#include <vector>

namespace TAV::NSInterface {
class ClassObjectIntf;
class ModelIntf;
} // namespace TAV::NSInterface

namespace TAV::internal {

// A model's objects by index. Indices are handed out in increasing order, so nearly all
// sit in a vector at their own position; one given far past the end goes to a map,
// so that a large id given to createWithId costs a node, not a gigabyte.
class ObjectIndex {
public:
    NSInterface::ClassObjectIntf* find(std::int32_t aIndex) const
    {
        if (aIndex >= 0 && static_cast<std::size_t>(aIndex) < fDense.size())
            if (NSInterface::ClassObjectIntf* object = fDense[static_cast<std::size_t>(aIndex)])
                return object;
        if (fSparse.empty())
            return nullptr;
        auto const it = fSparse.find(aIndex);
        return it == fSparse.end() ? nullptr : it->second;
    }
    // Puts the object at a free index, or answers the one there.
    NSInterface::ClassObjectIntf* insert(std::int32_t aIndex, NSInterface::ClassObjectIntf* aObject);
    void erase(std::int32_t aIndex);

private:
    static constexpr std::size_t kDenseGap = 4096;
    std::vector<NSInterface::ClassObjectIntf*> fDense;
    std::map<std::int32_t, NSInterface::ClassObjectIntf*> fSparse;
};

// What a model holds beside its states. Its destructor runs first of the model's
// destruction, while the model is whole: it unbinds the model from the cache and marks
// every object as outliving it, which frees their states and so the cycles their lists form.
class ModelCore {
public:
    ModelCore() = default;
    ModelCore(ModelCore const&) = delete;
    ModelCore& operator=(ModelCore const&) = delete;
    ~ModelCore();

    NSInterface::ModelIntf* owner = nullptr;
    DeviantManager manager;
    ObjectIndex objects;
    std::int32_t nextObjectIndex = 1;
    std::int32_t lastSavedChangeLevel = -1;
};

} // namespace TAV::internal
