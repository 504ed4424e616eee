#include <tav/kernel/util/Messages.h>
#include <tav/kernel/util/UserMessage.h>

#include <hull/filesystem.h>
#include <hull/i18n.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace tav::messages;

template<std::size_t>
using Text = const char*;

template<class M, std::size_t N>
constexpr bool takes = []<std::size_t... I>(std::index_sequence<I...>) {
    return std::is_constructible_v<M, Text<I>...>;
}(std::make_index_sequence<N>{});

// Exactly its own count of arguments builds a message; one more or one less
// does not compile.
template<class M>
consteval bool takesExactlyItsArity()
{
    constexpr std::size_t n = M::kArity;
    if constexpr (n > 0)
        if (takes<M, n - 1>)
            return false;
    return takes<M, n> && !takes<M, n + 1>;
}

#define TAV_CHECK_ARITY(K, Arity, Arguments) static_assert(takesExactlyItsArity<K>(), #K);
TAV_MESSAGES(TAV_CHECK_ARITY)
#undef TAV_CHECK_ARITY

struct Key {
    const char* name;
    int arity;
    std::u16string (*format)(); // the text, each argument i given as "<i>"
};

template<class M>
std::u16string formatWithMarkers()
{
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        return hull::i18n::messageText(M(("<" + std::to_string(I) + ">")...));
    }(std::make_index_sequence<M::kArity>{});
}

#define TAV_KEY_ROW(K, Arity, Arguments) Key{#K, Arity, &formatWithMarkers<K>},
const Key kKeys[] = {TAV_MESSAGES(TAV_KEY_ROW)};
#undef TAV_KEY_ROW

} // namespace

// A text that leaves an argument out, or refers to one the key does not take,
// would show the user a message with a hole in it.
TEST(Catalogue, EveryKeyHasATextUsingEachOfItsArguments)
{
    EXPECT_EQ(std::size(kKeys), 34u);
    std::set<std::string> known;
    for (const Key& key : kKeys) {
        SCOPED_TRACE(key.name);
        known.insert(key.name);
        EXPECT_EQ(tavmsg::getMessageStringFromId(std::string(kCatalogue) + ":" + key.name),
                  hull::i18n::catalogueText(kCatalogue, key.name));
        std::string text;
        try {
            text = hull::i18n::toUtf8(key.format());
        } catch (const hull::i18n::CatalogueError& e) {
            ADD_FAILURE() << e.what();
        }
        EXPECT_GT(text.size(), 10u);
        for (int i = 0; i < key.arity; ++i) {
            EXPECT_NE(text.find("<" + std::to_string(i) + ">"), std::string::npos) << text;
        }
    }
    std::ifstream in(hull::filesystem::dataPath() + "/catalogues/tav/messages.txt");
    ASSERT_TRUE(in);
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        EXPECT_TRUE(known.count(line.substr(0, line.find(" =")))) << "stale or misspelt key: " << line;
    }
}

TEST(Catalogue, FormatsArgumentsOfEveryKind)
{
    TAV_Serializer_XmiReader_ReadError m(u"a.xmi", 12, 7u, std::string("bad \xc3\xa4"));
    EXPECT_EQ(hull::i18n::messageText(m), u"Could not read the file \"a.xmi\" (line 12, column 7): bad \u00e4");
}

TEST(Catalogue, WrongArgumentCountIsAnErrorNamingKeyAndCounts)
{
    BRIX::BaseMsgID tooFew(kCatalogue, "TAV_Serializer_XmiReader_ReadError");
    tooFew.addArgument("only the file");
    BRIX::BaseMsgID tooMany(kCatalogue, "TAV_Serializer_XmiReader_EmptyFileList");
    tooMany.addArgument(1);
    for (const auto& [m, words] : {std::pair{&tooFew, "takes 4 argument(s) but was given 1"},
                                   std::pair{&tooMany, "takes 0 argument(s) but was given 1"}}) {
        try {
            hull::i18n::messageText(*m);
            ADD_FAILURE() << "no error for " << m->key;
        } catch (const hull::i18n::CatalogueError& e) {
            EXPECT_NE(std::string(e.what()).find(m->key), std::string::npos) << e.what();
            EXPECT_NE(std::string(e.what()).find(words), std::string::npos) << e.what();
        }
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
