#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/String.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/TAV/VisibilityKind.h>
#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/StringUtil.h>

#include "support/Expect.h"

#include <cmath>

namespace {

using TAV::String;

TEST(StringTest, Utf8RoundTripsThroughUtf16IncludingSurrogatePairs)
{
    char const* text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"; // a, e-acute, euro, emoji, z
    String const s(text);
    EXPECT_EQ(s.str(), std::u16string(u"a\u00e9\u20ac\U0001F600z"));
    EXPECT_EQ(s.size(), 6u) << "the emoji takes two UTF-16 units";
    EXPECT_STREQ(s.c_str(), text);
    EXPECT_EQ(String(std::u16string(u"\U0001F600")).toUtf8(), "\xF0\x9F\x98\x80");
    EXPECT_EQ(String::to_ustring(text), s.str());
    EXPECT_EQ(String::to_string(s.str()), text);
    EXPECT_EQ(TAV::util::UTF8ToUString(text), s.str());
    EXPECT_EQ(TAV::util::UStringToUTF8(s.str()), text);
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
    EXPECT_EQ(String(static_cast<char const*>(nullptr)), String());
}

TEST(StringTest, FromNumbersAsTheirValueClassesWriteThem)
{
    EXPECT_EQ(String(42), "42");
    EXPECT_EQ(String(4294967295u), "*") << "an unsigned is an UnlimitedNatural";
    EXPECT_EQ(String(7u), "7");
    EXPECT_EQ(String(0.1), "0.1");
    EXPECT_EQ(String(0.1f), "0.1");
    EXPECT_EQ(String(-0.0), "0");
    EXPECT_EQ(String(true), "true");
    EXPECT_TRUE("42" == String(42)) << "a narrow text compares through the String constructor";

    EXPECT_EQ(TAV::util::stringify(0.1), "0.1");
    EXPECT_EQ(TAV::util::stringify(1.0 / 3), "0.333333") << "a plain insertion, six digits";
    EXPECT_EQ(TAV::util::stringify(1e21), "1e+21");
}

TEST(ValueClassTextTest, ToStringAndFromStringGoThroughTheDescription)
{
    EXPECT_EQ(TAV::UnlimitedNatural(TAV::UnlimitedNatural::kUnlimited).toString(), "*");
    EXPECT_EQ(TAV::Double(-0.0).toString(), "0");
    EXPECT_EQ(TAV::Integer(-5).toString(), "-5");
    EXPECT_EQ(TAV::Boolean(true).toString(), "true");
    EXPECT_EQ(TAV::Single(0.25f).toString(), "0.25");

    EXPECT_EQ(TAV::Integer::fromString("0x10"), 16);
    EXPECT_EQ(TAV::UnlimitedNatural::fromString("*"), TAV::UnlimitedNatural::kUnlimited);
    EXPECT_EQ(TAV::Real::fromString("2.5"), 2.5);
    EXPECT_TRUE(std::isnan(TAV::Double::fromString("NaN").value()));
    EXPECT_EQ(TAV::Single(String("0.1")), 0.1f);
    EXPECT_FALSE(TAV::Boolean("false")) << "a literal is text, not a pointer taken for true";
    EXPECT_TRUE(TAV::Boolean(String(u"true")));
}

TEST(ValueClassTextTest, BadTextIsAnAssertionNamingTheTargetType)
{
    auto const refusal = [](std::string const& type) {
        return "Assertion failed: Unable to convert from string to " + type + "! at kernel/TAV/values/Scalars:";
    };
    EXPECT_RAISES(TAV::Boolean::fromString("True"), TAV::Exception, refusal("bool"));
    EXPECT_RAISES((void)TAV::Boolean("1"), TAV::Exception, refusal("bool"));
    EXPECT_RAISES(TAV::Integer::fromString("2147483648"), TAV::Exception, refusal("INT32_T"));
    EXPECT_RAISES((void)TAV::Integer(String("")), TAV::Exception, refusal("INT32_T"));
    EXPECT_RAISES(TAV::UnlimitedNatural::fromString("x"), TAV::Exception, refusal("UINT32_T"));
    EXPECT_RAISES(TAV::Double::fromString("1e400"), TAV::Exception, refusal("double"));
    EXPECT_RAISES((void)TAV::Real(String("nan")), TAV::Exception, refusal("double"));
    EXPECT_RAISES(TAV::Single::fromString("1e39"), TAV::Exception, refusal("float"));
}

TEST(ValueClassTextTest, NumbersCrossByPlainCasts)
{
    EXPECT_FALSE(TAV::Boolean(TAV::Double(0.0)));
    EXPECT_FALSE(TAV::Boolean(TAV::Double(-0.0)));
    EXPECT_TRUE(TAV::Boolean(TAV::Double(0.25)));
    EXPECT_EQ(TAV::Double(TAV::UnlimitedNatural(TAV::UnlimitedNatural::kUnlimited)), 4294967295.0)
        << "through the unsigned value, not -1";
    EXPECT_EQ(TAV::UnlimitedNatural(TAV::Double(3.99)), 3u);
    EXPECT_EQ(TAV::Integer(TAV::UnlimitedNatural(TAV::UnlimitedNatural::kUnlimited)), -1);
    EXPECT_TRUE(TAV::UnlimitedNatural(TAV::Integer(-1)).isUnlimited());
    EXPECT_EQ(TAV::Single(TAV::Double(0.1)), 0.1f);
}

// Every literal writes as itself and reads back as its value.
template <class E>
void expectLiteralsReadBack()
{
    for (auto const& [value, literal] : E::getLiterals()) {
        EXPECT_EQ(E(value).toString(), String(literal));
        EXPECT_EQ(E::fromString(String(literal)), value) << literal;
    }
}

TEST(EnumerationValuesTest, LiteralsAreCaseExactAndOtherValuesPrintAsNumbers)
{
    expectLiteralsReadBack<TAV::VisibilityKind>();
    expectLiteralsReadBack<TAV::ParameterDirectionKind>();
    expectLiteralsReadBack<TAV::PersistenceKind>();
    expectLiteralsReadBack<TAV::PackageMergeKind>();
    EXPECT_EQ(TAV::VisibilityKind().toString(), String("public"));
    EXPECT_EQ(TAV::VisibilityKind(17).toString(), String("17"));
    EXPECT_EQ(TAV::VisibilityKind(String("protected")), TAV::VisibilityKind::Protected);

    EXPECT_RAISES(
        TAV::PersistenceKind::fromString("Extension"), TAV::Exception,
        "Assertion failed: Unable to convert from string to PersistenceKind! at kernel/TAV/values/Enumerations:");
    EXPECT_RAISES(TAV::PackageMergeKind::fromString("extend"), TAV::Exception, "to PackageMergeKind!")
        << "files say exdend";
    EXPECT_RAISES(TAV::VisibilityKind::fromString("17"), TAV::Exception, "to VisibilityKind!")
        << "a number is no literal";
    EXPECT_RAISES((void)TAV::ParameterDirectionKind(String("")), TAV::Exception, "to ParameterDirectionKind!");

    BRIX::TypeInfo const& info = TAV::VisibilityKind::getTypeInfo();
    EXPECT_EQ(info.convertToString(info.defaultConstruct()), "public");
    EXPECT_EQ(info.convertToString(TAV::VisibilityKind(17)), "17");
    EXPECT_TRUE(info->isLessThan(TAV::VisibilityKind(TAV::VisibilityKind::Public),
                                 TAV::VisibilityKind(TAV::VisibilityKind::Package)))
        << "by value, though \"package\" < \"public\"";
    EXPECT_THROW(info.convertToString(TAV::PackageMergeKind()), BRIX::bad_any_cast);
}

} // namespace
