#include "kernel/deviant/ChangeTracking.h"

#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/DeviantManagerHelper.h>

#include <algorithm>
#include <utility>

namespace TAV {

namespace {

void checkStep(internal::DeviantImpl const* impl, char const* nullDeviant, char const* withinTransaction,
               char const* nonRoot)
{
    DeviantAssertions::internalAssert(impl != nullptr, nullDeviant);
    if (!impl)
        return;
    DeviantAssertions::internalAssert(impl->transactionDepth == 0, withinTransaction);
    DeviantAssertions::internalAssert(impl->id == 0, nonRoot);
}

ChangeSet* entryAt(internal::DeviantImpl const* impl, int index)
{
    return index >= 0 && index < static_cast<int>(impl->undoStack.size()) ? impl->undoStack[index] : nullptr;
}

} // namespace

void Deviant::undo(UndoRedoChain* chain) const
{
    checkStep(fImpl, "undo on null deviant", "cannot undo within a transaction", "undo on non-root deviant");
    if (!fImpl || fImpl->undoPosition == 0)
        return;
    --fImpl->undoPosition;
    executeChangeSetOnTop(true, chain);
    std::swap(fImpl->undoStack[fImpl->undoPosition]->changeLevel, fImpl->currentChangeLevel);
}

void Deviant::redo(UndoRedoChain* chain) const
{
    checkStep(fImpl, "redo on null deviant", "cannot redo within a transaction", "redo on non-root deviant");
    if (!fImpl || fImpl->undoPosition == static_cast<int>(fImpl->undoStack.size()))
        return;
    executeChangeSetOnTop(false, chain);
    std::swap(fImpl->undoStack[fImpl->undoPosition]->changeLevel, fImpl->currentChangeLevel);
    ++fImpl->undoPosition;
}

void Deviant::undoToChangeLevel(int aChangeLevel, UndoRedoChain* chain) const
{
    checkStep(fImpl, "undoToChangeLevel on null deviant", "cannot undoToChangeLevel within a transaction",
              "undoToChangeLevel on non-root deviant");
    if (!fImpl)
        return;
    if (aChangeLevel == fImpl->currentChangeLevel) {
        if (chain && chain->next)
            chain->next->deviant.undoToChangeLevel(chain->next->changeLevel, chain->next);
        return;
    }
    bool found = false;
    for (int i = fImpl->undoPosition - 1; i >= 0 && !found; --i)
        found = fImpl->undoStack[i]->changeLevel == aChangeLevel;
    internalAssert(found, "invalid change level for undoToChangeLevel");
    while (found && fImpl->currentChangeLevel != aChangeLevel && fImpl->undoPosition > 0)
        undo(chain);
}

void Deviant::redoToChangeLevel(int aChangeLevel, UndoRedoChain* chain) const
{
    checkStep(fImpl, "redoToChangeLevel on null deviant", "cannot redoToChangeLevel within a transaction",
              "redoToChangeLevel on non-root deviant");
    if (!fImpl)
        return;
    if (aChangeLevel == fImpl->currentChangeLevel) {
        if (chain && chain->next)
            chain->next->deviant.redoToChangeLevel(chain->next->changeLevel, chain->next);
        return;
    }
    int const length = static_cast<int>(fImpl->undoStack.size());
    bool found = false;
    for (int i = fImpl->undoPosition; i < length && !found; ++i)
        found = fImpl->undoStack[i]->changeLevel == aChangeLevel;
    internalAssert(found, "invalid change level for redoToChangeLevel");
    while (found && fImpl->currentChangeLevel != aChangeLevel && fImpl->undoPosition < length)
        redo(chain);
}

namespace {

void playGroup(std::vector<std::pair<Deviant, int>> const& levels, bool isUndo)
{
    DeviantAssertions::internalAssert(!levels.empty(), "empty change level list");
    if (levels.empty())
        return;
    std::vector<UndoRedoChain> chain(levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i)
        chain[i] = UndoRedoChain{levels[i].first, levels[i].second, i + 1 < levels.size() ? &chain[i + 1] : nullptr};
    if (isUndo)
        chain[0].deviant.undoToChangeLevel(chain[0].changeLevel, &chain[0]);
    else
        chain[0].deviant.redoToChangeLevel(chain[0].changeLevel, &chain[0]);
}

} // namespace

void Deviant::undoGroup(std::vector<std::pair<Deviant, int>> const& levels)
{
    playGroup(levels, true);
}

void Deviant::redoGroup(std::vector<std::pair<Deviant, int>> const& levels)
{
    playGroup(levels, false);
}

void Deviant::executeChangeSetOnTop(bool isUndo, UndoRedoChain* chain) const
{
    if (chain)
        internalAssert(chain->deviant == *this, "chain traversal error");
    internal::ModelHold const hold(fImpl);
    if (!fImpl || fImpl->withinUndoOrRedoOrCancel)
        return;
    internal::DeviantImpl* const impl = fImpl;
    ChangeSet* const entry = entryAt(impl, impl->undoPosition);
    if (!entry)
        return;
    std::swap(impl->referredModels, entry->referredModels);
    internalAssert(impl->current.oldStates.empty(), "executeChangeSetOnTop: current changeset is not empty");
    for (ChangeMap::Entry const& e : entry->oldStates)
        impl->current.oldStates.insert(e.object, e.state);

    internal::FinalizeCommitTransaction guard(impl, entry);
    internal::notifyBeginTransaction(impl);
    // What the deviant shows now: copied at the first play, kept ever after.
    bool const firstPlay = entry->newStates.empty();
    // Replacing a present key keeps the walk's place; the replaced pointers are the entry's.
    for (ChangeMap::Entry const& e : impl->current.oldStates)
        impl->current.oldStates.insert(e.object, firstPlay ? e.object->deviant_getCopyOfDeviation(*this)
                                                            : entry->newStates.find(e.object));

    internal::OldView view(impl, "<internal: undo/redo>", &entry->oldStates);
    impl->withinTransactionUndoOrRedo = true;
    impl->withinUndoOrRedoOrCancel = true;
    ChangeReport report;
    report.target = *this;
    report.source = view.deviant();
    classifyChangeMap(entry->oldStates, report);
    DeviantManagerHelper& helper = internal::helperOf(impl);
    if (isUndo)
        helper.undo(report);
    else
        helper.redo(report);

    view.readFrom(&impl->current.oldStates);
    internal::collectForObservers(impl, view.deviant(), entry->oldStates);
    internal::commitTransientStates(impl, entry->oldStates);
    guard.transientStateHasBeenCommited();
    impl->withinTransactionUndoOrRedo = false;
    if (!chain) {
        internal::notifyObservingListeners(impl, view.deviant());
    } else if (entry->changeLevel == chain->changeLevel) {
        // The target is reached: the later models go first, then this one's observers.
        if (UndoRedoChain* next = chain->next) {
            if (isUndo)
                next->deviant.undoToChangeLevel(next->changeLevel, next);
            else
                next->deviant.redoToChangeLevel(next->changeLevel, next);
        }
        internal::notifyObservingListeners(impl, view.deviant());
    }
    impl->withinUndoOrRedoOrCancel = false;
    guard.finish();
    internalAssert(impl->current.oldStates.empty(), "executeChangeSetOnTop: current changeset is not empty");
}

int Deviant::getCurrentChangeLevel() const
{
    internalAssert(fImpl != nullptr, "getCurrentChangeLevel on null deviant");
    return fImpl ? fImpl->currentChangeLevel : 0;
}

bool Deviant::isValidUndoChangeLevel(int aChangeLevel) const
{
    if (!fImpl || aChangeLevel >= fImpl->currentChangeLevel)
        return false;
    auto const first = fImpl->undoStack.begin();
    return std::any_of(first, first + fImpl->undoPosition, [&](ChangeSet const* s) { return s->changeLevel == aChangeLevel; });
}

bool Deviant::isValidRedoChangeLevel(int aChangeLevel) const
{
    if (!fImpl || aChangeLevel < fImpl->currentChangeLevel)
        return false;
    return std::any_of(fImpl->undoStack.begin() + fImpl->undoPosition, fImpl->undoStack.end(),
                       [&](ChangeSet const* s) { return s->changeLevel == aChangeLevel; });
}

int Deviant::getUndoChangeLevelAt(int index) const
{
    internalAssert(fImpl != nullptr, "getUndoChangeLevelAt on null deviant");
    ChangeSet const* s = fImpl && index >= 0 ? entryAt(fImpl, fImpl->undoPosition - 1 - index) : nullptr;
    return s ? s->changeLevel : -1;
}

int Deviant::getRedoChangeLevelAt(int index) const
{
    internalAssert(fImpl != nullptr, "getRedoChangeLevelAt on null deviant");
    ChangeSet const* s = fImpl && index >= 0 ? entryAt(fImpl, fImpl->undoPosition + index) : nullptr;
    return s ? s->changeLevel : -1;
}

std::string Deviant::getUndoNameAt(int index) const
{
    internalAssert(fImpl != nullptr, "getUndoNameAt on null deviant");
    ChangeSet const* s = fImpl && index >= 0 ? entryAt(fImpl, fImpl->undoPosition - 1 - index) : nullptr;
    return s ? s->name : std::string();
}

std::string Deviant::getRedoNameAt(int index) const
{
    internalAssert(fImpl != nullptr, "getNameOfRedo on null deviant");
    ChangeSet const* s = fImpl && index >= 0 ? entryAt(fImpl, fImpl->undoPosition + index) : nullptr;
    return s ? s->name : std::string();
}

int Deviant::getUndoStackLength() const
{
    internalAssert(fImpl != nullptr, "getUndoStackLength on null deviant");
    return fImpl ? fImpl->undoPosition : 0;
}

int Deviant::getRedoStackLength() const
{
    internalAssert(fImpl != nullptr, "getRedoStackLength on null deviant");
    return fImpl ? static_cast<int>(fImpl->undoStack.size()) - fImpl->undoPosition : 0;
}

int Deviant::getMaximumUndoStackLength() const
{
    return fImpl ? fImpl->maximumUndoLength : 0;
}

void Deviant::setMaximumUndoStackLength(int length) const
{
    internalAssert(fImpl != nullptr, "setMaximumUndoStackLength on null deviant");
    if (!fImpl)
        return;
    internalAssert(fImpl->transactionDepth == 0, "cannot setMaximumUndoStackLength within a transaction");
    internalAssert(fImpl->id == 0, "setMaximumUndoStackLength on non-root deviant");
    fImpl->maximumUndoLength = std::max(length, 0);
    auto& stack = fImpl->undoStack;
    while (static_cast<int>(stack.size()) > fImpl->maximumUndoLength) {
        internal::destroyChangeSet(stack.front());
        stack.pop_front();
    }
    // Dropping from the front leaves the position where it was unless it is
    // now past the end.
    fImpl->undoPosition = std::min(fImpl->undoPosition, static_cast<int>(stack.size()));
}

void Deviant::clearRedoStack() const
{
    internalAssert(fImpl != nullptr, "clearRedoStack on null deviant");
    if (!fImpl)
        return;
    auto& stack = fImpl->undoStack;
    while (static_cast<int>(stack.size()) > fImpl->undoPosition) {
        internal::destroyChangeSet(stack.back());
        stack.pop_back();
    }
}

void Deviant::clearUndoStack() const
{
    internalAssert(fImpl != nullptr, "clearUndoStack on null deviant");
    if (!fImpl)
        return;
    clearRedoStack();
    for (ChangeSet* set : fImpl->undoStack)
        internal::destroyChangeSet(set);
    fImpl->undoStack.clear();
    fImpl->undoPosition = 0;
}

void Deviant::disableUndo() const
{
    internalAssert(fImpl != nullptr, "disableUndo on null deviant");
    if (!fImpl)
        return;
    clearUndoStack();
    fImpl->maximumUndoLength = 0;
}

void Deviant::clearRedoStackFromAndIncluding(int aChangeLevel) const
{
    internalAssert(fImpl != nullptr, "clearRedoStackFromAndIncluding on null deviant");
    if (!fImpl)
        return;
    internalAssert(aChangeLevel > fImpl->currentChangeLevel, "aChangeLevel > getCurrentChangeLevel()");
    auto& stack = fImpl->undoStack;
    while (!stack.empty() && stack.back()->changeLevel >= aChangeLevel) {
        internal::destroyChangeSet(stack.back());
        stack.pop_back();
    }
    fImpl->undoPosition = std::min(fImpl->undoPosition, static_cast<int>(stack.size()));
}

void Deviant::clearUndoStackFromAndIncluding(int aChangeLevel) const
{
    internalAssert(fImpl != nullptr, "clearUndoStackFromAndIncluding on null deviant");
    if (!fImpl)
        return;
    internalAssert(aChangeLevel <= fImpl->currentChangeLevel, "aChangeLevel <= getCurrentChangeLevel()");
    auto& stack = fImpl->undoStack;
    while (!stack.empty() && stack.front()->changeLevel <= aChangeLevel) {
        internal::destroyChangeSet(stack.front());
        stack.pop_front();
        fImpl->undoPosition = std::max(fImpl->undoPosition - 1, 0);
    }
}

} // namespace TAV
