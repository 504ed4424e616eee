// Models made for real: creation and indices, the cache, URIs of the model and its
// objects, and what is left of objects after their model has gone.

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Comment_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/ModelCache.h>

#include "support/Expect.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace TAV::test {
namespace {

ModelCache& cache()
{
    return ModelCache::instance();
}

// A model with one root transaction open for the test's writes.
struct Open {
    Model model = Model::create();
    Deviant root = model.getDeviant();
    Open() { root.beginTransaction("test"); }
    ~Open()
    {
        if (root.isWithinTransaction())
            root.commitTransaction();
    }
    NSInterface::ModelIntf* intf() const { return model.internal_intf(); }
};

TEST(ModelTest, CreationHandsOutIndicesAndRefusesAnOverwrite)
{
    Open m;
    EXPECT_EQ(m.model.getObjectIndex(), 1);
    Property const first = Property::create(m.model);
    EXPECT_EQ(first.getObjectIndex(), 2) << "the model is 1";
    EXPECT_TRUE(first.getModelTAV() == m.model);
    EXPECT_EQ(m.model.getUnparenteds().size(), 1);

    struct Case {
        int id;
        int nextAfter;
    };
    // Above the next index moves it past; below leaves it.
    for (Case c : {Case{10, 11}, Case{5, 11}, Case{11, 12}}) {
        Class const made = Class::createWithId(m.model, c.id);
        EXPECT_EQ(made.getObjectIndex(), c.id);
        EXPECT_EQ(m.intf()->getNextObjectIndex(m.root), c.nextAfter) << c.id;
        EXPECT_TRUE(m.intf()->getObjectAtIndex(m.root, c.id) == ClassObject(made));
    }
    EXPECT_TAV_THROW(Comment::createWithId(m.model, 10),
                     "Attempt to overwrite object (index = '10';type = 'TAV.Class') with object (index = '10'; "
                     "type = 'TAV.Comment')");
    // A far index is found again once the dense part has grown past it.
    Class const far = Class::createWithId(m.model, 5000);
    for (int i = 12; i < 5000; ++i)
        Comment::createWithId(m.model, i);
    EXPECT_TAV_THROW(Comment::createWithId(m.model, 5000), "Attempt to overwrite object (index = '5000'");
    EXPECT_TRUE(m.intf()->getObjectAtIndex(m.root, 5000) == ClassObject(far));
    EXPECT_TRUE(m.intf()->getObjectAtIndex(m.root, 1) == ClassObject(m.model));
    EXPECT_FALSE(m.intf()->getObjectAtIndex(m.root, 9999).internal_intf());
}

TEST(ModelTest, TheIndexWrapsIntoItsOverflowMessage)
{
    Open m;
    Class::createWithId(m.model, INT_MAX);
    EXPECT_EQ(m.intf()->getNextObjectIndex(m.root), INT_MIN);
    EXPECT_TAV_THROW(Class::create(m.model), "Internal id value overflow!");
    EXPECT_TAV_THROW(Class::createWithId(m.model, 40), "Internal id value overflow!");
}

TEST(ModelTest, CreationNeedsAModelAndATransaction)
{
    Model const none;
    EXPECT_TAV_THROW(Class::create(none), "Cannot access NULL ref");
    Model const model = Model::create();
    EXPECT_TAV_THROW(Class::create(model), "not opened for transactions");
}

TEST(ModelTest, UndoOfACreationTakesTheObjectOutAndRedoBringsItBack)
{
    Open m;
    m.root.commitTransaction();
    m.root.beginTransaction("make");
    Property const p = Property::create(m.model);
    m.root.commitTransaction();
    m.root.undo();
    EXPECT_FALSE(p.isValid());
    EXPECT_EQ(m.model.getUnparenteds().size(), 0);
    m.root.redo();
    EXPECT_TRUE(p.isValid());
    EXPECT_EQ(p.getObjectIndex(), 2) << "an object keeps its index through undo";
    EXPECT_TRUE(m.intf()->getObjectAtIndex(m.root, 2) == ClassObject(p));
}

TEST(ModelTest, UrisOfModelsAndObjects)
{
    Open m;
    String const uri = m.model.getUri();
    EXPECT_EQ(uri.toUtf8().rfind("pathmap://calyxpath/untitled", 0), 0u) << uri.toUtf8();
    EXPECT_TRUE(cache().getModelFromUri(uri) == m.model);
    Property const p = Property::create(m.model);
    EXPECT_EQ(p.getUri().toUtf8(), uri.toUtf8() + "#_tav_2");
    EXPECT_TRUE(p.hasUri());
    EXPECT_TAV_THROW(p.setUri("x"), "The ClassObject.uri derived property is read-only!");
    EXPECT_TAV_THROW(p.removeUri(), "The ClassObject.uri derived property is read-only!");
    m.intf()->removeTAV_Model_Uri(m.root);
    EXPECT_FALSE(p.hasUri());
    EXPECT_TAV_THROW(m.intf()->getTAV_Model_Uri(m.root), "Failed to obtain model's uri: Uri value is empty!");
    m.intf()->setTAV_Model_Uri(m.root, uri);
    EXPECT_EQ(m.intf()->getTAV_Model_Uri(m.root), uri);
}

TEST(ModelTest, ObjectsOutlivingTheirModelSayWhy)
{
    Property p;
    Class c;
    String uri;
    {
        Open m;
        uri = m.model.getUri();
        p = Property::create(m.model);
        c = Class::create(m.model);
        // Lists that hold each other: the model's end must break the cycle.
        p.getRedefinedProperties().push_back(p);
        p.setClass(c);
    }
    EXPECT_FALSE(cache().isModelUriInCache(uri)) << "a model unbinds itself";
    EXPECT_TAV_THROW(p.getName(), "object accessed after its model has been destroyed");
    EXPECT_TAV_THROW(c.getOwnedAttributes().size(), "object accessed after its model has been destroyed");
}

TEST(ModelCacheTest, UntitledNamesBindingAndPurge)
{
    Model const a = Model::create();
    Model const b = Model::create();
    std::string const second = b.getUri().toUtf8();
    EXPECT_NE(a.getUri(), b.getUri());
    EXPECT_EQ(second.rfind("pathmap://calyxpath/untitled", 0), 0u);
    EXPECT_NE(second.find_first_of("0123456789"), std::string::npos) << "a taken name gets the counter behind it";

    // A free name is returned as it is and uses up no number.
    String const free1 = cache().getNextAvailableModelUri("fresh");
    String const taken = cache().getNextAvailableModelUri(ModelCache::UNTITLED);
    EXPECT_EQ(free1.toUtf8(), "pathmap://calyxpath/fresh");
    cache().bindModel("pathmap://calyxpath/fresh", a);
    String const next = cache().getNextAvailableModelUri("fresh");
    EXPECT_NE(next, free1);
    EXPECT_NE(taken, next);

    cache().bindModel("pathmap://calyxpath/xMetaRegistry", a);
    cache().bindModel("pathmap://calyxpath/x", a);
    cache().bindModel("pathmap://calyxpath/x", b);
    EXPECT_TRUE(cache().getModelFromUri("pathmap://calyxpath/x") == b) << "binding replaces";
    EXPECT_FALSE(cache().getModelFromUri("pathmap://calyxpath/none").internal_intf());
    EXPECT_TAV_THROW(cache().bindModel("pathmap://calyxpath/y", Model()), "Cannot access NULL ref");

    cache().purge();
    EXPECT_TRUE(cache().isModelUriInCache("pathmap://calyxpath/xMetaRegistry"));
    EXPECT_FALSE(cache().isModelUriInCache("pathmap://calyxpath/x"));
    EXPECT_FALSE(cache().isModelUriInCache(a.getUri()));
    cache().unbindModel(a.internal_intf());
    EXPECT_FALSE(cache().isModelUriInCache("pathmap://calyxpath/xMetaRegistry"));
}

} // namespace
} // namespace TAV::test
