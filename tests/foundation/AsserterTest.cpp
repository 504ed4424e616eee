#include <tav/kernel/util/Asserter.h>

#include "support/Expect.h"

#include <cstring>
#include <string>

using namespace TAV;
using tavtest::raised;

TEST(Asserter, PassingChecksDoNothingAndLeaveTheBufferAlone)
{
    std::strcpy(Asserter::fLogBuf, "previous failure");
    int evaluated = 0;
    EXPECT_NO_THROW(Asserter::Make<Exception>(true, "%d %s", ++evaluated, "x").handle("f", 1, ""));
    EXPECT_NO_THROW(Asserter::Make(true).handle("f", 1, "e"));
    EXPECT_STREQ(Asserter::fLogBuf, "previous failure");
    EXPECT_EQ(evaluated, 1);
}

TEST(Asserter, ComposesTheMessageOfEachKind)
{
    auto plain = raised<Exception>([] { Asserter::Make(false).handle("kernel/a/B", 12, "x > 0"); });
    EXPECT_STREQ(plain.what(), "Assertion failed at kernel/a/B:12: x > 0");
    EXPECT_EQ(plain.GetID(), "fen:tav:assertion");

    EXPECT_RAISES_EXACTLY(
        Asserter::Make<Exception>(false, "size %d of %s", 3, "list").handle("kernel/deviant/Deviant", 7, ""),
        Exception, "Assertion failed: size 3 of list at kernel/deviant/Deviant:7: ");

    EXPECT_RAISES_EXACTLY(Asserter::MakeAlways<Exception>("this code should not be hit").handle("k/C", 1, ""),
                          Exception, "Assertion failed: this code should not be hit at k/C:1: ");
}

TEST(Asserter, UnimplementedKeepsItsTypeThroughHandle)
{
    EXPECT_RAISES_EXACTLY(Asserter::MakeAlways<UnImplementedException>("no %s yet", "merge").handle("m/M", 5, ""),
                          UnImplementedException, "Assertion failed: no merge yet at m/M:5: ");
}

TEST(Asserter, UnicodeAppendsItsTextAfterTheLocation)
{
    const std::u16string text = u"Stra\u00dfe \u6a21\u578b";
    auto e = raised<ExceptionUnicode>([&] { AsserterEx<ExceptionUnicode>(false, text).handle("s/W", 9, "ok"); });
    EXPECT_EQ(e.GetUnicodeMessageTxt(), u"Assertion failed at s/W:9: ok\n" + text);
    EXPECT_EQ(e.GetID(), "");
    EXPECT_STREQ(e.what(), "");
    EXPECT_NO_THROW(AsserterEx<ExceptionUnicode>(true, text).handle("s/W", 9, "ok"));
}

TEST(Asserter, UserExceptionCarriesTheKeyAndTheLastBufferOnly)
{
    std::strcpy(Asserter::fLogBuf, "left over");
    const BaseMsgID id("tav:messages", "TAV_Serializer_XmiReader_ReadError");
    auto e = raised<UserException>([&] { AsserterEx<UserException>(false, id).handle("x/Y", 3, "expr"); });
    EXPECT_EQ(e.GetID(), "TAV_Serializer_XmiReader_ReadError");
    EXPECT_STREQ(e.what(), "left over");
}

TEST(Asserter, LongMessagesAreCutAt4096Characters)
{
    const std::string longText(5000, 'z');
    auto e = raised<Exception>([&] { Asserter::Make<Exception>(false, "%s", longText.c_str()).handle("f", 2, ""); });
    EXPECT_EQ(std::strlen(Asserter::fLogBuf), 4096u);
    EXPECT_EQ(std::string(e.what()), "Assertion failed: " + std::string(4096, 'z') + " at f:2: ");
}

TEST(Asserter, ABrokenFormatClearsTheWholeBuffer)
{
    std::memset(Asserter::fLogBuf, 'q', sizeof Asserter::fLogBuf - 1);
    // A wide character that cannot be encoded in the C locale makes the formatter fail.
    const wchar_t unencodable[] = {0xD800, 0};
    EXPECT_RAISES_EXACTLY(Asserter::Make<Exception>(false, "%ls", unencodable).handle("f", 3, ""), Exception,
                          "Assertion failed:  at f:3: ");
    for (char c : Asserter::fLogBuf)
        ASSERT_EQ(c, '\0');
}
