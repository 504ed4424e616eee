#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/ChangeMap.h>
#include <tav/kernel/deviant/DeviantManagerHelper.h>

namespace TAV {

using NSInterface::ObjectIntf;

namespace {

bool absent(ObjectIntf const* slot)
{
    return slot == nullptr || slot == Deviant::InvalidObject;
}

bool present(ObjectIntf const* slot)
{
    return Deviant::isRealState(slot) || slot == Deviant::FallbackToRoot;
}

} // namespace

ChangeKind classifyChange(ObjectIntf const* now, ObjectIntf const* target)
{
    if (present(target))
        return present(now) ? ChangeKind::Modified : absent(now) ? ChangeKind::Added : ChangeKind::None;
    if (target == Deviant::InvalidObject)
        return absent(now) ? ChangeKind::None : ChangeKind::Removed;
    if (target == nullptr) {
        if (now == Deviant::FallbackToRoot)
            return ChangeKind::Modified;
        return Deviant::isRealState(now) ? ChangeKind::Removed : ChangeKind::None;
    }
    return ChangeKind::None;
}

ChangeKind classifyAssignment(ObjectIntf const* now, ObjectIntf const* target)
{
    if (target == nullptr || target == Deviant::FallbackToRoot)
        return ChangeKind::None;
    if (target == Deviant::InvalidObject)
        return absent(now) ? ChangeKind::None : ChangeKind::Removed;
    return absent(now) ? ChangeKind::Added : ChangeKind::Modified;
}

void classifyChangeMap(ChangeMap const& map, ChangeReport& report)
{
    for (ChangeMap::Entry const& entry : map) {
        ObjectIntf* const object = entry.object;
        switch (classifyChange(object->internal_getDeviation(report.target),
                               object->internal_getDeviation(report.source))) {
        case ChangeKind::Added: report.added.push_back(object); break;
        case ChangeKind::Removed: report.removed.push_back(object); break;
        case ChangeKind::Modified: report.modified.push_back(object); break;
        case ChangeKind::None: break;
        }
    }
}

DeviantManagerHelper::~DeviantManagerHelper() = default;

void DeviantManagerHelper::cancelTransaction(ChangeReport const& report)
{
    doTheJob(report);
}

void DeviantManagerHelper::undo(ChangeReport const& report)
{
    doTheJob(report);
}

void DeviantManagerHelper::redo(ChangeReport const& report)
{
    doTheJob(report);
}

void DeviantManagerHelper::assignToRoot(ChangeReport const& report)
{
    doTheJob(report);
}

void DeviantManagerHelper::doTheJob(ChangeReport const& report)
{
    Deviant const t = report.target;
    Deviant const s = report.source;
    for (ObjectIntf* object : report.added)
        object->internal_createDeviation(t);
    for (ObjectIntf* object : report.removed) {
        ObjectIntf* const slot = object->internal_getDeviation(t);
        if (slot != Deviant::FallbackToRoot)
            slot->destroy(t);
        object->internal_destroyDeviation(t);
    }
    for (ObjectIntf* object : report.added)
        if (ObjectIntf* to = object->internal_getDeviation(t); Deviant::isRealState(to))
            to->internal_deviationAssign(t, object->internal_getDeviation(s), s);
    for (ObjectIntf* object : report.modified) {
        ObjectIntf* const from = object->internal_getDeviation(s);
        if (from == Deviant::FallbackToRoot) {
            object->internal_setDeviation(t, Deviant::FallbackToRoot);
            continue;
        }
        ObjectIntf* to = object->internal_getDeviation(t);
        if (to == Deviant::FallbackToRoot)
            to = object->internal_createDeviation(t);
        // A slot that held nothing has nothing to take over.
        if (Deviant::isRealState(to) && Deviant::isRealState(from))
            to->internal_deviationAssign(t, from, s);
    }
}

} // namespace TAV
