// The small description, generated and built as a domain library on the kernel's frame,
// exercised through its handles.

#include "kernel/Small/NSImplementation/BoxImpl.h"
#include "kernel/Small/NSImplementation/ItemImpl.h"
#include "kernel/TAV/NSImplementation/ModelImpl.h"

#include <small/SmallHandles.h>
#include <tav/TAV/Model_h.h>
#include "kernel/deviant/DeviantImpl.h"

#include "support/DeviantFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Small::test {
namespace {

using TAV::Deviant;

class SmallDomainTest : public tavtest::DeviantFixture {
protected:
    SmallDomainTest() { manager.setModel(model.internal_intf()); }
    // This model stands in for a real one and goes before the manager.
    ~SmallDomainTest() override { manager.setModel(nullptr); }

    Item newItem() { return Item(make<NSImplementation::ItemImpl>(root), root); }
    Box newBox(Deviant aRoot) { return Box(make<NSImplementation::BoxImpl>(aRoot), aRoot); }

    TAV::Model model{make<TAV::NSImplementation::ModelImpl>(root), root};
};

TEST_F(SmallDomainTest, TwoBasesShareOneFrameAndKeepTheirDefaults)
{
    Item item = newItem();
    EXPECT_EQ(item.getCount(), TAV::Integer(1));
    EXPECT_TRUE(item.getExact());
    EXPECT_FALSE(item.hasName());
    {
        Transaction t(root);
        item.setName("anvil");
        item.setCount(3);
        item.setWeight(70);
    }
    // Through either base, the same object and the same frame accessors.
    EXPECT_EQ(ImmutableNamed(item).getName(), TAV::String("anvil"));
    EXPECT_EQ(ImmutableCounted(item).getCount(), TAV::Integer(3));
    EXPECT_TRUE(TAV::ImmutableObject(ImmutableNamed(item)).internal_sameObject(ImmutableCounted(item)));
    EXPECT_TRUE(item.internal_intf()->isHeavy(root, 50));
    EXPECT_FALSE(item.internal_intf()->isHeavy(root, 70));
    EXPECT_EQ(item.internal_intf()->getKestName(false), TAV::String("Small.Item")) << "named after its package";
}

TEST_F(SmallDomainTest, SparseValuesAreCopiedWithTheStateAndErasedWithIt)
{
    using State = NSImplementation::ItemDeviantImpl;
    auto& map = TAV::NSInterface::ClassObjectIntf::externalId_sparse();
    std::size_t const before = map.size();
    auto* source = new State();
    auto* copy = new State();
    source->setExternalId(root, "x-1");
    copy->internal_deviationAssign(root, TAV::family::canonical(static_cast<NSInterface::ItemIntf*>(source)), root);
    EXPECT_EQ(copy->getExternalId(root), TAV::String("x-1"));
    source->removeExternalId(root);
    copy->internal_deviationAssign(root, TAV::family::canonical(static_cast<NSInterface::ItemIntf*>(source)), root);
    EXPECT_FALSE(copy->hasExternalId(root)) << "an absent value is copied as absent";
    copy->setExternalId(root, "x-2");
    EXPECT_EQ(map.size(), before + 1);
    delete source;
    delete copy;
    EXPECT_EQ(map.size(), before) << "a state takes its entries with it";
}

TEST_F(SmallDomainTest, ContainmentEndKeepsTheOppositeListAndTheContainees)
{
    Item item = newItem();
    Box first = newBox(root);
    Box second = newBox(root);
    auto items = [&](Box const& b) { return std::size_t(b.getItems().contains(item)); };
    auto containees = [&](Box const& b) { return std::size_t(b.getContaineeTAVs().contains(item)); };

    Transaction t(root);
    item.setOwner(first);
    EXPECT_TRUE(item.getContainerTAV() == TAV::ImmutableClassObject(first));
    EXPECT_EQ(items(first) + containees(first), 2u);
    item.setOwner(second);
    EXPECT_EQ(items(first) + containees(first), 0u);
    EXPECT_EQ(items(second) + containees(second), 2u);
    item.removeOwner();
    EXPECT_FALSE(item.hasContainerTAV());
    EXPECT_EQ(items(second), 0u);

    // From the list's side, through the domain's own tables, on a class of two bases.
    second.getItems().push_back(item);
    EXPECT_TRUE(item.getOwner() == second);
    EXPECT_EQ(items(second) + containees(second), 2u);
    first.getItems().insert(0, item);
    EXPECT_EQ(items(second) + containees(second), 0u) << "a single-valued far end leaves its old list";
    first.getItems().erase(0);
    EXPECT_FALSE(item.hasOwner());
    EXPECT_EQ(items(first) + containees(first), 0u);
}

TEST_F(SmallDomainTest, OneWayReferenceIntoAnotherModelIsCounted)
{
    TAV::DeviantManager otherManager;
    Deviant otherRoot = otherManager.getRoot();
    TAV::Model otherModel(make<TAV::NSImplementation::ModelImpl>(otherRoot), otherRoot);
    otherManager.setModel(otherModel.internal_intf());
    auto referred = [&] {
        auto const& map = root.impl()->referredModels;
        auto const it = map.find(TAV::family::canonical(
            static_cast<TAV::NSInterface::ClassObjectIntf*>(otherModel.internal_intf())));
        return it == map.end() ? 0u : it->second;
    };
    Item item = newItem();
    Box foreign = newBox(otherRoot);
    {
        Transaction t(otherRoot);
        foreign.setModelTAV(otherModel);
    }

    Transaction t(root);
    auto const related = item.getRelateds(); // the domain's union, over the reference
    item.setHome(foreign);
    EXPECT_TRUE(item.getHome() == foreign);
    EXPECT_TRUE(related.size() == 1 && related.front() == TAV::ClassObject(foreign));
    EXPECT_EQ(referred(), 1u);
    item.removeHome();
    EXPECT_FALSE(item.hasHome()) << "mandatory, yet a reference shows its absence";
    EXPECT_TRUE(related.empty());
    EXPECT_EQ(referred(), 0u);
}

} // namespace
} // namespace Small::test
