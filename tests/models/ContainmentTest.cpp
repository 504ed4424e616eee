// Containment in a real model: every object is either in the unparented list or in its
// container's containees, never both, through moves, refusals and undo.

#include <tav/TAV/Association_h.h>
#include <tav/TAV/Class_h.h>
#include <tav/TAV/Comment_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/TAV/MPackage_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/DestroyVisitor.h>
#include <tav/kernel/util/Exception.h>

#include "support/Expect.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace TAV::test {
namespace {

class ContainmentTest : public ::testing::Test {
protected:
    ContainmentTest()
    {
        root.beginTransaction("build");
        for (char const* name : {"a", "b", "c"}) {
            Package p = Package::create(model);
            p.setName(name);
            objects[name] = p;
        }
        root.commitTransaction();
    }

    static std::string name(ImmutableClassObject const& o)
    {
        return ImmutableNamedElement(ImmutableObject(o)).getName().toUtf8();
    }

    static std::string names(ImmutableSequence<ImmutableClassObject> const& list)
    {
        std::string out;
        for (ImmutableClassObject const& o : list)
            out += name(o);
        return out;
    }

    // Who holds each object: "-" for the unparented list, else the container's name.
    std::string where()
    {
        std::string out;
        for (ImmutableClassObject const& o : ImmutableModel(model).getUnparenteds())
            out += name(o) + ":-,";
        for (auto const& [n, o] : objects)
            for (ImmutableClassObject const& child : ImmutableClassObject(o).getContaineeTAVs()) {
                EXPECT_TRUE(child.getContainerTAV() == ImmutableClassObject(o)) << name(child);
                out += name(child) + ":" + n + ",";
            }
        return out;
    }

    Model model = Model::create();
    Deviant root = model.getDeviant();
    std::map<std::string, ClassObject> objects;
};

TEST_F(ContainmentTest, MovesBetweenContainersAndTheUnparentedList)
{
    struct Step {
        char const* child;
        char const* container; // null: remove the container
        char const* after;
    };
    Step const steps[] = {
        {"b", "a", "a:-,c:-,b:a,"},
        {"c", "a", "a:-,b:a,c:a,"},
        {"c", "b", "a:-,b:a,c:b,"},   // between containers, not through the list
        {"c", "b", "a:-,b:a,c:b,"},   // the same container twice changes nothing
        {"b", nullptr, "a:-,b:-,c:b,"}, // back at the end of the list
        {"a", "c", "b:-,c:b,a:c,"},
    };
    for (Step const& s : steps) {
        root.beginTransaction(s.child);
        ClassObject const child = objects[s.child];
        if (s.container)
            child.setContainerTAV(objects[s.container]);
        else
            child.removeContainerTAV();
        root.commitTransaction();
        EXPECT_EQ(where(), s.after) << s.child << " to " << (s.container ? s.container : "none");
    }
    EXPECT_EQ(root.getUndoStackLength(), 6) << "the repeated move recorded nothing";

    // A composite end goes through the same slot.
    root.beginTransaction("ends");
    Class const k = Class::create(model);
    k.setName("k");
    Property const p = Property::create(model);
    p.setName("p");
    objects["k"] = k;
    k.getOwnedAttributes().push_back(p);
    root.commitTransaction();
    EXPECT_EQ(where(), "b:-,k:-,c:b,a:c,p:k,");
    // The model's content makes the model the container.
    root.beginTransaction("content");
    model.getContents().push_back(k);
    root.commitTransaction();
    EXPECT_EQ(where(), "b:-,c:b,a:c,p:k,");
    EXPECT_TRUE(k.getContainerTAV() == ClassObject(model));
    root.beginTransaction("content out");
    model.getContents().removeAll(k);
    root.commitTransaction();
    EXPECT_EQ(where(), "b:-,k:-,c:b,a:c,p:k,");
}

TEST_F(ContainmentTest, RefusalsChangeNothing)
{
    root.beginTransaction("nest");
    objects["b"].setContainerTAV(objects["a"]);
    objects["c"].setContainerTAV(objects["b"]);
    root.commitTransaction();
    std::string const before = where();
    Model const other = Model::create();
    other.getDeviant().beginTransaction();
    Package const foreign = Package::create(other);
    other.getDeviant().commitTransaction();

    struct Refusal {
        ClassObject child;
        ClassObject container;
        char const* words;
    };
    Refusal const refusals[] = {
        {objects["a"], objects["c"], "Cyclic composition"},
        {objects["a"], objects["a"], "Cyclic composition"},
        {objects["a"], foreign, "Cross-model bi-directional associations are currently disallowed!"},
        {model, objects["a"], "Parenting of Model"},
    };
    for (Refusal const& r : refusals) {
        root.beginTransaction("refused");
        EXPECT_TAV_THROW(r.child.setContainerTAV(r.container), r.words);
        root.cancelTransaction();
        EXPECT_EQ(where(), before) << r.words;
    }
}

TEST_F(ContainmentTest, UndoAndRedoPutTheListsBack)
{
    std::string const start = where();
    root.beginTransaction("move");
    objects["b"].setContainerTAV(objects["a"]);
    objects["c"].setContainerTAV(objects["a"]);
    objects["c"].setContainerTAV(objects["b"]);
    root.commitTransaction();
    std::string const moved = where();
    root.undo();
    EXPECT_EQ(where(), start);
    root.redo();
    EXPECT_EQ(where(), moved);
}

} // namespace
} // namespace TAV::test

namespace TAV::test {
namespace {

// A package holding a class with an attribute that links out of the subtree through a
// single end and a list, and within it through a list; destroyed, undone and redone.
TEST(DestroyTest, ASubtreeGoesWithItsLinksOutAndUndoBringsAllBack)
{
    Model const model = Model::create();
    Deviant const root = model.getDeviant();
    root.beginTransaction("build");
    Package const top = Package::create(model);
    Class const k = Class::create(model);
    Property const p = Property::create(model);
    Property const p2 = Property::create(model);
    Property const outside = Property::create(model);
    Association const assoc = Association::create(model);
    k.setContainerTAV(top);
    k.getOwnedAttributes().push_back(p);
    k.getOwnedAttributes().push_back(p2);
    p.setAssociation(assoc);
    p.getRedefinedProperties().push_back(outside);
    p.getRedefinedProperties().push_back(p2);
    root.commitTransaction();

    auto const state = [&] {
        std::string s;
        for (ClassObject const& o : {ClassObject(top), ClassObject(k), ClassObject(p), ClassObject(p2)})
            s += o.isValid() ? "v" : "x";
        s += " members " + std::to_string(assoc.getMemberEnds().size());
        s += " redefiners " + std::to_string(outside.getRedefinerProperties().size());
        s += " unparented " + std::to_string(model.getUnparenteds().size());
        return s;
    };
    std::string const built = state();
    EXPECT_EQ(built, "vvvv members 1 redefiners 1 unparented 3");

    root.beginTransaction("destroy");
    DestroyVisitor::destroy(k);
    DestroyVisitor::destroy(k); // a second time finds nothing to do
    root.commitTransaction();
    EXPECT_EQ(state(), "vxxx members 0 redefiners 0 unparented 3");
    EXPECT_EQ(top.getContaineeTAVs().size(), 0);
    EXPECT_TAV_THROW(p.getName(), "is not present");

    root.undo();
    EXPECT_EQ(state(), built);
    EXPECT_TRUE(p.getClass() == k);
    EXPECT_TRUE(k.getContainerTAV() == ClassObject(top));
    EXPECT_EQ(k.getOwnedAttributes().size(), 2);
    root.redo();
    EXPECT_EQ(state(), "vxxx members 0 redefiners 0 unparented 3");

    root.beginTransaction("top");
    DestroyVisitor::destroy(top);
    root.commitTransaction();
    EXPECT_EQ(state(), "xxxx members 0 redefiners 0 unparented 2");
    // The index of a destroyed object may be given again; the map keeps the old entry.
    root.beginTransaction("again");
    Comment const reuse = Comment::createWithId(model, top.getObjectIndex());
    root.commitTransaction();
    EXPECT_TRUE(model.internal_intf()->getObjectAtIndex(root, top.getObjectIndex()) == ClassObject(top));
    EXPECT_TRUE(reuse.isValid());
    DestroyVisitor::destroy(ClassObject()); // nothing to destroy, nothing raised
}

} // namespace
} // namespace TAV::test
