#pragma once

// A model-less set of deviants for tests of the runtime and of generated
// classes: a manager with root and two named deviants, and transactions that
// are only a depth: no listeners, no history, for tests of the states alone.

#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/deviant/Deviant.h>
#include "kernel/deviant/DeviantImpl.h"
#include <tav/kernel/deviant/DeviantManager.h>

#include <gtest/gtest.h>

namespace tavtest {

class DeviantFixture : public ::testing::Test {
protected:
    // A generated object with its root state, as a model would make it.
    template <class Impl>
    static Impl* make(TAV::Deviant aRoot)
    {
        auto* object = new Impl();
        object->rootDeviant = aRoot;
        object->internal_createDeviation(aRoot);
        return object;
    }

    DeviantFixture() : savedHooks(TAV::internal::classObjectHooks()) {}

    ~DeviantFixture() override
    {
        for (TAV::Deviant d : {root, alpha, beta})
            while (d.isWithinTransaction())
                endTransaction(d);
        TAV::internal::classObjectHooks() = savedHooks;
        TAV::DeviantAssertions::enableAssertions(true);
        TAV::DeviantAssertions::enableExceptionThrowing(true);
    }

    static void beginTransaction(TAV::Deviant d) { ++d.impl()->transactionDepth; }

    // Leaving the outermost level drops the saved old states, as a commit of
    // a deviant without history does.
    static void endTransaction(TAV::Deviant d)
    {
        TAV::internal::DeviantImpl* const impl = d.impl();
        if (--impl->transactionDepth > 0)
            return;
        for (TAV::ChangeMap::Entry const& entry : impl->current.oldStates)
            entry.object->deviant_destroyState(entry.state);
        impl->current.oldStates.clear();
    }

    struct Transaction {
        explicit Transaction(TAV::Deviant aDeviant) : d(aDeviant) { beginTransaction(d); }
        ~Transaction() { endTransaction(d); }
        TAV::Deviant d;
    };

    TAV::internal::ClassObjectHooks const savedHooks;
    TAV::DeviantManager manager;
    TAV::Deviant root = manager.getRoot();
    TAV::Deviant alpha = manager.createDeviantWithName("alpha");
    TAV::Deviant beta = manager.createDeviantWithName("beta");
};

} // namespace tavtest
