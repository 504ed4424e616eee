#include <BRIX/ModuleObjectDeleter.h>

#include <utility>
#include <vector>

namespace BRIX {
namespace {

struct Entry {
    ModuleObjectDeleter::Cleanup cleanup;
    void* object;
};

// Plain pointers, not static objects: the lists must outlive every static
// destructor of the library, since they run after them at unload.
std::vector<Entry>* gOrdinary = nullptr;
std::vector<Entry>* gLast = nullptr;

void add(std::vector<Entry>*& list, ModuleObjectDeleter::Cleanup cleanup, void* object)
{
    if (!list)
        list = new std::vector<Entry>;
    list->push_back({cleanup, object});
}

// A clean-up may register further entries; they run in the same pass.
void drain(std::vector<Entry>*& list)
{
    while (list && !list->empty()) {
        const Entry entry = list->back();
        list->pop_back();
        entry.cleanup(entry.object);
    }
    delete std::exchange(list, nullptr);
}

__attribute__((destructor)) void runAtUnload()
{
    ModuleObjectDeleter::runCleanup();
}

} // namespace

void ModuleObjectDeleter::registerForCleanup(Cleanup cleanup, void* object)
{
    add(gOrdinary, cleanup, object);
}

void ModuleObjectDeleter::registerForCleanup_toBeUsedOnlyByTAVCoopVisitor(Cleanup cleanup, void* object)
{
    add(gLast, cleanup, object);
}

void ModuleObjectDeleter::runCleanup()
{
    drain(gOrdinary);
    drain(gLast);
}

} // namespace BRIX
