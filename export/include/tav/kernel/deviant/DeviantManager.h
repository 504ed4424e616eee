#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/deviant/Listeners.h>

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

namespace TAV {

class DeviantManagerHelper;

namespace NSInterface {
class ModelIntf;
}

// Owns every deviant of one model. Removed deviants stay in memory until the
// manager goes, so stale handles can still answer isValid.
class TAV_EXPORT DeviantManager : public ListenerBase {
public:
    DeviantManager();
    // Unbinds the model from the cache first, when a binding hook is set.
    ~DeviantManager() override;
    DeviantManager(DeviantManager const&) = delete;
    DeviantManager& operator=(DeviantManager const&) = delete;

    void setModel(NSInterface::ModelIntf* aModel) { fModel = aModel; }
    NSInterface::ModelIntf* getModel() const { return fModel; }
    Deviant getRoot() const { return Deviant(fRoot); }
    DeviantManagerHelper* getHelper() const { return fHelper; }
    // Takes the helper over and deletes the one before.
    void setHelper(DeviantManagerHelper* helper);
    // One number that the model keeps for its user; no meaning here.
    int lastSavedChangeLevel = 0;

    // Creating a name twice returns the existing deviant.
    Deviant createDeviantWithName(std::string const& name);
    // An unknown name is entered with no deviant and gives a null handle.
    Deviant getDeviantWithName(std::string const& name);
    void removeDeviantWithName(std::string const& name);
    // Appends all deviants in name order, null entries included.
    void getDeviants(std::vector<Deviant>& out) const;

    // The model's objects, uncounted. A model is never its own member.
    void addObjectToModel(NSInterface::ObjectIntf* object);
    // An absent object is ignored.
    void removeObjectFromModel(NSInterface::ObjectIntf* object) { fObjects.erase(object); }
    // The model goes: each deviant, named ones first and root last, commits
    // what is open with undo off, destroys the model's contents in a "model
    // cleanup" transaction and is freed; then every object of the model is
    // marked as outliving it. Handles of these deviants must not be used after.
    void destroy();

    bool containsObject(NSInterface::ObjectIntf* object) const { return fObjects.contains(object); }
    std::size_t objectCount() const { return fObjects.size(); }
    std::unordered_set<NSInterface::ObjectIntf*> const& objects() const { return fObjects; }

private:
    NSInterface::ModelIntf* fModel = nullptr;
    std::map<std::string, internal::DeviantImpl*> fDeviants;
    internal::DeviantImpl* fRoot;
    std::vector<internal::DeviantImpl*> fRetired;
    DeviantManagerHelper* fHelper;
    std::unordered_set<NSInterface::ObjectIntf*> fObjects;
};

} // namespace TAV
