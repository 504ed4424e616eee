#include <tav/kernel/util/Messages.h>
#include <tav/kernel/util/UserMessage.h>

#include "foundation/CaptureConsole.h"

#include <hull/filesystem.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace {

struct Recorder : UserMessage::MessageStream {
    std::vector<UserMessage::Message> records;
    void message(const UserMessage::Message& record) override { records.push_back(record); }
};

struct StreamGuard {
    Recorder recorder;
    StreamGuard() { tavSetMessageStream(&recorder); }
    ~StreamGuard() { tavSetMessageStream(nullptr); }
};

} // namespace

TEST(UserMessage, IdentifierCleaning)
{
    EXPECT_EQ(tavmsg::cleanId("tav:messages:TAV_Serializer_XmiReader_ReadError"), "TAV Serializer_XmiReader_ReadError");
    EXPECT_EQ(tavmsg::cleanId("tav:messages:A_B_C:D"), "A B_C D");
    EXPECT_EQ(tavmsg::cleanId("abc"), "abc");
    EXPECT_EQ(tavmsg::cleanId(""), "");
    EXPECT_EQ(tavmsg::cleanId("CALYX:x:y_z"), "CALYX x y_z");
    EXPECT_EQ(tavmsg::cleanId("tav:messages"), "tav messages") << "the prefix needs its colon";
    EXPECT_EQ(tavmsg::cleanId("a_b:c_d"), "a b c_d");
}

TEST(UserMessage, CataloguedMessageBecomesARecord)
{
    StreamGuard guard;
    tavError("reader", tav::messages::TAV_Serializer_XmiReader_ReadError("model.xmi", 3, 14, u"no root"));
    tavInfo(tav::messages::TAV_Serializer_XmiReader_EmptyFileList());
    ASSERT_EQ(guard.recorder.records.size(), 2u);

    const auto& error = guard.recorder.records[0];
    EXPECT_EQ(error.severity, 0);
    EXPECT_EQ(error.id, "TAV Serializer_XmiReader_ReadError");
    EXPECT_EQ(error.source, "reader");
    EXPECT_EQ(error.text, u"Could not read the file \"model.xmi\" (line 3, column 14): no root");
    EXPECT_EQ(error.product, "QRD");

    EXPECT_EQ(guard.recorder.records[1].severity, 2);
    EXPECT_EQ(guard.recorder.records[1].source, "");
}

namespace {

// A foreign catalogue, present only while a test needs it.
struct TemporaryCatalogue {
    std::filesystem::path path;
    TemporaryCatalogue(const std::string& relative, const std::string& content)
        : path(hull::filesystem::dataPath() + "/catalogues/" + relative)
    {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << content;
    }
    ~TemporaryCatalogue() { std::filesystem::remove(path); }
};

} // namespace

TEST(UserMessage, LegacyCatalogueMarkerFoldedOnlyWhenExact)
{
    StreamGuard guard;
    TemporaryCatalogue legacy("CALYX/legacy_two_part.txt", "K = legacy {0}\n");
    TemporaryCatalogue other("X/CALYX/legacy_two_part.txt", "K = other\n");
    BRIX::BaseMsgID exact("CALYX:legacy_two_part", "K");
    exact.addArgument(7);
    tavWarning(exact);
    tavWarning(BRIX::BaseMsgID("X:CALYX:legacy_two_part", "K"));
    ASSERT_EQ(guard.recorder.records.size(), 2u);
    EXPECT_EQ(guard.recorder.records[0].id, "CALYX K");
    EXPECT_EQ(guard.recorder.records[0].text, u"legacy 7");
    EXPECT_EQ(guard.recorder.records[1].id, "X CALYX legacy_two_part K");
    EXPECT_EQ(guard.recorder.records[1].text, u"other");
}

TEST(UserMessage, PushedTextsSkipTheCatalogue)
{
    StreamGuard guard;
    tavmsg::pushWarning("src", "tav:messages:A_B", u"text");
    tavmsg::pushError("", "no_catalogue", u"e");
    ASSERT_EQ(guard.recorder.records.size(), 2u);
    EXPECT_EQ(guard.recorder.records[0].id, "A B");
    EXPECT_EQ(guard.recorder.records[0].severity, 1);
    EXPECT_EQ(guard.recorder.records[0].text, u"text");
    EXPECT_EQ(guard.recorder.records[1].id, "no catalogue");
    EXPECT_EQ(guard.recorder.records[1].severity, 0);
}

TEST(UserMessage, StreamInstallationAndProduct)
{
    UserMessage::MessageStream* defaultStream = tavGetMessageStream();
    EXPECT_NE(dynamic_cast<UserMessage::DefaultMessageStream*>(defaultStream), nullptr);
    {
        StreamGuard guard;
        EXPECT_EQ(tavGetMessageStream(), &guard.recorder);
        tavSetProduct("Modeller");
        tavmsg::pushInfo("", "x", u"y");
        tavSetProduct("QRD");
        ASSERT_EQ(guard.recorder.records.size(), 1u);
        EXPECT_EQ(guard.recorder.records[0].product, "Modeller");
    }
    EXPECT_EQ(tavGetMessageStream(), defaultStream);
}

TEST(UserMessage, DefaultStreamRoutesBySeverity)
{
    CaptureConsole console;
    UserMessage::DefaultMessageStream stream;
    stream.message({0, "E id", "hidden source", u"bad \u00e9", "P"});
    stream.message({1, "W", "s", u"careful", "P"});
    stream.message({2, "I", "s", u"fyi", "P"});
    stream.message({3, "X", "s", u"never", "P"});
    stream.message({-1, "X", "s", u"never", "P"});
    tavError(UserMessage::Source("ignored"), tav::messages::TAV_Serializer_XmiWriter_FileOpen("/x/y.xmi"));
    EXPECT_EQ(console.err.str(), "[UM:Error] : P : E id : bad \xc3\xa9\n"
                                 "[UM:Error] : QRD : TAV Serializer_XmiWriter_FileOpen : "
                                 "Could not open the file \"/x/y.xmi\".\n");
    EXPECT_EQ(console.out.str(), "[UM:Warning] : P : W : careful\n[UM:Info] : P : I : fyi\n");
}
