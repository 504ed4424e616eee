#pragma once

#include <tav/Export.h>
#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/deviant/ReportOfChanges.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

#include <type_traits>

namespace TAV {

class ClassObject;

// The client side of a listener. The deviant forms call the plain forms by
// default; a listener that overrides neither is never called for them.
class TAV_EXPORT ListenerBase {
public:
    virtual ~ListenerBase();
    virtual void onDeviantDestroyed() {}
    virtual void onSyncFromRoot() {}
    virtual void onBeginTransaction() {}
    virtual void onEndTransaction() {}
    virtual void onBeginTransactionIn(Deviant const&) { onBeginTransaction(); }
    virtual void onEndTransactionIn(Deviant const&) { onEndTransaction(); }
    virtual void onDeviantDestroyedFrom(Deviant const&) { onDeviantDestroyed(); }
    virtual void onSyncFromRootFrom(Deviant const&) { onSyncFromRoot(); }
};

class TAV_EXPORT ObjectDeletionListener {
public:
    virtual ~ObjectDeletionListener();
    virtual void onObjectDeleted(NSInterface::ClassObjectIntf* object) = 0;
};

// 0 places a new observer first, 1 and 2 last; any other value registers nothing.
struct ListenerNotifyHint {
    int hint = 1;
};

namespace internal {

// What a listener does, found once at registration so that walks skip the
// calls that would do nothing, with no virtual call.
struct ListenerCalls {
    bool beginTransaction = true;
    bool endTransaction = true;
    bool deviantDestroyed = true;
    bool syncFromRoot = true;
    bool modify = true;
    bool validate = true;
    bool observe = true;
};

// What the listener lists hold: a listener and its report.
class TAV_EXPORT ListenerHolderBase : public CooperativeVisitor::Visitor<void, ClassObject> {
public:
    ListenerHolderBase(ListenerBase* listener, CooperativeVisitor::DispatchTable const& table, ListenerCalls calls)
        : Visitor(table), fListener(listener), fCalls(calls)
    {
    }
    ~ListenerHolderBase() override;

    virtual ListenerBase* getListener() const { return fListener; }
    // Empties the report and remembers the deviant and its old view.
    virtual void setReportContext(Deviant, Deviant) {}
    virtual void notifyModify() {}
    virtual bool notifyValidate() { return true; }
    virtual void notifyObserve() {}

    ListenerBase* listener() const { return fListener; }
    ListenerCalls const& calls() const { return fCalls; }

private:
    ListenerBase* fListener;
    ListenerCalls fCalls;
};

// Both forms of a notification are ListenerBase's own (the name finds no
// declaration in the client class): the call would do nothing.
template <class In, class Plain>
constexpr bool baseOnly =
    std::is_same_v<In, void (ListenerBase::*)(Deviant const&)> && std::is_same_v<Plain, void (ListenerBase::*)()>;

// Serves a client listener `L` for the objects of interface `T`: each
// visited object is filed into the report, old view to deviant. `L` needs
// only what it is registered for: onModify(report), onValidate(report) ->
// bool, onObserve(report).
template <class T, class L>
class ListenerHolder final : public ListenerHolderBase {
public:
    using Report = ReportOfChanges<T*>;

    explicit ListenerHolder(L* listener) : ListenerHolderBase(listener, table(), callsOf()), fClient(listener) {}

    void setReportContext(Deviant d, Deviant oldView) override
    {
        fReport.clear();
        fReport.target = d;
        fReport.source = oldView;
    }
    void notifyModify() override
    {
        if constexpr (requires { fClient->onModify(fReport); })
            fClient->onModify(fReport);
    }
    bool notifyValidate() override
    {
        if constexpr (requires { fClient->onValidate(fReport); })
            return fClient->onValidate(fReport);
        return true;
    }
    void notifyObserve() override
    {
        if constexpr (requires { fClient->onObserve(fReport); })
            fClient->onObserve(fReport);
    }

private:
    static void file(ListenerHolder& self, T& object)
    {
        Report& r = self.fReport;
        switch (classifyChange(object.internal_getDeviation(r.source), object.internal_getDeviation(r.target))) {
        case ChangeKind::Added: r.added.push_back(&object); break;
        case ChangeKind::Removed: r.removed.push_back(&object); break;
        case ChangeKind::Modified: r.modified.push_back(&object); break;
        case ChangeKind::None: break;
        }
    }

    static CooperativeVisitor::DispatchTable const& table()
    {
        static CooperativeVisitor::DispatchTable sTable;
        static bool const sBound = (bind<ListenerHolder, T, &ListenerHolder::file>(sTable), true);
        (void)sBound;
        return sTable;
    }

    static ListenerCalls callsOf()
    {
        ListenerCalls c;
        c.beginTransaction = !baseOnly<decltype(&L::onBeginTransactionIn), decltype(&L::onBeginTransaction)>;
        c.endTransaction = !baseOnly<decltype(&L::onEndTransactionIn), decltype(&L::onEndTransaction)>;
        c.deviantDestroyed = !baseOnly<decltype(&L::onDeviantDestroyedFrom), decltype(&L::onDeviantDestroyed)>;
        c.syncFromRoot = !baseOnly<decltype(&L::onSyncFromRootFrom), decltype(&L::onSyncFromRoot)>;
        c.modify = requires(L* l, Report const& r) { l->onModify(r); };
        c.validate = requires(L* l, Report const& r) { l->onValidate(r); };
        c.observe = requires(L* l, Report const& r) { l->onObserve(r); };
        return c;
    }

    L* fClient;
    Report fReport;
};

} // namespace internal
} // namespace TAV
