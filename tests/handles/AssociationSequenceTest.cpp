// Multi-valued properties through their sequences: both ends of every kind of
// association after random edits, through the typed getters, the reflection table
// and a property storage, checked against a plain model; the deviant's view, undo
// and the cross-model refusal; value lists and the tool infos.

#include "handles/FamilyFixture.h"

#include "kernel/TAV/NSImplementation/OpaqueExpressionImpl.h"

#include <tav/TAV/OpaqueExpression_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/IntrospectiveMethods.h>
#include <tav/kernel/util/propertystorage/MultiValuedPropertyManager.h>
#include <tav/kernel/util/propertystorage/PropertyStorage.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace TAV::test {
namespace {

using Model = std::vector<NSInterface::ClassObjectIntf*>;

NSInterface::ClassObjectIntf* id(ImmutableClassObject const& h)
{
    return h.internal_intf();
}

Model idsOf(Sequence<Property> const& s)
{
    Model out;
    for (Property const& p : s)
        out.push_back(id(p));
    return out;
}

// One kind of association whose many end holds Properties: how to make an owner, reach
// its list, and ask an element whether its far end names that owner; the list's row.
struct Kind {
    std::string name;
    bool singleOpposite; // a Property is in at most one owner's list
    std::function<ClassObject()> makeOwner;
    std::function<Sequence<Property>(ClassObject const&)> list;
    std::function<bool(Property const&, ClassObject const&)> refersTo;
    IntrospectiveMethods const* table;
    unsigned id;
};

class AssociationSequenceTest : public FamilyTest {
protected:
    std::vector<Kind> kinds()
    {
        return {
            {"one-to-many", true, [this] { return ClassObject(newAssociation()); },
             [](ClassObject const& o) { return Association(o).getMemberEnds(); },
             [](Property const& p, ClassObject const& o) { return p.getAssociation() == ImmutableAssociation(o); },
             &NSInterface::AssociationIntf::sIntrospectiveMethods, 4},
            {"containment", true, [this] { return ClassObject(newClass()); },
             [](ClassObject const& o) { return Class(o).getOwnedAttributes(); },
             [](Property const& p, ClassObject const& o) {
                 return p.getClass() == ImmutableClass(o) && o.getContaineeTAVs().contains(p);
             },
             &NSInterface::ClassIntf::sIntrospectiveMethods, 5},
            {"many-to-many", false, [this] { return ClassObject(newProperty()); },
             [](ClassObject const& o) { return Property(o).getRedefinedProperties(); },
             [](Property const& p, ClassObject const& o) { return p.getRedefinerProperties().contains(Property(o)); },
             &NSInterface::PropertyIntf::sIntrospectiveMethods, 1},
        };
    }

    // The same kinds, their lists reached by id through the table, as reflection does.
    std::vector<Kind> kindsThroughTheTable()
    {
        std::vector<Kind> out = kinds();
        for (Kind& k : out) {
            k.name += " through the table";
            k.list = [table = k.table, id = k.id](ClassObject const& o) {
                return Sequence<Property>(table->getMultiValued(o.internal_intf(), o.getDeviant(), id, true),
                                          o.getDeviant());
            };
        }
        return out;
    }

    using Edit = std::function<void(std::mt19937&, Kind const&, std::vector<ClassObject> const&, std::vector<Model>&,
                                    std::vector<Property> const&)>;
    void checkRandomEdits(Kind const& kind, Edit const& edit);
};

// Puts e at i in owner o's model, as a unique list with that kind of far end does.
void enter(Kind const& kind, std::vector<Model>& model, std::size_t o, int i, Property const& e)
{
    Model& mine = model[o];
    if (std::find(mine.begin(), mine.end(), id(e)) != mine.end())
        return; // unique: a duplicate changes nothing
    if (kind.singleOpposite)
        for (Model& other : model)
            std::erase(other, id(e));
    mine.insert(mine.begin() + std::min(i, static_cast<int>(mine.size())), id(e));
}

// A random edit of one of two owners, applied to the sequence and to the model.
void edit(std::mt19937& rng, Kind const& kind, std::vector<ClassObject> const& owners, std::vector<Model>& model,
          std::vector<Property> const& pool)
{
    std::size_t const o = rng() % owners.size();
    Sequence<Property> const list = kind.list(owners[o]);
    Model& mine = model[o];
    Property const& e = pool[rng() % pool.size()];
    int const size = static_cast<int>(mine.size());
    auto const at = [&](int i) { return mine.begin() + i; };
    switch (rng() % 8) {
    case 0: list.push_back(e); enter(kind, model, o, size, e); break;
    case 1: list.push_front(e); enter(kind, model, o, 0, e); break;
    case 2: { int const i = static_cast<int>(rng() % (size + 1)); list.insert(i, e); enter(kind, model, o, i, e); break; }
    case 3: if (size) { int const i = static_cast<int>(rng() % size); list.erase(i); mine.erase(at(i)); } break;
    case 4: if (size) { list.pop_back(); mine.pop_back(); } break;
    case 5: EXPECT_EQ(list.removeAll(e), static_cast<int>(std::erase(mine, id(e)))); break;
    case 6:
        if (size) {
            int const i = static_cast<int>(rng() % size);
            list.replace(i, e);
            if (std::find(mine.begin(), mine.end(), id(e)) != mine.end())
                break; // already there: the replace leaves both ends alone
            if (kind.singleOpposite)
                for (Model& other : model)
                    std::erase(other, id(e));
            mine[i] = id(e);
        }
        break;
    default: if (rng() % 4 == 0) { list.clear(); mine.clear(); } break;
    }
}

// The storage's writes (what setOrAdd, remove and removeOne of an object reach).
void storageEdit(std::mt19937& rng, Kind const& kind, std::vector<ClassObject> const& owners, std::vector<Model>& model,
                 std::vector<Property> const& pool)
{
    PropertyStorage storage(new MultiValuedPropertyManager(kind.table, kind.id));
    std::size_t const o = rng() % owners.size();
    Model& mine = model[o];
    Property const& e = pool[rng() % pool.size()];
    switch (rng() % 5) {
    case 0:
    case 1: storage.setOrAdd(owners[o], Object(e)); enter(kind, model, o, static_cast<int>(mine.size()), e); break;
    case 2: storage.remove(owners[o], Object(e)); std::erase(mine, id(e)); break;
    case 3: storage.removeOne(owners[o]); if (!mine.empty()) mine.erase(mine.begin()); break;
    default: if (rng() % 3 == 0) { storage.remove(owners[o]); mine.clear(); } break;
    }
}

TEST_F(AssociationSequenceTest, RandomEditsKeepBothEndsOfEveryKindConsistent)
{
    for (Kind const& kind : kinds())
        checkRandomEdits(kind, edit);
    for (Kind const& kind : kindsThroughTheTable())
        checkRandomEdits(kind, edit);
    for (Kind const& kind : kinds())
        checkRandomEdits(kind, storageEdit);
}

void AssociationSequenceTest::checkRandomEdits(Kind const& kind, Edit const& edit)
{
    {
        SCOPED_TRACE(kind.name);
        std::vector<ClassObject> const owners = {kind.makeOwner(), kind.makeOwner()};
        std::vector<Property> pool;
        for (int i = 0; i < 5; ++i)
            pool.push_back(newProperty());
        std::vector<Model> model(owners.size());
        std::mt19937 rng(20261123);
        open(root);
        for (int step = 0; step < 300 && !HasFailure(); ++step) {
            edit(rng, kind, owners, model, pool);
            for (std::size_t o = 0; o < owners.size(); ++o) {
                ASSERT_EQ(idsOf(kind.list(owners[o])), model[o]) << "step " << step;
                for (Property const& e : pool)
                    ASSERT_EQ(kind.refersTo(e, owners[o]), std::count(model[o].begin(), model[o].end(), id(e)) == 1)
                        << "step " << step;
            }
        }
        for (ClassObject const& owner : owners)
            kind.list(owner).clear(); // many-to-many ends hold counts on each other
        close(root);
    }
}

TEST_F(AssociationSequenceTest, DuplicateOnAUniqueListTakesNoCountAndRecordsNothing)
{
    Association a = newAssociation();
    Property p = newProperty();
    open(root);
    a.getMemberEnds().push_back(p);
    close(root);
    int const count = p.internal_counted()->numRef();
    open(root);
    a.getMemberEnds().push_back(p);
    a.getMemberEndsWithoutAssociation().push_back(p);
    close(root);
    EXPECT_EQ(a.getMemberEnds().size(), 1);
    EXPECT_EQ(p.internal_counted()->numRef(), count);
}

TEST_F(AssociationSequenceTest, DeviantSequenceReadsRootUntilItsFirstWriteThenItsOwnState)
{
    Class c = newClass();
    Property p = newProperty();
    Property q = newProperty();
    open(root);
    c.getOwnedAttributes().push_back(p);
    close(root);

    Class inNamed(c.internal_intf(), named);
    Sequence<Property> const attributes = inNamed.getOwnedAttributesWithoutAssociation();
    EXPECT_EQ(attributes.size(), 1);
    EXPECT_EQ(ownState(c, named), nullptr) << "reading makes no deviation";
    int const count = p.internal_counted()->numRef();
    open(named);
    attributes.push_back(q);
    close(named);
    EXPECT_NE(ownState(c, named), nullptr);
    EXPECT_EQ(idsOf(attributes), (Model{id(p), id(q)})) << "the same sequence now reads the named state";
    EXPECT_EQ(c.getOwnedAttributes().size(), 1) << "root's list untouched";
    EXPECT_EQ(p.internal_counted()->numRef(), count + 2) << "the copied lists (attributes, containees) count";
}

TEST_F(AssociationSequenceTest, UndoRestoresBothEnds)
{
    Class c = newClass();
    Property p = newProperty();
    root.beginTransaction("attach");
    c.getOwnedAttributes().push_back(p);
    ASSERT_TRUE(root.commitTransaction());
    root.beginTransaction("detach");
    c.getOwnedAttributes().erase(0);
    ASSERT_TRUE(root.commitTransaction());
    EXPECT_FALSE(p.hasClass());

    root.undo();
    EXPECT_TRUE(p.getClass() == c);
    EXPECT_EQ(idsOf(c.getOwnedAttributes()), Model{id(p)});
    EXPECT_TRUE(c.getContaineeTAVs().contains(p));
    root.undo();
    EXPECT_FALSE(p.hasClass());
    EXPECT_TRUE(c.getOwnedAttributes().empty());
    root.redo();
    EXPECT_TRUE(p.getClass() == c);
}

TEST_F(AssociationSequenceTest, AnotherModelIsRefusedBeforeEitherEndChangesUnlessTheFarEndIsTransient)
{
    DeviantManager other;
    Deviant otherRoot = other.getRoot();
    Property foreign(make<NSImplementation::PropertyImpl>(otherRoot), otherRoot);
    Class foreignClass(make<NSImplementation::ClassImpl>(otherRoot), otherRoot);
    Association a = newAssociation();
    Class c = newClass();

    open(root);
    open(otherRoot);
    EXPECT_TAV_THROW(a.getMemberEnds().push_back(foreign),
                     "Cross-model bi-directional associations are currently disallowed!");
    EXPECT_TRUE(a.getMemberEnds().empty());
    EXPECT_FALSE(foreign.hasAssociation());

    // subClass, the far end of superClass, is transient: the link may cross.
    c.getSuperClasses().push_back(foreignClass);
    EXPECT_TRUE(foreignClass.getSubClasses().contains(c));
    c.getSuperClasses().clear();
    EXPECT_TRUE(foreignClass.getSubClasses().empty());
    close(otherRoot);
    close(root);
}

TEST_F(AssociationSequenceTest, IteratorIsAnIndexThatErasureBeforeItShifts)
{
    Class c = newClass();
    std::vector<Property> properties;
    open(root);
    for (int i = 0; i < 5; ++i)
        c.getOwnedAttributes().push_back(properties.emplace_back(newProperty()));
    Sequence<Property> const attributes = c.getOwnedAttributesWithoutAssociation();
    auto it = attributes.begin();
    for (int i = 0; i < 3; ++i)
        ++it;
    attributes.erase(0);
    EXPECT_TRUE(*it == properties[4]);
    auto const next = attributes.erase(it);
    EXPECT_TRUE(next == attributes.end()) << "erasing the last leaves the end";
    close(root);
}

TEST_F(AssociationSequenceTest, ValueListsAndToolInfosLiveInTheirStates)
{
    OpaqueExpression e(make<NSImplementation::OpaqueExpressionImpl>(root), root);
    Property p = newProperty();
    open(root);
    e.getBodies().push_back(String("x + 1"));
    e.getBodies().push_back(String("x + 1"));
    e.getLanguages().push_back(String("C"));
    // Declared operations are reached through the interface, as hand-maintained ones are.
    NSInterface::ClassObjectIntf* const object = id(p);
    object->setExternalToolInfo(root, ExternalToolInfo("md", "1"));
    object->setExternalToolInfo(root, ExternalToolInfo("rh", "2"));
    object->setExternalToolInfo(root, ExternalToolInfo("md", "3"));
    close(root);
    EXPECT_EQ(e.getBodies().size(), 1) << "unique";
    EXPECT_EQ(e.getLanguages().front(), String("C"));
    EXPECT_EQ(p.getExternalToolInfos().size(), 2) << "one entry per tool";
    EXPECT_EQ(object->getExternalToolInfo(root, "md").getExternalId(), String("3"));
    EXPECT_FALSE(object->getExternalToolInfo(root, "none").hasTool());

    Property inNamed(p.internal_intf(), named);
    open(named);
    object->removeExternalToolInfo(named, ExternalToolInfo("md", "3"));
    object->removeExternalToolInfo(named, ExternalToolInfo("rh", "other")); // not that entry
    close(named);
    EXPECT_EQ(inNamed.getExternalToolInfos().size(), 1);
    EXPECT_EQ(p.getExternalToolInfos().size(), 2) << "root keeps its own";
    open(named);
    object->removeExternalToolInfo(named, ExternalToolInfo("rh", "2"));
    close(named);
    EXPECT_FALSE(inNamed.hasExternalToolInfos()) << "an empty entry is none";
}

} // namespace
} // namespace TAV::test
