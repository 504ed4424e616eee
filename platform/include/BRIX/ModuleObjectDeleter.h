#pragma once

#include <tav/Export.h>

namespace BRIX {

// The clean-up list of libtqtav.so, run when the library is unloaded (or the
// process exits): singletons register their release here on creation.
class TAV_EXPORT ModuleObjectDeleter {
public:
    using Cleanup = void (*)(void* object);

    // Runs in reverse order of registration.
    static void registerForCleanup(Cleanup cleanup, void* object);
    template<class T>
    static void registerForCleanup(T* object)
    {
        registerForCleanup([](void* p) { delete static_cast<T*>(p); }, object);
    }

    // Runs after every ordinary entry: the cooperative visitor's type tables
    // are consulted while other singletons are released.
    static void registerForCleanup_toBeUsedOnlyByTAVCoopVisitor(Cleanup cleanup, void* object);

    // Runs and empties both lists now; called at unload, and by tests.
    static void runCleanup();
};

} // namespace BRIX
