#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/String.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/TAV/VisibilityKind.h>

#include <tav/kernel/util/Exception.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <set>

namespace {

using ::testing::HasSubstr;
using TAV::String;

TEST(StringTest, Utf8RoundTripsThroughUtf16IncludingSurrogatePairs)
{
    char const* text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"; // a, e-acute, euro, emoji, z
    String const s(text);
    EXPECT_EQ(s.str(), std::u16string(u"a\u00e9\u20ac\U0001F600z"));
    EXPECT_EQ(s.size(), 6u) << "the emoji takes two UTF-16 units";
    EXPECT_STREQ(s.c_str(), text);
    EXPECT_EQ(String(std::u16string(u"\U0001F600")).toUtf8(), "\xF0\x9F\x98\x80");
}

TEST(StringTest, MalformedUtf8BecomesReplacementCharacters)
{
    EXPECT_EQ(String("a\xC3").str(), std::u16string(u"a\ufffd")) << "truncated sequence";
    EXPECT_EQ(String("\xC3(").str(), std::u16string(u"\ufffd(")) << "bad continuation keeps the next byte";
    EXPECT_EQ(String("\xFF").str(), std::u16string(u"\ufffd"));
    EXPECT_EQ(String("\xC0\x80").str(), std::u16string(u"\ufffd")) << "an overlong NUL is no NUL";
    EXPECT_EQ(String("\xED\xA0\x80!").str(), std::u16string(u"\ufffd!")) << "an encoded surrogate";
    EXPECT_EQ(String("\xF4\x90\x80\x80").str(), std::u16string(u"\ufffd")) << "beyond U+10FFFF";
    EXPECT_EQ(String(std::u16string(1, char16_t(0xD800))).toUtf8(), "\xEF\xBF\xBD") << "lone surrogate";
}

TEST(StringTest, EightBitCopyFollowsEveryMutation)
{
    String s("abc");
    EXPECT_STREQ(s.c_str(), "abc");
    s += String("def");
    EXPECT_STREQ(s.c_str(), "abcdef");
    s = String("x");
    EXPECT_STREQ(s.c_str(), "x");
    String copy(s);
    copy.clear();
    EXPECT_TRUE(copy.empty());
    EXPECT_STREQ(copy.c_str(), "");
    EXPECT_STREQ(s.c_str(), "x") << "copies do not share the 8-bit buffer";
}

TEST(StringTest, ComparesByContent)
{
    EXPECT_EQ(String("abc"), String(u"abc"));
    EXPECT_NE(String("abc"), String("abd"));
    EXPECT_LT(String("ab"), String("abc"));
    EXPECT_TRUE(String().empty());
    EXPECT_EQ(String(static_cast<char const*>(nullptr)), String());
    std::set<String> ordered{String("b"), String("a"), String("b")};
    EXPECT_EQ(ordered.size(), 2u);
}

TEST(ScalarValuesTest, DefaultsConversionsAndOrder)
{
    EXPECT_FALSE(TAV::Boolean());
    EXPECT_EQ(TAV::Integer(), 0);
    EXPECT_EQ(TAV::Integer(-5) + 1, -4);
    EXPECT_LT(TAV::Integer(-1), TAV::Integer(0));
    EXPECT_EQ(TAV::Double(), 0.0);
    EXPECT_EQ(TAV::Single(1.5f), 1.5f);

    TAV::UnlimitedNatural const star(TAV::UnlimitedNatural::kUnlimited);
    EXPECT_TRUE(star.isUnlimited());
    EXPECT_EQ(static_cast<std::uint32_t>(star), 0xFFFFFFFFu);
    EXPECT_FALSE(TAV::UnlimitedNatural(1).isUnlimited());
    EXPECT_LT(TAV::UnlimitedNatural(1), star);
}

// What an enumeration makes of a text: the value, or the assertion's text.
template <class E>
std::string fromText(char const* aText)
{
    try {
        return std::to_string(E::fromString(String(aText)).value());
    } catch (TAV::Exception const& e) {
        return e.what();
    }
}

TEST(EnumerationValuesTest, TheShapeOfEveryValueClass)
{
    EXPECT_EQ(TAV::VisibilityKind().toString(), String("public"));
    EXPECT_EQ(TAV::VisibilityKind(TAV::VisibilityKind::Package).toString(), String("package"));
    EXPECT_EQ(TAV::ParameterDirectionKind(TAV::ParameterDirectionKind::Return).toString(), String("return"));
    EXPECT_EQ(TAV::PersistenceKind(1).toString(), String("transient"));
    EXPECT_EQ(TAV::PackageMergeKind().toString(), String("exdend"));
    EXPECT_EQ(TAV::VisibilityKind(17).toString(), String("17")) << "unknown values print as numbers";

    EXPECT_EQ(fromText<TAV::PersistenceKind>("extension"), "2");
    EXPECT_EQ(fromText<TAV::ParameterDirectionKind>("inout"), "1");
    EXPECT_EQ(fromText<TAV::PackageMergeKind>("define"), "1");
    EXPECT_EQ(TAV::VisibilityKind(String("protected")), TAV::VisibilityKind::Protected);
    EXPECT_THAT(fromText<TAV::PersistenceKind>("Extension"),
                HasSubstr("Assertion failed: Unable to convert from string to PersistenceKind! at "
                          "kernel/TAV/values/Enumerations:"));
    EXPECT_THAT(fromText<TAV::PackageMergeKind>("extend"), HasSubstr("to PackageMergeKind!")) << "files say exdend";
    EXPECT_THAT(fromText<TAV::VisibilityKind>("17"), HasSubstr("to VisibilityKind!")) << "a number is no literal";
    EXPECT_THROW((void)TAV::ParameterDirectionKind(String("")), TAV::Exception);
    EXPECT_EQ(TAV::PackageMergeKind::getLiterals().size(), 2u);
}

} // namespace
