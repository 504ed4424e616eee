#pragma once

#include <tav/Export.h>

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
struct ClassObjectHooks {
    bool (*isModel)(NSInterface::ObjectIntf const* object) = nullptr;
    bool (*isClassObject)(NSInterface::ObjectIntf const* object) = nullptr;
    char const* (*metaClassName)(NSInterface::ObjectIntf const* object) = nullptr;
    long long (*objectIndex)(NSInterface::ObjectIntf const* object, Deviant d) = nullptr;
    // The model's canonical object, the key of referred models.
    NSInterface::ObjectIntf* (*modelObject)(NSInterface::ModelIntf* model) = nullptr;
};

TAV_EXPORT ClassObjectHooks& classObjectHooks();

} // namespace internal
} // namespace TAV
