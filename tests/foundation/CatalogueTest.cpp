#include <tav/kernel/util/Messages.h>
#include <tav/kernel/util/UserMessage.h>

#include <hull/filesystem.h>
#include <hull/i18n.h>

#include "support/Expect.h"

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

// M is built from exactly its own count of arguments (one more or one less
// does not compile), and its text uses each of them: a text that leaves one
// out would show the user a message with a hole in it.
template<class M>
void checkKey(const char* key, std::set<std::string>& known)
{
    constexpr std::size_t n = M::kArity;
    static_assert(takes<M, n> && !takes<M, n + 1>);
    if constexpr (n > 0)
        static_assert(!takes<M, n - 1>);
    SCOPED_TRACE(key);
    known.insert(key);
    EXPECT_EQ(tavmsg::getMessageStringFromId(std::string(kCatalogue) + ":" + key),
              hull::i18n::catalogueText(kCatalogue, key));
    const std::string text = hull::i18n::toUtf8([]<std::size_t... I>(std::index_sequence<I...>) {
        return hull::i18n::messageText(M(("<" + std::to_string(I) + ">")...));
    }(std::make_index_sequence<n>{}));
    EXPECT_GT(text.size(), 10u);
    for (std::size_t i = 0; i < n; ++i) {
        EXPECT_NE(text.find("<" + std::to_string(i) + ">"), std::string::npos) << text;
    }
}

} // namespace

TEST(Catalogue, EveryKeyHasATextUsingEachOfItsArguments)
{
    std::set<std::string> known;
#define TAV_CHECK_KEY(K, Arity, Arguments) checkKey<K>(#K, known);
    TAV_MESSAGES(TAV_CHECK_KEY)
#undef TAV_CHECK_KEY
    EXPECT_EQ(known.size(), 34u);
    std::ifstream in(hull::filesystem::dataPath() + "/catalogues/tav/messages.txt");
    ASSERT_TRUE(in);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line[0] != '#') {
            EXPECT_TRUE(known.count(line.substr(0, line.find(" =")))) << "stale or misspelt key: " << line;
        }
    }
}

TEST(Catalogue, FormatsArgumentsOfEveryKindAndRefusesAWrongCount)
{
    TAV_Serializer_XmiReader_ReadError m(u"a.xmi", 12, 7u, std::string("bad \xc3\xa4"));
    EXPECT_EQ(hull::i18n::messageText(m), u"Could not read the file \"a.xmi\" (line 12, column 7): bad \u00e4");
    BRIX::BaseMsgID tooFew(kCatalogue, m.key);
    tooFew.addArgument("only the file");
    EXPECT_RAISES(hull::i18n::messageText(tooFew), hull::i18n::CatalogueError,
                  m.key + " takes 4 argument(s) but was given 1");
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
