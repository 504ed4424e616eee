#pragma once

// Class tests by tags instead of run-time type information: two copies of a
// type_info can exist across shared libraries, tags are one per name.

#include <tav/Export.h>
#include <tav/kernel/util/LightVector.h>

#include <initializer_list>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace TAV {
class ReferenceCountingIntf;
}

namespace TAV::CooperativeVisitor {

// The domain of every handle and interface of the kernel.
struct VisitationDomain {};

// What getVisitMethod hands back: `self` already adjusted to the class the
// function was bound for. Both null when nothing is bound.
struct VisitEntry {
    void* self = nullptr;
    void* fn = nullptr;
};

namespace internal {

struct ClassInfo {
    unsigned domain = 0;
    unsigned cls = 0;
    bool operator==(ClassInfo const&) const = default;
};

// Tags start at 1 per domain, in order of first use; 0 is never a class.
TAV_EXPORT unsigned GetTag(std::type_info const& cls, std::type_info const& domain);
// Unknown names give {0, 0}, which no table holds.
TAV_EXPORT ClassInfo GetTagFromName(char const* name);
TAV_EXPORT void BindTagToName(char const* name, ClassInfo const& info);

// Domains are tagged within the domain of domains, `void`.
template <class C, class D = VisitationDomain>
ClassInfo const& classInfo()
{
    static ClassInfo const info{GetTag(typeid(D), typeid(void)), GetTag(typeid(C), typeid(D))};
    return info;
}

using CastThunk = void* (*)(void* self);

} // namespace internal

// Visit functions by domain tag, then class tag. Meant to live in a static:
// its table is freed by the module clean-up list, after other singletons
// that may still visit, so the object itself has nothing to destroy.
class TAV_EXPORT DispatchTable {
public:
    DispatchTable();
    DispatchTable(DispatchTable const&) = delete;
    DispatchTable& operator=(DispatchTable const&) = delete;

    void bind(internal::ClassInfo const& info, void* fn);
    void* lookup(internal::ClassInfo const& info) const
    {
        if (info.domain >= fTable->size())
            return nullptr;
        LightVector<void*> const& classes = (*fTable)[info.domain];
        return info.cls < classes.size() ? classes[info.cls] : nullptr;
    }

private:
    LightVector<LightVector<void*>>* fTable;
};

namespace internal {

// One per interface class: the class itself first, then each base once,
// each with the thunk that adjusts the class's `this` to that base. Kept in
// a function-local static; its tables go with the module clean-up list.
class TAV_EXPORT ClassMetaInfo {
public:
    ClassMetaInfo(std::initializer_list<std::pair<ClassInfo, CastThunk>> entries);
    ClassMetaInfo(ClassMetaInfo const&) = delete;
    ClassMetaInfo& operator=(ClassMetaInfo const&) = delete;

    void* cast(void const* self, ClassInfo const& info) const
    {
        Tables const& t = *fTables;
        if (info.domain >= t.index.size())
            return nullptr;
        LightVector<unsigned> const& classes = t.index[info.domain];
        if (info.cls >= classes.size())
            return nullptr;
        unsigned const slot = classes[info.cls];
        if (slot == 0)
            return nullptr;
        CastThunk const thunk = t.thunks[slot - 1];
        return thunk ? thunk(const_cast<void*>(self)) : nullptr;
    }

    VisitEntry visit(void const* self, DispatchTable const& table) const;

private:
    struct Tables {
        // Entry slot + 1 by domain and class tag; 0 marks a class not listed.
        LightVector<LightVector<unsigned>> index;
        LightVector<ClassInfo> infos;
        LightVector<CastThunk> thunks;
    };
    Tables* fTables;
};

} // namespace internal

// A visitor binds free functions to classes in a static DispatchTable; the
// visited object finds the function bound to its nearest class.
class TAV_EXPORT VisitorBase {
public:
    explicit VisitorBase(DispatchTable const& table) : fTable(&table) {}
    virtual ~VisitorBase();

    VisitEntry find(ReferenceCountingIntf const& object) const;
    DispatchTable const& table() const { return *fTable; }

private:
    DispatchTable const* fTable;
};

// `Base` names what is visited; functions are bound per class C as
// `R fn(Self&, C&)` and reached through a trampoline of one signature.
template <class R, class Base>
class Visitor : public VisitorBase {
public:
    using Result = R;
    using Visited = Base;
    using VisitorBase::VisitorBase;

    template <class Self, class C, R (*Fn)(Self&, C&), class D = VisitationDomain>
    static void bind(DispatchTable& table)
    {
        Trampoline const trampoline = [](VisitorBase& visitor, void* self) -> R {
            return Fn(static_cast<Self&>(visitor), *static_cast<C*>(self));
        };
        table.bind(internal::classInfo<C, D>(), reinterpret_cast<void*>(trampoline));
    }

    // Calls the function of the nearest bound class; `fallback` when none is.
    template <class... Fallback>
    R visit(ReferenceCountingIntf const& object, Fallback&&... fallback)
    {
        VisitEntry const entry = find(object);
        if (!entry.fn) {
            if constexpr (std::is_void_v<R>)
                return;
            else
                return R(std::forward<Fallback>(fallback)...);
        }
        return reinterpret_cast<Trampoline>(entry.fn)(*this, entry.self);
    }

private:
    using Trampoline = R (*)(VisitorBase&, void*);
};

} // namespace TAV::CooperativeVisitor
