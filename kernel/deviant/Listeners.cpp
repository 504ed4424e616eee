#include "kernel/deviant/ChangeTracking.h"

#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/Listeners.h>

#include <algorithm>

namespace TAV {

using internal::DeviantImpl;
using internal::ListenerHolderBase;
using Holders = std::vector<ListenerHolderBase*>;

ListenerBase::~ListenerBase() = default;
ObjectDeletionListener::~ObjectDeletionListener() = default;
internal::ListenerHolderBase::~ListenerHolderBase() = default;

namespace {

bool isRegistered(Holders const& live, ListenerHolderBase const* holder)
{
    return std::find(live.begin(), live.end(), holder) != live.end();
}

// The policy governs the three report calls only.
template <class F>
void guarded(DeviantImpl const* impl, F&& call)
{
    if (impl->exceptionPolicy == LetListenerExceptionsPass) {
        call();
        return;
    }
    try {
        call();
    } catch (...) {
    }
}

template <class F>
void swallowing(F&& call)
{
    try {
        call();
    } catch (...) {
    }
}

bool registerIn(DeviantImpl* impl, Holders DeviantImpl::*list, ListenerHolderBase* holder, int hint)
{
    DeviantAssertions::internalAssert(impl != nullptr, "registerListener on null deviant");
    if (!impl)
        return false;
    Holders& live = impl->*list;
    for (ListenerHolderBase const* h : live)
        if (h->getListener() == holder->getListener())
            return false;
    if (hint == 0)
        live.insert(live.begin(), holder);
    else if (hint == 1 || hint == 2)
        live.push_back(holder);
    else
        delete holder; // reported as done, so the list took the holder over
    return true;
}

bool unregisterIn(DeviantImpl* impl, Holders DeviantImpl::*list, ListenerBase* listener)
{
    DeviantAssertions::internalAssert(impl != nullptr, "unregisterListener on null deviant");
    DeviantAssertions::internalAssert(listener != nullptr, "cannot unregister null listener with deviant");
    if (!impl)
        return false;
    Holders& live = impl->*list;
    auto const it = std::find_if(live.begin(), live.end(),
                                 [&](ListenerHolderBase const* h) { return h->getListener() == listener; });
    if (it == live.end())
        return false;
    ListenerHolderBase* const holder = *it;
    live.erase(it);
    delete holder;
    return true;
}

void visitAll(ListenerHolderBase* holder, ChangeMap const& changes)
{
    for (ChangeMap::Entry const& entry : changes)
        holder->visit(*entry.object);
}

template <class Wanted, class Call>
void tellObservers(DeviantImpl* impl, Wanted wanted, Call call)
{
    Holders const copy = impl->observers;
    for (ListenerHolderBase* holder : copy)
        if (isRegistered(impl->observers, holder) && (holder->calls().*wanted))
            swallowing([&] { call(*holder->listener()); });
}

} // namespace

namespace internal {

void notifyBeginTransaction(DeviantImpl* impl)
{
    tellObservers(impl, &ListenerCalls::beginTransaction,
                  [&](ListenerBase& l) { l.onBeginTransactionIn(Deviant(impl)); });
}

void notifyEndTransaction(DeviantImpl* impl)
{
    tellObservers(impl, &ListenerCalls::endTransaction, [&](ListenerBase& l) { l.onEndTransactionIn(Deviant(impl)); });
}

void notifyModifyingListeners(DeviantImpl* impl, Deviant oldView)
{
    Holders const copy = impl->modifiers;
    for (ListenerHolderBase* holder : copy) {
        if (!isRegistered(impl->modifiers, holder) || !holder->calls().modify)
            continue;
        holder->setReportContext(Deviant(impl), oldView);
        // Walked afresh for each holder: it sees what the earlier ones wrote.
        visitAll(holder, impl->current.oldStates);
        guarded(impl, [&] { holder->notifyModify(); });
        if (isRegistered(impl->modifiers, holder))
            holder->setReportContext(Deviant(impl), oldView);
    }
}

bool notifyValidatingListeners(DeviantImpl* impl, Deviant oldView)
{
    Holders const copy = impl->validators;
    for (ListenerHolderBase* holder : copy) {
        if (!isRegistered(impl->validators, holder) || !holder->calls().validate)
            continue;
        holder->setReportContext(Deviant(impl), oldView);
        visitAll(holder, impl->current.oldStates);
        bool accepted = true;
        guarded(impl, [&] { accepted = holder->notifyValidate(); });
        if (isRegistered(impl->validators, holder))
            holder->setReportContext(Deviant(impl), oldView);
        if (!accepted) {
            Deviant(impl).cancelTransaction();
            return false;
        }
    }
    return true;
}

void collectForObservers(DeviantImpl* impl, Deviant oldView, ChangeMap const& changes)
{
    Holders observing;
    for (ListenerHolderBase* holder : impl->observers)
        if (holder->calls().observe) {
            holder->setReportContext(Deviant(impl), oldView);
            observing.push_back(holder);
        }
    if (observing.empty())
        return;
    for (ChangeMap::Entry const& entry : changes)
        for (ListenerHolderBase* holder : observing)
            holder->visit(*entry.object);
}

void notifyObservingListeners(DeviantImpl* impl, Deviant oldView)
{
    auto const once = [&](ListenerHolderBase const* holder) {
        return std::count(impl->observers.begin(), impl->observers.end(), holder) == 1;
    };
    Holders const copy = impl->observers;
    for (ListenerHolderBase* holder : copy) {
        if (!once(holder) || !holder->calls().observe)
            continue;
        guarded(impl, [&] { holder->notifyObserve(); });
        if (once(holder))
            holder->setReportContext(Deviant(impl), oldView);
    }
}

void notifySyncFromRoot(DeviantImpl* impl)
{
    tellObservers(impl, &ListenerCalls::syncFromRoot, [&](ListenerBase& l) { l.onSyncFromRootFrom(Deviant(impl)); });
}

void tellDeviantDestroyedAndDeleteHolders(DeviantImpl* impl)
{
    std::vector<ListenerBase*> told;
    for (Holders DeviantImpl::*list : {&DeviantImpl::modifiers, &DeviantImpl::validators, &DeviantImpl::observers}) {
        Holders& live = impl->*list;
        while (!live.empty()) {
            // Off the list before the call, so a listener that unregisters
            // itself there finds nothing to delete.
            ListenerHolderBase* const holder = live.back();
            live.pop_back();
            ListenerBase* const listener = holder->listener();
            if (std::find(told.begin(), told.end(), listener) == told.end()) {
                told.push_back(listener);
                if (holder->calls().deviantDestroyed)
                    swallowing([&] { listener->onDeviantDestroyedFrom(Deviant(impl)); });
            }
            delete holder;
        }
    }
}

void clearReports(DeviantImpl* impl)
{
    for (Holders DeviantImpl::*list : {&DeviantImpl::modifiers, &DeviantImpl::validators, &DeviantImpl::observers}) {
        Holders const copy = impl->*list;
        for (ListenerHolderBase* holder : copy) {
            ListenerCalls const& c = holder->calls();
            if (c.modify || c.validate || c.observe)
                holder->setReportContext(Deviant(impl), Deviant());
        }
    }
}

void deleteHolders(DeviantImpl* impl)
{
    for (Holders DeviantImpl::*list : {&DeviantImpl::modifiers, &DeviantImpl::validators, &DeviantImpl::observers}) {
        Holders doomed;
        doomed.swap(impl->*list);
        for (ListenerHolderBase* holder : doomed)
            delete holder;
    }
}

} // namespace internal

bool Deviant::registerModifierOnCommit(ListenerHolderBase* holder) const
{
    return registerIn(fImpl, &DeviantImpl::modifiers, holder, 1);
}

bool Deviant::registerValidatorOnCommit(ListenerHolderBase* holder) const
{
    return registerIn(fImpl, &DeviantImpl::validators, holder, 1);
}

bool Deviant::registerObservingListener(ListenerHolderBase* holder) const
{
    return registerIn(fImpl, &DeviantImpl::observers, holder, 1);
}

bool Deviant::registerObservingListener(ListenerHolderBase* holder, ListenerNotifyHint const& hint) const
{
    return registerIn(fImpl, &DeviantImpl::observers, holder, hint.hint);
}

bool Deviant::unregisterModifierOnCommit(ListenerBase* listener) const
{
    return unregisterIn(fImpl, &DeviantImpl::modifiers, listener);
}

bool Deviant::unregisterValidatorOnCommit(ListenerBase* listener) const
{
    return unregisterIn(fImpl, &DeviantImpl::validators, listener);
}

bool Deviant::unregisterObservingListener(ListenerBase* listener) const
{
    return unregisterIn(fImpl, &DeviantImpl::observers, listener);
}

void Deviant::registerObjectDeletionListener(ObjectDeletionListener* listener) const
{
    internalAssert(fImpl != nullptr, "registerListener on null deviant");
    if (fImpl)
        fImpl->objectDeletionListeners.push_back(listener);
}

void Deviant::unregisterObjectDeletionListener(ObjectDeletionListener* listener) const
{
    internalAssert(fImpl != nullptr, "unregisterListener on null deviant");
    if (!fImpl)
        return;
    auto& live = fImpl->objectDeletionListeners;
    auto const it = std::find(live.begin(), live.end(), listener);
    if (it != live.end())
        live.erase(it);
}

void Deviant::removeObjectFromModel(NSInterface::ObjectIntf* object) const
{
    internalAssert(fImpl != nullptr, "removeObjectFromModel on null deviant.");
    if (!fImpl)
        return;
    if (fImpl->manager)
        fImpl->manager->removeObjectFromModel(object);
    // The model's index of the object is dropped with the models' own code.
    auto* const classObject = static_cast<NSInterface::ClassObjectIntf*>(
        object->cast(CooperativeVisitor::internal::classInfo<NSInterface::ClassObjectIntf>()));
    auto const copy = fImpl->objectDeletionListeners;
    for (ObjectDeletionListener* listener : copy) {
        auto const& live = fImpl->objectDeletionListeners;
        if (std::find(live.begin(), live.end(), listener) != live.end())
            swallowing([&] { listener->onObjectDeleted(classObject); });
    }
}

void Deviant::setExceptionPolicy(ListenerExceptionPolicy policy) const
{
    if (fImpl && isValid() && fImpl->currentChangeLevel == 1 && fImpl->transactionDepth == 0)
        internalAssert(getUndoStackLength() == 0, "Model must be empty");
    else
        internalAssertAlways("Model must be empty");
    if (fImpl)
        fImpl->exceptionPolicy = policy;
}

} // namespace TAV
