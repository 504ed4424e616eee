#pragma once

#include <tav/Export.h>

#include <string>

namespace TAV {

class Deviant;

namespace NSInterface {
class ModelIntf;
class ObjectIntf;
}

namespace internal {

// What the runtime needs to know about class objects, whose interfaces are
// generated on top of it: the generated code fills these in when it loads.
// Unset hooks answer "not a model", "no metaclass", index -1, no model object.
// The metaclass name is the object's Class's, so run-time stereotypes name themselves.
struct ClassObjectHooks {
    bool (*isModel)(NSInterface::ObjectIntf const* object) = nullptr;
    bool (*isClassObject)(NSInterface::ObjectIntf const* object) = nullptr;
    std::string (*metaClassName)(NSInterface::ObjectIntf const* object) = nullptr;
    long long (*objectIndex)(NSInterface::ObjectIntf const* object, Deviant d) = nullptr;
    // The model's canonical object, the key of referred models.
    NSInterface::ObjectIntf* (*modelObject)(NSInterface::ModelIntf* model) = nullptr;
    // Forgets the model's URI binding; called as the model's manager goes.
    void (*unbindModel)(NSInterface::ModelIntf* model) = nullptr;
};

TAV_EXPORT ClassObjectHooks& classObjectHooks();

} // namespace internal
} // namespace TAV
