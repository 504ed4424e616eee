#include "kernel/deviant/DeviantImpl.h"
#include "kernel/deviant/Raise.h"

#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/DeviantManagerHelper.h>

#include <utility>

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
    delete fHelper;
    for (auto const& [name, impl] : fDeviants)
        delete impl;
    for (internal::DeviantImpl* impl : fRetired)
        delete impl;
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
