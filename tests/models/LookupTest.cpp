// Finding objects again by id text and by URI: odd texts answer null or the parse
// message, never anything else.

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/ModelCache.h>
#include <tav/kernel/util/ObjectLookup.h>

#include "support/Expect.h"

#include <gtest/gtest.h>

#include <string>

namespace TAV::test {
namespace {

TEST(LookupTest, IdsAsText)
{
    Model const model = Model::create();
    model.getDeviant().beginTransaction();
    Class const c = Class::create(model);
    model.getDeviant().commitTransaction();
    EXPECT_EQ(SerializeId(c).toUtf8(), "_tav_2");
    struct Case {
        char const* text;
        int index;
    };
    for (Case k : {Case{"_tav_2", 2}, Case{"_tav_1", 1}, Case{"_tav_", 0}, Case{"_tav_2x", 0}, Case{"tav_2", 0},
                   Case{"_tav_-3", -3}, Case{"_tav_99999999999", 0}, Case{"", 0}})
        EXPECT_EQ(DeSerializeId(k.text), k.index) << k.text;
    EXPECT_TRUE(getObjectById("_tav_2", model) == ClassObject(c));
    EXPECT_TRUE(getObjectById("_tav_1", model) == ClassObject(model));
    EXPECT_FALSE(getObjectById("_tav_7", model).internal_intf());
}

TEST(LookupTest, ObjectsByUri)
{
    Model const model = Model::create();
    Model const other = Model::create();
    model.getDeviant().beginTransaction();
    Class const c = Class::create(model);
    model.getDeviant().commitTransaction();
    std::string const base = model.getUri().toUtf8();
    ModelCache::instance().bindModel("file:///tmp/a%20b.xmi", model);

    enum Answer { Null, TheModel, TheClass, Raises };
    struct Case {
        std::string text;
        Answer answer;
    };
    Case const cases[] = {
        {base, TheModel},
        {base + "#", TheModel},
        {base + "#_tav_2", TheClass},
        {base + "#_tav_1", TheModel},
        {base + "#_tav_3", Null},
        {base + "#notAnId", Null},
        {base + "#_tav_2#_tav_2", Raises},        // a second "#" is no URI
        {other.getUri().toUtf8() + "#_tav_2", Null}, // a wrong model
        {"file:///tmp/a%20b.xmi#_tav_2", TheClass}, // escapes are looked up as written
        {"file:///tmp/a b.xmi#_tav_2", Raises},
        {"pathmap://calyxpath/nowhere#_tav_2", Null},
        {"relative/path.xmi#_tav_2", Null},
        {"../up.xmi", Null},
        {"/tmp/local.xmi", Null},
        {"#_tav_2", Null},
        {base + "?q=1#_tav_2", Null},             // a query makes another model URI
        {"", Null},
        {"http://[::1", Raises},
        {"a b", Raises},
        {"%zz", Raises},
    };
    for (Case const& k : cases) {
        SCOPED_TRACE(k.text);
        if (k.answer == Raises) {
            EXPECT_TAV_THROW(getObjectByUri(String(k.text)), "Invalid uri : " + k.text);
            continue;
        }
        ClassObject const found = getObjectByUri(String(k.text));
        switch (k.answer) {
        case Null: EXPECT_FALSE(found.internal_intf()); break;
        case TheModel: EXPECT_TRUE(found == ClassObject(model)); break;
        case TheClass: EXPECT_TRUE(found == ClassObject(c)); break;
        case Raises: break;
        }
    }
    ModelCache::instance().unbindModel("file:///tmp/a%20b.xmi");
}

} // namespace
} // namespace TAV::test
