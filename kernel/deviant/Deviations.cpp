#include "kernel/deviant/DeviantImpl.h"
#include "kernel/deviant/DeviantInternal.h"

#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/Deviations.h>
#include <tav/kernel/util/Asserter.h>

namespace TAV {

using NSInterface::ObjectIntf;

namespace {

bool undoRecords(Deviant d)
{
    return d.impl()->maximumUndoLength >= 1 && d.impl()->transactionDepth >= 1;
}

} // namespace

// Works on the implementations directly: this runs on every named-deviant
// access, and each exported Deviant call would be a call through the PLT.
Deviant Deviations::normalise(Deviant d, Deviant objectRoot) const
{
    internal::DeviantImpl const* const given = d.impl();
    if (given && given->removed)
        DeviantAssertions::internalAssertAlways("object accessed after its deviant has been removed");
    internal::DeviantImpl const* const root = objectRoot.impl();
    if (!root || root->id != 0) {
        DeviantAssertions::internalAssert(false, Asserter::sNoMessage);
        if (!root)
            return Deviant();
    }
    if (given == root)
        return d;
    internal::DeviantImpl const* const givenRoot =
        !given ? nullptr : given->manager ? given->manager->getRoot().impl() : given->id == 0 ? given : nullptr;
    // A deviant of another model acts on root of this object's model.
    return givenRoot == root ? d : objectRoot;
}

ObjectIntf* Deviations::ownState(Deviant d) const
{
    return d.impl()->id == 0 ? rootState : internal::lookupState(d.impl(), owner);
}

// What a deviant without a state of its own sees: root as it was before
// root's open transaction, so named deviants never see uncommitted changes.
ObjectIntf* Deviations::readThrough(Deviant d, Deviant root) const
{
    ObjectIntf* const saved = internal::savedOldState(root.impl(), owner);
    if (Deviant::isRealState(saved))
        return saved;
    ObjectIntf* const base = saved == Deviant::InvalidObject ? saved : rootState;
    if (!Deviant::isRealState(base))
        d.assertObjectNotPresentInDeviant(owner);
    return base;
}

ObjectIntf* Deviations::readSlow(Deviant d, Deviant objectRoot) const
{
    if (rootState == Deviant::ModelDestroyed) {
        DeviantAssertions::internalAssertAlways("object accessed after its model has been destroyed");
        return rootState;
    }
    Deviant const dv = normalise(d, objectRoot);
    if (dv.isNull())
        return rootState;
    ObjectIntf* const state = ownState(dv);
    if (Deviant::isRealState(state) || state == Deviant::ModelDestroyed)
        return state;
    if (state == Deviant::InvalidObject) {
        dv.assertObjectNotPresentInDeviant(owner);
        return state;
    }
    return readThrough(dv, objectRoot);
}

ObjectIntf* Deviations::write(Deviant d, Deviant objectRoot, StateFactory const& factory)
{
    if (rootState == Deviant::ModelDestroyed) {
        DeviantAssertions::internalAssertAlways("object accessed after its model has been destroyed");
        return rootState;
    }
    Deviant const dv = normalise(d, objectRoot);
    if (dv.isNull())
        return rootState;
    if (DeviantAssertions::sAssertionsEnabled)
        dv.assertWritableObject(owner);

    ObjectIntf* const state = ownState(dv);
    if (state == nullptr || state == Deviant::FallbackToRoot) {
        ObjectIntf* const base = readThrough(dv, objectRoot);
        if (!Deviant::isRealState(base))
            return base;
        ObjectIntf* const copy = copyState(dv, base, objectRoot, factory);
        if (dv.getDeviantId() == 0)
            rootState = copy;
        else
            dv.impl()->objectsDeviating->insert(owner, copy);
        if (undoRecords(dv) && !internal::savedOldState(dv.impl(), owner))
            internal::saveOldState(dv.impl(), owner, state);
        return copy;
    }
    if (state == Deviant::InvalidObject) {
        dv.assertObjectNotPresentInDeviant(owner);
        return state;
    }
    // The live state changes in place; the change set keeps a copy, once.
    if (undoRecords(dv) && !internal::savedOldState(dv.impl(), owner))
        internal::saveOldState(dv.impl(), owner, copyState(dv, state, dv, factory));
    return state;
}

ObjectIntf* Deviations::slot(Deviant d, Deviant objectRoot) const
{
    if (objectRoot.isNull())
        return rootState;
    if (d != objectRoot && d.getRootDeviant() != objectRoot)
        d = objectRoot;
    return d.getDeviantId() == 0 ? rootState : internal::lookupState(d.impl(), owner);
}

ObjectIntf* Deviations::copyState(Deviant d, ObjectIntf* source, Deviant sourceDeviant, StateFactory const& factory)
{
    if (!Deviant::isRealState(source))
        return source;
    ObjectIntf* const copy = d.getDeviantId() == 0 ? factory.createRoot(d) : factory.createNamed(d);
    try {
        copy->internal_deviationAssign(d, source, sourceDeviant);
    } catch (...) {
        delete copy;
        throw;
    }
    return copy;
}

} // namespace TAV
