#include "deviant/Counter.h"
#include "support/DeviantFixture.h"
#include "support/Expect.h"

#include <tav/kernel/deviant/DeviantRegistry.h>
#include <tav/kernel/util/Exception.h>

#include <gmock/gmock.h>

namespace tavtest {
namespace {

using TAV::Deviant;
using ::testing::AllOf;
using ::testing::HasSubstr;

std::vector<std::string> names(std::vector<Deviant> const& deviants)
{
    std::vector<std::string> out;
    for (Deviant d : deviants)
        out.push_back(d.isNull() ? "<null>" : d.getName());
    return out;
}

TEST(DeviantManagerTest, IdsCountEnteredNamesAndRetiredDeviantsAndNeverRepeat)
{
    TAV::DeviantManager manager;
    Deviant const root = manager.getRoot();
    EXPECT_EQ(root.getDeviantId(), 0);
    EXPECT_EQ(root.getName(), "root deviant");
    Deviant const a = manager.createDeviantWithName("a");
    EXPECT_EQ(a.getDeviantId(), 2);
    EXPECT_EQ(manager.createDeviantWithName("a"), a) << "creating twice is no error";

    EXPECT_TRUE(manager.getDeviantWithName("ghost").isNull());
    Deviant const b = manager.createDeviantWithName("b");
    EXPECT_EQ(b.getDeviantId(), 4) << "the empty entry of an unknown name counts";

    manager.removeDeviantWithName("a");
    Deviant const c = manager.createDeviantWithName("c");
    EXPECT_EQ(c.getDeviantId(), 5);
    EXPECT_EQ(manager.createDeviantWithName("ghost").getDeviantId(), 5) << "the empty entry is filled";
    EXPECT_EQ(b.getRootDeviant(), root);
    EXPECT_EQ(b.hasUndoStack(), true);
    EXPECT_EQ(b.impl()->maximumUndoLength, 1);
    EXPECT_EQ(root.impl()->maximumUndoLength, 50);
}

TEST(DeviantManagerTest, ListsDeviantsInNameOrder)
{
    TAV::DeviantManager manager;
    manager.createDeviantWithName("zeta");
    manager.createDeviantWithName("alpha");
    manager.getDeviantWithName("mid");
    std::vector<Deviant> all{Deviant()};
    manager.getDeviants(all);
    EXPECT_EQ(names(all), (std::vector<std::string>{"<null>", "alpha", "<null>", "root deviant", "zeta"}))
        << "getDeviants appends";
    manager.getRoot().getAllDeviants(all);
    EXPECT_EQ(all.size(), 4u) << "getAllDeviants replaces";
    Deviant().getAllDeviants(all);
    EXPECT_TRUE(all.empty());
}

TEST(DeviantManagerTest, RemovalChecksAndNullDeviantDefaults)
{
    TAV::DeviantManager manager;
    EXPECT_RAISES(manager.removeDeviantWithName("nope"), TAV::Exception, "removeDeviantWithName: deviant does not exist");
    Deviant const d = manager.createDeviantWithName("d");
    ++d.impl()->transactionDepth;
    EXPECT_THROW(manager.removeDeviantWithName("d"), TAV::Exception);
    --d.impl()->transactionDepth;

    Deviant const none;
    EXPECT_EQ(none.getName(), "default unnamed root deviant");
    EXPECT_TRUE(none.isValid());
    EXPECT_FALSE(none.isWithinTransaction());
    EXPECT_FALSE(none.hasUndoStack());
    EXPECT_EQ(none.getObjectsDeviatingFromRoot(), nullptr);
    EXPECT_EQ(none.getStateOfObject(nullptr), nullptr);
    EXPECT_RAISES(none.remove(), TAV::Exception, "Deviant::remove on null deviant");
    EXPECT_THAT(none.getMessageObjectIsInvalid(nullptr),
                HasSubstr("passthrough domain.It could also be that the object was not created"));
}

TEST(DeviantRegistryTest, IdsAreStablePerObjectDeviantAndMutabilityAndDieWithTheObject)
{
    auto& registry = TAV::DeviantRegistry::instance();
    TAV::DeviantManager manager;
    Deviant const root = manager.getRoot();
    Deviant const named = manager.createDeviantWithName("n");
    static std::vector<TAV::DeviantRegistry::Id> sRetracted;
    registry.setRetractFunction([](TAV::DeviantRegistry::Id id) { sRetracted.push_back(id); });

    TAV::DeviantRegistry::Id a, b;
    {
        Counters held;
        Counter& object = held.make(root);
        EXPECT_EQ(registry.getId(nullptr, root, false), nullptr);
        a = registry.getId(&object, root, false);
        EXPECT_EQ(registry.getId(&object, root, false), a);
        b = registry.getId(&object, named, true);
        EXPECT_NE(a, b);
        EXPECT_TRUE(object.fRegistered);
        EXPECT_EQ(registry.getVariantInfo(b).first, &object);
        EXPECT_EQ(registry.getVariantInfo(b).second, named);
        EXPECT_FALSE(registry.isImmutable(a));
        EXPECT_TRUE(registry.isImmutable(b));
        registry.setIsImmutable(TAV::ImmutableObject(&object, root), true);
        EXPECT_TRUE(registry.isImmutable(a)) << "the handle names the record of its object and deviant";
    }
    EXPECT_EQ(sRetracted, (std::vector<TAV::DeviantRegistry::Id>{a, b})) << "the destructor retracts every record";
    registry.setRetractFunction(nullptr);
    EXPECT_RAISES(registry.isImmutable(a), TAV::Exception, "Unable to find object in DeviantRegistry!");
    EXPECT_THAT(tavtest::raised<TAV::Exception>([&] { registry.isImmutable(nullptr); }).what(),
                AllOf(HasSubstr("Null pointer passed to DeviantRegistry::isImmutable!"),
                      HasSubstr("kernel/deviant/DeviantRegistry")));
}

} // namespace
} // namespace tavtest
