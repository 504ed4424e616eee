#include <tav/kernel/util/Exception.h>

#include <BRIX/ModuleObjectDeleter.h>
#include <hull/console.h>
#include <hull/stacktrace.h>

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> gOrder;

void note(void* name)
{
    gOrder.emplace_back(static_cast<const char*>(name));
}

void noteAndRegisterMore(void* name)
{
    note(name);
    BRIX::ModuleObjectDeleter::registerForCleanup(&note, const_cast<char*>("registered while cleaning"));
}

__attribute__((noinline)) int deepTrace(int depth, std::string& trace)
{
    if (depth == 0) {
        trace = TAV::Exception("deep").GetStackTrace();
        return 0;
    }
    const int result = deepTrace(depth - 1, trace);
    // Keeps the optimiser from turning the recursion into a loop.
    asm volatile("" ::: "memory");
    return result + 1;
}

} // namespace

TEST(ModuleObjectDeleter, RunsInReverseWithTheVisitorListLast)
{
    gOrder.clear();
    BRIX::ModuleObjectDeleter::registerForCleanup_toBeUsedOnlyByTAVCoopVisitor(&note, const_cast<char*>("visitor"));
    BRIX::ModuleObjectDeleter::registerForCleanup(&note, const_cast<char*>("first"));
    BRIX::ModuleObjectDeleter::registerForCleanup(&noteAndRegisterMore, const_cast<char*>("second"));
    BRIX::ModuleObjectDeleter::runCleanup();
    EXPECT_EQ(gOrder, (std::vector<std::string>{"second", "registered while cleaning", "first", "visitor"}));

    gOrder.clear();
    BRIX::ModuleObjectDeleter::runCleanup();
    EXPECT_TRUE(gOrder.empty()) << "a second run finds the lists empty";
}

TEST(ModuleObjectDeleter, DeletesTypedObjects)
{
    struct Counted {
        int* count;
        ~Counted() { ++*count; }
    };
    int deleted = 0;
    BRIX::ModuleObjectDeleter::registerForCleanup(new Counted{&deleted});
    BRIX::ModuleObjectDeleter::registerForCleanup(new Counted{&deleted});
    BRIX::ModuleObjectDeleter::runCleanup();
    EXPECT_EQ(deleted, 2);
}

TEST(Console, RedirectReturnsThePreviousStreamAndNullRestores)
{
    std::ostringstream mine;
    EXPECT_EQ(hull::console::setOut(&mine), &std::cout);
    hull::console::out() << "captured";
    EXPECT_EQ(hull::console::setOut(nullptr), &mine);
    EXPECT_EQ(&hull::console::out(), &std::cout);
    EXPECT_EQ(mine.str(), "captured");
    EXPECT_EQ(hull::console::setErr(nullptr), &std::cerr);
}

TEST(StackTrace, KeepsAtMost64Frames)
{
    std::string trace;
    deepTrace(100, trace);
    std::size_t lines = 0;
    for (char c : trace)
        lines += c == '\n';
    EXPECT_EQ(lines, hull::stacktrace::kMaxFrames);
    EXPECT_NE(trace.find("deepTrace"), std::string::npos);

    void* few[3];
    EXPECT_EQ(hull::stacktrace::capture(few, 3), 3u);
}
