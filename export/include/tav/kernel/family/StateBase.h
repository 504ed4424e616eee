#pragma once

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/Object_h.h>
#include <tav/TAV/String.h>
#include <tav/TAV/Type_h.h>
#include <tav/kernel/family/InterfaceCasts.h>
#include <tav/kernel/family/Support.h>

namespace TAV::family {

// Everything a state of a generated class does that does not depend on its class.
// A state holds the values of one object in one deviant; the object operations that
// it inherits are inert on it or refuse. The generated `State` adds its fields, their
// accessors, the copy between states and the typed views of itself.
template <class Intf, class State>
class StateBase : public Intf {
public:
    StateBase() = default;
    StateBase(StateBase const&) = delete;
    StateBase& operator=(StateBase const&) = delete;

    // Answers reads of an object that has no state in the asked deviant.
    static State const& empty()
    {
        static State const* state = new State();
        return *state;
    }

    void disconnectForDestroy(Deviant) override {}
    void destroyContents(Deviant, bool) override {}
    void destroy(Deviant) override {}
    bool deviant_isValid(Deviant) override { return false; }
    void deviant_destroyState(NSInterface::ObjectIntf*) override { stateRefuses(State::kIdentity); }
    void deviant_markModelDestroyed() override { stateRefuses(State::kIdentity); }
    void deviant_commitTransientState(Deviant) override { stateRefuses(State::kIdentity); }
    NSInterface::ObjectIntf* deviant_getCopyOfDeviation(Deviant) override { return nullptr; }
    NSInterface::ObjectIntf* internal_getDeviation(Deviant) override { return nullptr; }
    void internal_setDeviation(Deviant, NSInterface::ObjectIntf*) override { stateRefuses(State::kIdentity); }
    NSInterface::ObjectIntf* internal_createDeviation(Deviant) override { return nullptr; }
    void internal_destroyDeviation(Deviant) override { stateRefuses(State::kIdentity); }
    Deviant getRootDeviant() const override { return Deviant(); }
    String getKestName(bool aImmutable) const override { return qualifiedName(State::kIdentity, aImmutable); }
    String toString(Deviant) const override { return String(); }
    Object getDefaultValue(Deviant) const override { stateRefuses(State::kIdentity); }
    ImmutableType getMetaType(Deviant) const override { stateRefuses(State::kIdentity); }

    ImmutableClass getMetaClass(Deviant) const override { return ImmutableClass(); }
    bool hasObjectIndex(Deviant) const override { return false; }
    void removeObjectIndex(Deviant) override { stateRefuses(State::kIdentity); }
    void setObjectIndex(Deviant, Integer const&) override { stateRefuses(State::kIdentity); }
    Integer getObjectIndex(Deviant) const override { return Integer(-1); }

protected:
    // This state as its ancestor interface A: what the generated
    // getReadDeviantI/getWriteDeviantI overloads answer.
    template <class A>
    A const* as() const
    {
        return upcast<A>(static_cast<Intf const*>(this));
    }
    template <class A>
    A* asWritable() const
    {
        return upcast<A>(static_cast<Intf*>(const_cast<StateBase*>(this)));
    }
};

} // namespace TAV::family
