#include "kernel/deviant/DeviantImpl.h"
#include "kernel/deviant/Raise.h"
#include "kernel/deviant/ScopedTransaction.h"

#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/DeviantManagerHelper.h>

#include <utility>
#include <vector>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/deviant/DeviantManager";
constexpr char kRootName[] = "root deviant";

} // namespace

DeviantManager::DeviantManager() : fRoot(new internal::DeviantImpl(kRootName, this, 0)), fHelper(new DeviantManagerHelper)
{
    fDeviants.emplace(kRootName, fRoot);
}

DeviantManager::~DeviantManager()
{
    if (auto const unbind = internal::classObjectHooks().unbindModel; unbind && fModel)
        unbind(fModel);
    for (internal::DeviantImpl* impl : fRetired)
        delete impl;
    delete fHelper;
    // Left only where the manager went without destroy, as model-less ones do.
    for (auto const& [name, impl] : fDeviants)
        delete impl;
}

void DeviantManager::destroy()
{
    auto const modelObject = internal::classObjectHooks().modelObject;
    NSInterface::ObjectIntf* const model = fModel && modelObject ? modelObject(fModel) : nullptr;
    // Nothing open survives and nothing is kept for undo, so no listener hears.
    auto const takeDown = [model](internal::DeviantImpl* impl) {
        Deviant const d(impl);
        d.disableUndo();
        while (impl->transactionDepth > 0)
            d.commitTransaction();
        impl->detachingFromBackend = true;
        internal::ScopedTransaction cleanup(d, "model cleanup");
        if (model)
            model->destroy(d);
        cleanup.commit();
        d.remove();
    };
    for (auto it = fDeviants.begin(); it != fDeviants.end();) {
        internal::DeviantImpl* const impl = it->second;
        if (!impl || impl->id == 0) {
            ++it;
            continue;
        }
        takeDown(impl);
        delete impl;
        it = fDeviants.erase(it);
    }
    if (fRoot) {
        takeDown(fRoot);
        delete std::exchange(fRoot, nullptr);
    }
    fDeviants.clear();

    // Separate passes: no object may go while another's state still points to it.
    std::vector<NSInterface::ObjectIntf*> objects(fObjects.begin(), fObjects.end());
    fObjects.clear();
    for (NSInterface::ObjectIntf* object : objects)
        object->incRef();
    for (NSInterface::ObjectIntf* object : objects)
        object->deviant_markModelDestroyed();
    for (NSInterface::ObjectIntf* object : objects)
        object->decRef();
}

void DeviantManager::setHelper(DeviantManagerHelper* helper)
{
    if (helper != fHelper)
        delete std::exchange(fHelper, helper);
}

Deviant DeviantManager::createDeviantWithName(std::string const& name)
{
    internal::DeviantImpl*& slot = fDeviants[name];
    if (slot)
        return Deviant(slot);
    // Counted after the name is in, and retired ones count: ids never repeat.
    int const id = static_cast<int>(fRetired.size() + fDeviants.size());
    slot = new internal::DeviantImpl(name, this, id);
    slot->maximumUndoLength = 1;
    slot->exceptionPolicy = fRoot->exceptionPolicy;
    return Deviant(slot);
}

Deviant DeviantManager::getDeviantWithName(std::string const& name)
{
    return Deviant(fDeviants[name]);
}

void DeviantManager::removeDeviantWithName(std::string const& name)
{
    auto const it = fDeviants.find(name);
    if (it == fDeviants.end() || !it->second)
        internal::raise("removeDeviantWithName: deviant does not exist", kSource, __LINE__);
    Deviant(it->second).remove();
    fRetired.push_back(it->second);
    fDeviants.erase(it);
}

void DeviantManager::getDeviants(std::vector<Deviant>& out) const
{
    out.reserve(out.size() + fDeviants.size());
    for (auto const& [name, impl] : fDeviants)
        out.push_back(Deviant(impl));
}

void DeviantManager::addObjectToModel(NSInterface::ObjectIntf* object)
{
    auto const isModel = internal::classObjectHooks().isModel;
    if (isModel && isModel(object))
        internal::raise("Addition of model to model's object list", kSource, __LINE__);
    if (!fObjects.insert(object).second)
        internal::raise("Re-addition of object to model", kSource, __LINE__);
}

} // namespace TAV
