#include <tav/kernel/util/Messages.h>
#include <tav/kernel/util/UserMessage.h>

#include <hull/filesystem.h>
#include <hull/i18n.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

namespace {

struct Key {
    const char* name;
    int arity;
};

#define TAV_KEY_ROW(K, Arity, Arguments) Key{#K, Arity},
const Key kKeys[] = {TAV_MESSAGES(TAV_KEY_ROW)};
#undef TAV_KEY_ROW

} // namespace

TEST(Catalogue, EveryKeyHasATextTakingItsArguments)
{
    EXPECT_EQ(std::size(kKeys), 34u);
    for (const Key& key : kKeys) {
        SCOPED_TRACE(key.name);
        const std::u16string text = hull::i18n::catalogueText("tav:messages", key.name);
        EXPECT_GT(text.size(), 10u);
        EXPECT_EQ(hull::i18n::placeholderCount(text), static_cast<std::size_t>(key.arity));
        EXPECT_EQ(tavmsg::getMessageStringFromId(std::string("tav:messages:") + key.name), text);
    }
}

TEST(Catalogue, HoldsNoTextForUnknownKeys)
{
    const std::string path = hull::filesystem::dataPath() + "/catalogues/tav/messages.txt";
    std::ifstream in(path);
    ASSERT_TRUE(in) << path;
    std::set<std::string> known;
    for (const Key& key : kKeys)
        known.insert(key.name);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        const std::string key = line.substr(0, line.find(" ="));
        EXPECT_TRUE(known.count(key)) << "stale or misspelt key: " << key;
    }
}

TEST(Catalogue, FormatsArgumentsOfEveryKind)
{
    tav::messages::TAV_Serializer_XmiReader_InvalidProperty_Location m(u"name", std::string("Cl\xc3\xa4ss"), "a.xmi", 12, 7u);
    EXPECT_EQ(hull::i18n::messageText(m), u"The metaclass \"Cl\u00e4ss\" has no property \"name\" (a.xmi, line 12, column 7).");
}

TEST(Catalogue, WrongArgumentCountIsAnErrorNamingKeyAndCounts)
{
    BRIX::BaseMsgID tooFew("tav:messages", "TAV_Serializer_XmiReader_ReadError");
    tooFew.addArgument("only the file");
    BRIX::BaseMsgID tooMany("tav:messages", "TAV_Serializer_XmiReader_EmptyFileList");
    tooMany.addArgument(1);
    for (const auto* m : {&tooFew, &tooMany}) {
        try {
            hull::i18n::messageText(*m);
            ADD_FAILURE() << "no error for " << m->key;
        } catch (const hull::i18n::CatalogueError& e) {
            const std::string what = e.what();
            EXPECT_NE(what.find(m->key), std::string::npos) << what;
            EXPECT_NE(what.find("takes"), std::string::npos) << what;
        }
    }
    try {
        hull::i18n::messageText(tooFew);
    } catch (const hull::i18n::CatalogueError& e) {
        EXPECT_NE(std::string(e.what()).find("takes 2 argument(s) but was given 1"), std::string::npos) << e.what();
    }
}

TEST(Catalogue, UnknownKeyOrCatalogueIsAnError)
{
    EXPECT_THROW(hull::i18n::catalogueText("tav:messages", "NoSuchKey"), hull::i18n::CatalogueError);
    EXPECT_THROW(hull::i18n::catalogueText("tav:nothing", "K"), hull::i18n::CatalogueError);
    EXPECT_THROW(tavmsg::getMessageStringFromId("nocolon"), hull::i18n::CatalogueError);
}

TEST(Catalogue, PlaceholderCounting)
{
    EXPECT_EQ(hull::i18n::placeholderCount(u"none"), 0u);
    EXPECT_EQ(hull::i18n::placeholderCount(u"{1} then {0}"), 2u);
    EXPECT_EQ(hull::i18n::placeholderCount(u"{{0}} is literal"), 0u);
    EXPECT_EQ(hull::i18n::placeholderCount(u"{2:>5}"), 3u);
}

TEST(Platform, InstallPathIsTheParentOfTheLibraryDirectory)
{
    const std::filesystem::path root = hull::filesystem::installPath();
    EXPECT_TRUE(std::filesystem::exists(root / "lib" / "libtqtav.so")) << root;
    EXPECT_TRUE(std::filesystem::is_directory(root / "share" / "tav")) << root;
    EXPECT_EQ(hull::filesystem::dataPath(), (root / "share" / "tav").string());
}

TEST(Platform, Utf16RoundTripAndRepair)
{
    const std::u16string wide = u"a\u00e9\u6a21\U0001F600";
    EXPECT_EQ(hull::i18n::toUtf16(hull::i18n::toUtf8(wide)), wide);
    EXPECT_EQ(hull::i18n::toUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
    EXPECT_EQ(hull::i18n::toUtf16("a\xff" "b"), u"a\uFFFD" u"b");
}
