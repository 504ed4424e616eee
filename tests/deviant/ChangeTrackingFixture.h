#pragma once

// Counters on a model-less manager with real transactions, and a listener
// that writes what it is told into a shared log.

#include "deviant/Counter.h"
#include "support/Expect.h"

#include "kernel/deviant/DeviantImpl.h"
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/deviant/Listeners.h>
#include <tav/kernel/util/Exception.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavtest {

struct Recorder : TAV::ListenerBase {
    using Holder = TAV::internal::ListenerHolder<ObjectIntf, Recorder>;
    using Report = Holder::Report;

    Recorder(std::vector<std::string>& aLog, std::string aName) : log(aLog), name(std::move(aName)) {}

    void onBeginTransactionIn(Deviant const&) override { record("begin"); }
    void onEndTransactionIn(Deviant const&) override { record("end"); }
    void onModify(Report const& r) { record("modify", r); }
    bool onValidate(Report const& r)
    {
        record("validate", r);
        return verdict;
    }
    void onObserve(Report const& r) { record("observe", r); }

    void record(char const* what, Report const& r)
    {
        record(what);
        lastReport = {r.added.size(), r.removed.size(), r.modified.size()};
    }
    void record(char const* what)
    {
        log.push_back(name + ":" + what);
        if (throwAt == what)
            throw std::runtime_error("listener failed");
        if (then)
            std::exchange(then, nullptr)(what);
    }

    std::vector<std::string>& log;
    std::string name;
    bool verdict = true;
    std::string throwAt;
    std::vector<std::size_t> lastReport;
    // Runs once, at the next call, with the phase's name.
    std::function<void(std::string const&)> then;
};

class ChangeTrackingTest : public ::testing::Test {
protected:
    ~ChangeTrackingTest() override
    {
        for (Deviant d : {root, alpha})
            d.cancelTransaction();
        TAV::DeviantAssertions::enableExceptionThrowing(true);
        objects.forgetModel();
    }

    Counter& make(int value = 0) { return objects.make(root, static_cast<int>(objects.size()), value); }
    Recorder& listener(std::string const& name) { return recorders.emplace_back(log, name); }
    static TAV::internal::ListenerHolderBase* holder(Recorder& r) { return new Recorder::Holder(&r); }

    void write(Counter& c, int value, Deviant d = Deviant())
    {
        Deviant const on = d.isNull() ? root : d;
        on.beginTransaction("write");
        c.setValue(on, value);
        on.commitTransaction();
    }

    // Objects outlive the manager, whose maps count them.
    Counters objects;
    std::deque<Recorder> recorders;
    std::vector<std::string> log;
    TAV::DeviantManager manager;
    Deviant root = manager.getRoot();
    Deviant alpha = manager.createDeviantWithName("alpha");
};

} // namespace tavtest
