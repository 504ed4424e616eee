#include "kernel/deviant/Raise.h"

#include <tav/TAV/Object_h.h>
#include <tav/kernel/deviant/DeviantRegistry.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/deviant/DeviantRegistry";

} // namespace

DeviantRegistry& DeviantRegistry::instance()
{
    // Never destroyed: objects may retract from their destructors at exit.
    static DeviantRegistry* const sInstance = new DeviantRegistry;
    return *sInstance;
}

DeviantRegistry::Id DeviantRegistry::getId(ReferenceCountingIntf* object, Deviant d, bool isImmutable)
{
    if (!object)
        return nullptr;
    object->fRegistered = true;
    auto const [first, last] = fRecords.equal_range(object);
    for (auto it = first; it != last; ++it)
        if (it->second.deviant == d && it->second.isImmutable == isImmutable)
            return &it->second;
    Record const& record = fRecords.emplace(object, Record{object, d, isImmutable})->second;
    fLive.insert(&record);
    return &record;
}

std::pair<ReferenceCountingIntf*, Deviant> DeviantRegistry::getVariantInfo(Id id) const
{
    if (!id)
        return {nullptr, Deviant()};
    return {id->object, id->deviant};
}

bool DeviantRegistry::isImmutable(Id id) const
{
    if (!id)
        internal::raise("Null pointer passed to DeviantRegistry::isImmutable!", kSource, __LINE__);
    // A retracted id is dangling: look it up before touching it.
    if (!fLive.contains(id))
        internal::raise("Unable to find object in DeviantRegistry!", kSource, __LINE__);
    return id->isImmutable;
}

void DeviantRegistry::setIsImmutable(ImmutableObject const& handle, bool isImmutable)
{
    ReferenceCountingIntf* const object = handle.internal_counted();
    Deviant const d = handle.getDeviant();
    auto const [first, last] = fRecords.equal_range(object);
    for (auto it = first; it != last; ++it)
        if (it->second.deviant == d) {
            it->second.isImmutable = isImmutable;
            return;
        }
    getId(object, d, isImmutable);
}

void DeviantRegistry::retract(ReferenceCountingIntf* object)
{
    auto const [first, last] = fRecords.equal_range(object);
    for (auto it = first; it != last; ++it) {
        if (fRetract)
            fRetract(&it->second);
        fLive.erase(&it->second);
    }
    fRecords.erase(first, last);
}

} // namespace TAV
