#pragma once

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/Object_h.h>
#include <tav/TAV/String.h>
#include <tav/TAV/Type_h.h>
#include <tav/kernel/deviant/Deviations.h>
#include <tav/kernel/family/ModelMembership.h>
#include <tav/kernel/family/InterfaceCasts.h>
#include <tav/kernel/family/Support.h>

#include <cstdint>

namespace TAV::family {

// A metaclass slot's class, read in the meta-registry; empty while the slot is.
template <class M>
ImmutableClass metaClassOf(M* aMeta)
{
    return aMeta ? ImmutableClass(static_cast<NSInterface::ClassIntf*>(aMeta), metaRegistryRoot()) : ImmutableClass();
}

// Everything an object of a generated class does that does not depend on its class:
// identity, count, its states in each deviant and the object side of the deviation
// contract. The generated class adds the direct reads of its fields and the typed
// views of its current state. `State` is the generated state class; it names the
// class (kIdentity) and its metaclass slot (metaSlot()).
template <class Intf, class State>
class ObjectBase : public Intf {
public:
    ObjectBase() { deviations.owner = canonical(static_cast<Intf*>(this)); }
    ~ObjectBase() override
    {
        // Counted up while the model is told, so that nothing it does frees this twice.
        if (rootDeviant.impl()) {
            ++refCount;
            leaveModel(deviations.owner, rootDeviant, objectIndex);
            --refCount;
        }
        deviant_destroyState(deviations.rootState);
    }
    ObjectBase(ObjectBase const&) = delete;
    ObjectBase& operator=(ObjectBase const&) = delete;

    void incRef() override { ++refCount; }
    void decRef() override
    {
        if (refCount < 1) [[unlikely]]
            countBelowZero(State::kIdentity);
        if (--refCount == 0)
            delete this;
    }
    int numRef() const override { return refCount; }

    void disconnectForDestroy(Deviant aDeviant) override
    {
        family::disconnectForDestroy(upcast<NSInterface::ClassObjectIntf>(static_cast<Intf*>(this)), aDeviant,
                                     &Intf::sIntrospectiveMethods);
    }
    void destroyContents(Deviant aDeviant, bool aTopLevel) override
    {
        family::destroyContents(upcast<NSInterface::ClassObjectIntf>(static_cast<Intf*>(this)), aDeviant, aTopLevel,
                                &Intf::sIntrospectiveMethods);
    }
    void destroy(Deviant aDeviant) override
    {
        family::destroyObject(upcast<NSInterface::ClassObjectIntf>(static_cast<Intf*>(this)), aDeviant);
    }

    bool deviant_isValid(Deviant aDeviant) override { return isValidIn(deviations, rootDeviant, aDeviant); }
    void deviant_destroyState(NSInterface::ObjectIntf* aState) override
    {
        if (Deviant::isRealState(aState))
            delete aState;
    }
    void deviant_markModelDestroyed() override
    {
        deviant_destroyState(deviations.rootState);
        deviations.rootState = Deviant::ModelDestroyed;
        rootDeviant = Deviant();
    }
    void deviant_commitTransientState(Deviant aDeviant) override
    {
        commitTransientState(deviations, rootDeviant, aDeviant, sStateFactory);
    }
    NSInterface::ObjectIntf* deviant_getCopyOfDeviation(Deviant aDeviant) override
    {
        return Deviations::copyState(aDeviant, internal_getDeviation(aDeviant), aDeviant, sStateFactory);
    }
    NSInterface::ObjectIntf* internal_getDeviation(Deviant aDeviant) override
    {
        return deviations.slot(aDeviant, rootDeviant);
    }
    void internal_setDeviation(Deviant aDeviant, NSInterface::ObjectIntf* aState) override
    {
        setSlot(deviations, aDeviant, aState);
    }
    NSInterface::ObjectIntf* internal_createDeviation(Deviant aDeviant) override
    {
        if (Deviant::isRealState(internal_getDeviation(aDeviant)))
            return nullptr;
        NSInterface::ObjectIntf* state =
            aDeviant.getDeviantId() == 0 ? sStateFactory.createRoot(aDeviant) : sStateFactory.createNamed(aDeviant);
        setSlot(deviations, aDeviant, state);
        return state;
    }
    void internal_destroyDeviation(Deviant aDeviant) override
    {
        setSlot(deviations, aDeviant, Deviant::InvalidObject);
    }
    Deviant getRootDeviant() const override { return rootDeviant; }

    String getKestName(bool aImmutable) const override { return qualifiedName(State::kIdentity, aImmutable); }
    String toString(Deviant) const override { return qualifiedName(State::kIdentity, false); }
    Object getDefaultValue(Deviant) const override { return String(); }
    ImmutableType getMetaType(Deviant) const override
    {
        objectOperationNotYetAvailable(State::kIdentity, "getMetaType");
    }

    // The object side of the class-object frame.
    ImmutableClass getMetaClass(Deviant) const override { return metaClassOf(*State::metaSlot()); }
    bool hasObjectIndex(Deviant) const override { return true; }
    void removeObjectIndex(Deviant) override { objectIndex = Integer(0); }
    void setObjectIndex(Deviant, Integer const& aIndex) override { objectIndex = aIndex; }
    Integer getObjectIndex(Deviant) const override { return objectIndex; }

    // The two state factories: root checks its deviant, named only allocates.
    static NSInterface::ObjectIntf* createRootState(Deviant aDeviant)
    {
        assertRootDeviant(aDeviant, State::kIdentity);
        return createNamedState(aDeviant);
    }
    static NSInterface::ObjectIntf* createNamedState(Deviant)
    {
        return canonical(static_cast<Intf*>(new State()));
    }
    static inline StateFactory const sStateFactory{&createRootState, &createNamedState};

    Deviations deviations;
    Deviant rootDeviant;
    Integer objectIndex{-1};
    std::int32_t refCount = 0;

protected:
    [[gnu::flatten]] State const* readState(Deviant aDeviant) const
    {
        NSInterface::ObjectIntf const* o = deviations.read(aDeviant, rootDeviant);
        if (!Deviant::isRealState(o)) [[unlikely]]
            return emptyState();
        return static_cast<State const*>(fromCanonical<Intf>(o));
    }
    // Out of the read path, so that the common case stays small enough to inline.
    [[gnu::cold, gnu::noinline]] static State const* emptyState() { return &State::empty(); }
    [[gnu::flatten]] State* writeState(Deviant aDeviant) const
    {
        NSInterface::ObjectIntf* o = const_cast<ObjectBase*>(this)->deviations.write(aDeviant, rootDeviant, sStateFactory);
        return Deviant::isRealState(o) ? static_cast<State*>(fromCanonical<Intf>(o)) : nullptr;
    }
    // The state under `aDeviant` seen as its ancestor interface A: what the
    // generated getReadDeviantI/getWriteDeviantI overloads answer.
    template <class A>
    A const* readAs(Deviant aDeviant) const
    {
        return upcast<A>(static_cast<Intf const*>(readState(aDeviant)));
    }
    template <class A>
    A* writeAs(Deviant aDeviant) const
    {
        State* s = writeState(aDeviant);
        return s ? upcast<A>(static_cast<Intf*>(s)) : nullptr;
    }
};

} // namespace TAV::family
