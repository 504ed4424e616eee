#include <tav/kernel/util/Exception.h>
#include <tav/logger/ConsoleLogHandler.h>
#include <tav/logger/FileLogHandler.h>
#include <tav/logger/Logger.h>

#include "foundation/CaptureConsole.h"

#include "support/Expect.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <tuple>
#include <vector>

using namespace TAV;

namespace {

// Records what reaches it; takes everything unless given a filter.
class RecordingHandler : public LoggerLevelHandler {
public:
    RecordingHandler() : LoggerLevelHandler(new LevelPrefixFormatter, nullptr) {}
    void publish(const LogRecord& record) override { lines.push_back(getFormatter()->format(record)); }
    std::vector<std::string> lines;
};

// Each test starts with no handlers of its own and the default threshold.
class LoggerTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        for (LogHandler* h : registered)
            Logger::instance().removeHandler(h);
        Logger::resetTestMode();
        Logger::instance().setLevel(LogLevel::Info);
    }
    void add(LogHandler* h)
    {
        registered.push_back(h);
        Logger::instance().addHandler(h);
    }
    std::vector<LogHandler*> registered;
};

std::string readFile(const std::string& path)
{
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

TEST(LogLevel, NamesAndOrder)
{
    EXPECT_STREQ(LogLevel(LogLevel::Off).getLevelName(), "Off");
    EXPECT_STREQ(LogLevel::getLevelName(LogLevel::Warning), "Warning");
    EXPECT_STREQ(LogLevel::getLevelName(LogLevel::All), "All");
    EXPECT_STREQ(LogLevel::getLevelName(3), "Unknown Level");
    EXPECT_STREQ(LogLevel::getLevelName(-1), "Unknown Level");
    EXPECT_LT(LogLevel(LogLevel::Fatal), LogLevel(LogLevel::Trace));
}

TEST_F(LoggerTest, ThresholdAndOffAreApplied)
{
    CaptureConsole console;
    tavLogFatal("nobody listens");
    ConsoleLogHandler handler;
    add(&handler);
    tavLogFatal("f%d", 1);
    tavLogError("e");
    tavLogWarning("w");
    tavLogInfo("i %s", "x");
    tavLogDebug("d");
    tavLogTrace("t");
    tavLog(LogLevel::Off, "off");
    EXPECT_EQ(console.err.str(), "[Fatal] f1\n[Error] e\n[Warning] w\n");
    EXPECT_EQ(console.out.str(), "[Info] i x\n");

    handler.setLevel(LogLevel::Debug);
    EXPECT_EQ(Logger::instance().getLevel(), LogLevel(LogLevel::Debug));
    tavLogDebug("now d");
    tavLogTrace("still not t");
    EXPECT_EQ(console.out.str(), "[Info] i x\n[Debug] now d\n");
}

TEST_F(LoggerTest, OffIsNeverOfferedAddingTwiceDeliversOnceAndLongMessagesAreCut)
{
    RecordingHandler recorder;
    add(&recorder);
    Logger::instance().addHandler(&recorder);
    Logger::instance().publish(LogLevel::Off, "off");
    Logger::instance().publish(LogLevel::Trace, "trace");
    tavLogError("%s", std::string(5000, 'x').c_str());
    const std::vector<std::string> expected{"[Trace] trace\n", "[Error] " + std::string(4095, 'x') + "\n"};
    EXPECT_EQ(recorder.lines, expected);
    Logger::instance().removeHandler(&recorder);
    Logger::instance().removeHandler(&recorder);
    tavLogError("gone");
    EXPECT_EQ(recorder.lines.size(), 2u);
}

TEST_F(LoggerTest, NullHandlersAreRefused)
{
    EXPECT_RAISES(Logger::instance().addHandler(nullptr), Exception, "Failed to register null LogHandler");
    EXPECT_RAISES(Logger::instance().removeHandler(nullptr), Exception, "Failed to remove null LogHandler");
}

// Three handlers that, on each record, remove themselves, the others (and
// destroy them, as an owner would), or all three. A record reaches only the
// handlers still registered when their turn comes.
TEST_F(LoggerTest, HandlersMayRemoveThemselvesOrOthersWhilePublishing)
{
    struct Editing : LoggerLevelHandler {
        std::function<void(LogHandler*)> edit;
        explicit Editing(std::function<void(LogHandler*)> f) : LoggerLevelHandler(nullptr, nullptr), edit(f) {}
        void publish(const LogRecord&) override { edit(this); }
    };
    enum Removes { Itself, OthersAndDestroysThem, All };
    for (const auto& [removes, firstWalk, secondWalk] :
         {std::tuple{Itself, 3, 0}, std::tuple{OthersAndDestroysThem, 1, 1}, std::tuple{All, 1, 0}}) {
        std::set<LogHandler*> live;
        int calls = 0;
        const auto edit = [&, removes = removes](LogHandler* self) {
            ++calls;
            for (LogHandler* h : std::set<LogHandler*>(live)) {
                if (removes != All && (h == self) != (removes == Itself))
                    continue;
                Logger::instance().removeHandler(h);
                if (removes == OthersAndDestroysThem && live.erase(h))
                    delete h;
            }
        };
        for (int i = 0; i < 3; ++i)
            Logger::instance().addHandler(*live.insert(new Editing(edit)).first);
        tavLogError("first");
        EXPECT_EQ(calls, firstWalk) << removes;
        tavLogError("second");
        EXPECT_EQ(calls - firstWalk, secondWalk) << removes;
        for (LogHandler* h : live) {
            Logger::instance().removeHandler(h);
            delete h;
        }
    }
}

TEST_F(LoggerTest, TestModeKeepsOneConsoleHandler)
{
    CaptureConsole console;
    Logger::setTestMode();
    Logger::setTestMode();
    tavLogInfo("one");
    Logger::resetTestMode();
    tavLogInfo("none");
    Logger::setTestMode();
    tavLogInfo("again");
    EXPECT_EQ(console.out.str(), "[Info] one\n[Info] again\n");
}

TEST_F(LoggerTest, FileHandlerWritesTheProcessLogOrNothing)
{
    const std::string expected = "/tmp/tavLog." + std::to_string(::getpid());
    {
        FileLogHandler handler;
        EXPECT_EQ(handler.getPath(), expected);
        add(&handler);
        tavLogWarning("to the %s", "file");
        tavLogDebug("below threshold");
        // Flushed per record: readable before the handler goes.
        EXPECT_EQ(readFile(expected), "[Warning] to the file\n");
        Logger::instance().removeHandler(&handler);
        registered.clear();
    }
    {
        FileLogHandler truncating;
        EXPECT_EQ(readFile(expected), "");
    }
    // A directory in the file's place makes the open fail, and writes no-ops.
    std::filesystem::remove(expected);
    std::filesystem::create_directory(expected);
    {
        FileLogHandler handler;
        add(&handler);
        EXPECT_NO_THROW(tavLogError("lost"));
        Logger::instance().removeHandler(&handler);
        registered.clear();
    }
    EXPECT_TRUE(std::filesystem::is_empty(expected));
    std::filesystem::remove(expected);
}

TEST_F(LoggerTest, HandlersOwnTheirFormatterAndFilter)
{
    struct CountingFilter : LogFilter {
        int* alive;
        explicit CountingFilter(int* a) : alive(a) { ++*alive; }
        ~CountingFilter() override { --*alive; }
        bool isLoggable(const LogRecord&) override { return false; }
    };
    int alive = 0;
    {
        CaptureConsole console;
        ConsoleLogHandler handler;
        handler.setFilter(new CountingFilter(&alive));
        handler.setFilter(new CountingFilter(&alive));
        EXPECT_EQ(alive, 1);
        add(&handler);
        tavLogFatal("filtered out");
        EXPECT_EQ(console.err.str(), "");
        Logger::instance().removeHandler(&handler);
        registered.clear();
    }
    EXPECT_EQ(alive, 0);
}
