#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>

#include <map>
#include <unordered_set>
#include <utility>

namespace TAV {

class ImmutableObject;
class ReferenceCountingIntf;

// Identifiers handed to the host binding for (object, deviant, mutability).
// An identifier is the address of its record.
class TAV_EXPORT DeviantRegistry {
public:
    struct Record {
        ReferenceCountingIntf* object;
        Deviant deviant;
        bool isImmutable;
    };
    using Id = Record const*;
    // Told about each identifier that goes away; set by the host binding.
    using RetractFn = void (*)(Id id);

    static DeviantRegistry& instance();

    Id getId(ReferenceCountingIntf* object, Deviant d, bool isImmutable);
    std::pair<ReferenceCountingIntf*, Deviant> getVariantInfo(Id id) const;
    bool isImmutable(Id id) const;
    // Adds the record of the handle's object and deviant if there is none.
    void setIsImmutable(ImmutableObject const& handle, bool isImmutable);
    void retract(ReferenceCountingIntf* object);
    void debugRetractCheck(ReferenceCountingIntf*) {}

    void setRetractFunction(RetractFn fn) { fRetract = fn; }
    std::size_t size() const { return fRecords.size(); }

private:
    DeviantRegistry() = default;

    std::multimap<ReferenceCountingIntf*, Record> fRecords;
    std::unordered_set<Id> fLive;
    RetractFn fRetract = nullptr;
};

} // namespace TAV
