#include <tav/kernel/util/Exception.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace TAV;

namespace {

struct StringOutput : BRIX::ObjectOutput {
    std::string text;
    void write(const char* data, std::size_t size) override { text.append(data, size); }
};

// Restores the process-wide flag whatever a test does.
struct VerboseGuard {
    explicit VerboseGuard(bool on) : previous(setVerboseErrorMessage(on)) {}
    ~VerboseGuard() { setVerboseErrorMessage(previous); }
    bool previous;
};

} // namespace

TEST(Exception, IdsOfEachConstructor)
{
    EXPECT_EQ(Exception("m").GetID(), "fen:tav:assertion");
    EXPECT_EQ(Exception(std::string("m")).GetID(), "fen:tav:assertion");
    EXPECT_EQ(Exception("m", "my:id").GetID(), "my:id");
    EXPECT_EQ(DebugException("m").GetID(), "fen:tav:assertion");
    EXPECT_EQ(UnImplementedException(std::string("m")).GetID(), "fen:tav:assertion");
    EXPECT_EQ(ExceptionUnicode(u"m").GetID(), "");

    BaseMsgID msg("tav:messages", "TAV_LoadModule_Error");
    msg.addArgument("a");
    UserException user("text", msg);
    EXPECT_EQ(user.GetID(), "TAV_LoadModule_Error");
    EXPECT_STREQ(user.what(), "text");
}

TEST(Exception, CloneAndRethrowSliceUserDebugAndUnimplemented)
{
    const UserException user("u", BaseMsgID("tav:messages", "K"));
    const DebugException debug("d");
    const UnImplementedException unimplemented("n");
    for (const Exception* e : {static_cast<const Exception*>(&user), static_cast<const Exception*>(&debug),
                               static_cast<const Exception*>(&unimplemented)}) {
        std::unique_ptr<Exception> copy(e->clone());
        const Exception& copied = *copy;
        EXPECT_EQ(typeid(copied), typeid(Exception));
        EXPECT_STREQ(copy->what(), e->what());
        EXPECT_EQ(copy->GetID(), e->GetID());
        EXPECT_EQ(&copy->GetStackTrace(), &e->GetStackTrace()) << "the trace record is shared";

        try {
            e->rethrow();
        } catch (const UserException&) {
            ADD_FAILURE() << "rethrow kept the derived type";
        } catch (const Exception& thrown) {
            EXPECT_EQ(typeid(thrown), typeid(Exception));
            EXPECT_EQ(thrown.GetID(), e->GetID());
        }
    }
}

TEST(Exception, UnicodeKeepsItsTypeOnCloneAndRethrow)
{
    const ExceptionUnicode e(u"\u00e9t\u00e9");
    std::unique_ptr<Exception> copy(e.clone());
    const Exception& copied = *copy;
    EXPECT_EQ(typeid(copied), typeid(ExceptionUnicode));
    EXPECT_EQ(copy->GetUnicodeMessageTxt(), u"\u00e9t\u00e9");
    EXPECT_THROW(e.rethrow(), ExceptionUnicode);
}

TEST(Exception, CopiesShareOneTraceFormattedOnce)
{
    const Exception original("shared");
    const Exception copy = original;
    const std::string& first = copy.GetStackTrace();
    EXPECT_EQ(&first, &original.GetStackTrace());
    EXPECT_NE(first.find("ExceptionTest"), std::string::npos) << first;
    // A different exception has its own record.
    const Exception other("other");
    EXPECT_NE(&other.GetStackTrace(), &first);
}

TEST(Exception, LastTraceIsThatOfTheNewestException)
{
    const Exception older("older");
    [] { const Exception newest("newest"); }();
    const std::string last = getLastExceptionStackTrace();
    EXPECT_FALSE(last.empty());
    EXPECT_NE(last, older.GetStackTrace());
}

TEST(Exception, VerboseFlagAddsTheTrace)
{
    VerboseGuard quiet(false);
    EXPECT_FALSE(setVerboseErrorMessage(true));
    EXPECT_TRUE(setVerboseErrorMessage(true));
    setVerboseErrorMessage(false);

    const Exception e("caf\xc3\xa9");
    EXPECT_EQ(e.GetUnicodeMessageTxt(), u"caf\u00e9");
    const ExceptionUnicode u(u"wide");
    EXPECT_EQ(u.GetUnicodeMessageTxt(), u"wide");

    setVerboseErrorMessage(true);
    const std::u16string verbose = e.GetUnicodeMessageTxt();
    EXPECT_EQ(verbose.substr(0, 5), u"caf\u00e9\n");
    EXPECT_GT(verbose.size(), 5u + 10u);
    EXPECT_EQ(u.GetUnicodeMessageTxt().substr(0, 5), u"wide\n");
    std::string converted;
    e.convert_str(converted);
    EXPECT_EQ(converted, "caf\xc3\xa9\n" + e.GetStackTrace());
}

TEST(Exception, WriteExternalWritesTheMessageAndALineFeed)
{
    StringOutput out;
    Exception("broken model").writeExternal(out);
    EXPECT_EQ(out.text, "broken model\n");
}
