// Scoped transactions on real model objects: what each way out leaves.

#include "handles/FamilyFixture.h"
#include "kernel/TAV/NSImplementation/ModelImpl.h"

#include <tav/kernel/deviant/Listeners.h>
#include <tav/kernel/util/Transaction.h>

#include <functional>

namespace TAV::test {
namespace {

struct Refuse : ListenerBase {
    using Holder = internal::ListenerHolder<NSInterface::ObjectIntf, Refuse>;
    bool onValidate(Holder::Report const&) { return false; }
};

std::string nameOf(Property const& p)
{
    return p.hasName() ? p.getName().toUtf8() : std::string();
}

TEST_F(FamilyTest, TransactionCancelsWhatWasNotEnded)
{
    Model model(make<NSImplementation::ModelImpl>(root), root);
    manager.setModel(model.internal_intf());
    Property p = newProperty();
    struct Case {
        std::string what;
        std::function<void(TAV::Transaction&)> act;
        bool kept;
    };
    Case const cases[] = {
        {"left", [](TAV::Transaction&) {}, false},
        {"committed", [](TAV::Transaction& t) { EXPECT_TRUE(t.commit()); }, true},
        {"cancelled", [](TAV::Transaction& t) { t.cancel(); }, false},
        {"reset on the model",
         [&](TAV::Transaction& t) {
             t.reset(model, "again");
             EXPECT_TRUE(root.isWithinTransaction()) << "the new one is open";
             EXPECT_FALSE(t.isEnded());
         },
         false},
        {"moved from", // the source, still open, cancels as it goes
         [&](TAV::Transaction& t) {
             TAV::Transaction target(std::move(t));
             t.end();
             EXPECT_FALSE(target.isEnded());
             EXPECT_FALSE(root.isWithinTransaction());
         },
         false},
    };
    std::string committed;
    for (Case const& c : cases) {
        {
            TAV::Transaction t(model, c.what);
            p.setName(String(c.what));
            c.act(t);
        }
        committed = c.kept ? c.what : committed;
        EXPECT_EQ(nameOf(p), committed) << c.what;
        EXPECT_FALSE(root.isWithinTransaction()) << c.what;
    }
    EXPECT_EQ(root.getUndoNameAt(0), "committed");

    TAV::Transaction empty;
    empty.end();
    EXPECT_TAV_THROW(empty.commit(), "Attempt to commit transaction on NULL model!");
    EXPECT_TAV_THROW(empty.cancel(), "Attempt to cancel transaction on NULL model!");
    EXPECT_TAV_THROW(empty.begin(Model(), "x"), "kernel/deviant/TransactionUtility");
    EXPECT_TAV_THROW(empty.begin(Model()), "Attempt to begin transaction on NULL model!");
    root.clearUndoStack();
    manager.setModel(nullptr);
}

TEST_F(FamilyTest, MultiModelTransactionCommitsModelByModel)
{
    DeviantManager otherManager;
    Deviant const otherRoot = otherManager.getRoot();
    Model first(make<NSImplementation::ModelImpl>(root), root);
    Model second(make<NSImplementation::ModelImpl>(otherRoot), otherRoot);
    manager.setModel(first.internal_intf());
    otherManager.setModel(second.internal_intf());
    Property a = newProperty();
    Property b(make<NSImplementation::PropertyImpl>(otherRoot), otherRoot);

    {
        MultiModelTransaction both;
        both.addModel(first, "x");
        EXPECT_FALSE(root.isWithinTransaction()) << "addModel's own transaction is cancelled as its local goes";
        both.addModel(second);
        EXPECT_TAV_THROW(both.commit(), "transaction not started");
    }
    Refuse refuse;
    otherRoot.registerValidatorOnCommit(new Refuse::Holder(&refuse));
    {
        MultiModelTransaction both;
        both.addModel(first);
        both.addModel(second);
        root.beginTransaction();
        otherRoot.beginTransaction();
        a.setName(String("a"));
        b.setName(String("b"));
        EXPECT_FALSE(both.commit()) << "the second model refused";
        EXPECT_FALSE(otherRoot.isWithinTransaction());
    }
    EXPECT_EQ(nameOf(a), "a") << "the first model's commit stands";
    EXPECT_FALSE(b.hasName());
    {
        MultiModelTransaction left;
        left.addModel(first);
        root.beginTransaction();
        a.setName(String("c"));
    }
    EXPECT_EQ(nameOf(a), "a") << "what is left open is cancelled";
    EXPECT_FALSE(root.isWithinTransaction());
    root.clearUndoStack();
    manager.setModel(nullptr);
    otherManager.setModel(nullptr);
}

} // namespace
} // namespace TAV::test
