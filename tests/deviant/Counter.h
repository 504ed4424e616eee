#pragma once

// A hand-written object/state pair with one int property, shaped like the
// generated families: the object holds Deviations, the state holds the value.

#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/TAV/Object_h.h>
#include <tav/TAV/Type_h.h>
#include <tav/kernel/deviant/Deviations.h>
#include <tav/kernel/family/Support.h>

#include <stdexcept>

namespace tavtest {

using TAV::Deviant;
using TAV::NSInterface::ObjectIntf;

class CounterIntf : public ObjectIntf {
public:
    virtual int getValue(Deviant d) const = 0;
    virtual void setValue(Deviant d, int value) = 0;

    void disconnectForDestroy(Deviant) override {}
    void destroyContents(Deviant, bool) override {}
    void destroy(Deviant) override {}
    TAV::String toString(Deviant) const override { return "counter"; }
    TAV::Object getDefaultValue(Deviant) const override { return TAV::Object(); }
    TAV::ImmutableType getMetaType(Deviant) const override { return TAV::ImmutableType(); }
};

class CounterState final : public CounterIntf {
public:
    static inline int sLive = 0;
    static inline int sCreated = 0;

    CounterState()
    {
        ++sLive;
        ++sCreated;
    }
    ~CounterState() override { --sLive; }

    int getValue(Deviant) const override { return value; }
    void setValue(Deviant, int aValue) override { value = aValue; }
    void internal_deviationAssign(Deviant, ObjectIntf* source, Deviant) override
    {
        value = static_cast<CounterState*>(source)->value;
    }

    static ObjectIntf* createRoot(Deviant d)
    {
        if (d.getDeviantId() != 0)
            throw std::logic_error("no root deviant passed to CounterImpl::createRootDeviation");
        return new CounterState;
    }
    static ObjectIntf* createNamed(Deviant) { return new CounterState; }

    int value = 0;
};

inline TAV::StateFactory const kCounterFactory{&CounterState::createRoot, &CounterState::createNamed};

class Counter final : public CounterIntf {
public:
    explicit Counter(Deviant aRoot, long long aIndex = 0) : rootDeviant(aRoot), index(aIndex)
    {
        deviations.owner = this;
        internal_createDeviation(aRoot);
    }
    ~Counter() override { deviant_destroyState(deviations.rootState); }

    void incRef() override { ++refCount; }
    void decRef() override { --refCount; }
    int numRef() const override { return refCount; }
    Deviant getRootDeviant() const override { return rootDeviant; }

    int getValue(Deviant d) const override { return state(deviations.read(d, rootDeviant))->value; }
    void setValue(Deviant d, int value) override
    {
        if (getValue(d) == value)
            return;
        state(deviations.write(d, rootDeviant, kCounterFactory))->value = value;
    }

    bool deviant_isValid(Deviant d) override { return Deviant::isRealState(deviations.slot(d, rootDeviant)); }
    void deviant_destroyState(ObjectIntf* s) override
    {
        if (Deviant::isRealState(s))
            delete s;
    }
    void deviant_markModelDestroyed() override
    {
        deviant_destroyState(deviations.rootState);
        deviations.rootState = Deviant::ModelDestroyed;
        rootDeviant = Deviant();
    }
    // Named deviants keep root's committed state, as generated objects do.
    void deviant_commitTransientState(Deviant d) override
    {
        TAV::family::commitTransientState(deviations, rootDeviant, d, kCounterFactory);
    }
    ObjectIntf* deviant_getCopyOfDeviation(Deviant d) override
    {
        return TAV::Deviations::copyState(d, internal_getDeviation(d), d, kCounterFactory);
    }
    ObjectIntf* internal_getDeviation(Deviant d) override
    {
        return d.getDeviantId() == 0 ? deviations.rootState : d.getStateOfObject(this);
    }
    void internal_setDeviation(Deviant d, ObjectIntf* s) override
    {
        deviant_destroyState(internal_getDeviation(d));
        if (d.getDeviantId() == 0)
            deviations.rootState = s;
        else
            d.setStateOfObject(this, s);
    }
    ObjectIntf* internal_createDeviation(Deviant d) override
    {
        if (Deviant::isRealState(internal_getDeviation(d)))
            return nullptr;
        ObjectIntf* const s = d.getDeviantId() == 0 ? CounterState::createRoot(d) : CounterState::createNamed(d);
        internal_setDeviation(d, s);
        return s;
    }
    void internal_destroyDeviation(Deviant d) override { internal_setDeviation(d, Deviant::InvalidObject); }

    static CounterState const* state(ObjectIntf const* s) { return static_cast<CounterState const*>(s); }
    static CounterState* state(ObjectIntf* s) { return static_cast<CounterState*>(s); }

    TAV::Deviations deviations;
    Deviant rootDeviant;
    long long index;
    int refCount = 0;
};

} // namespace tavtest
