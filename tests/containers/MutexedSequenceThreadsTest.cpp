// The mutexed view under several reading threads and one writing thread. Run
// under ThreadSanitizer by the tsan preset: any unguarded access is a report.

#include <tav/TAV/String.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/containers/sequence/views/GenericMutexedSequence.h>

#include <boost/thread/shared_mutex.hpp>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace TAV::test {
namespace {

constexpr int kFloor = 16;     // the writer never leaves fewer elements
constexpr int kWrites = 4000;
constexpr int kReaders = 3;

// Made, filled and wrapped before any thread starts; the threads share the
// one handle by reference, since copying a handle counts without a lock.
TEST(MutexedSequenceThreads, ReadersAndAWriterShareOneSequence)
{
    boost::shared_mutex mutex;
    Sequence<String> const values = MakeSequence<String>({Deviant(), STD_VECTOR});
    for (int i = 0; i < kFloor; ++i)
        values.push_back(String(i));
    Sequence<String> const shared(
        Generic::SequencePtr(new Generic::HeapCounted<GenericMutexedSequence>(values.internal_sequence(), mutex)),
        Deviant());

    std::atomic<bool> writing{true};
    std::atomic<long> reads{0};
    std::vector<std::thread> readers;
    for (int r = 0; r < kReaders; ++r)
        readers.emplace_back([&, r] {
            long mine = 0;
            for (int i = r; writing.load(std::memory_order_relaxed); ++i, ++mine) {
                int const size = shared.size();
                if (size < kFloor || size > kFloor + 1)
                    ADD_FAILURE() << "size " << size;
                String const value = shared.at(i % kFloor);
                if (value.str().empty())
                    ADD_FAILURE() << "empty value at " << i % kFloor;
                (void)shared.contains(value);
                (void)shared.back();
            }
            reads += mine;
        });

    for (int n = 0; n < kWrites; ++n) {
        shared.push_back(String(kFloor + n));
        shared.pop_front();
        if (n % 64 == 0)
            shared.replace(0, shared.front());
    }
    writing = false;
    for (std::thread& t : readers)
        t.join();

    EXPECT_GT(reads.load(), 0);
    ASSERT_EQ(values.size(), kFloor);
    EXPECT_EQ(values.front().toUtf8(), std::to_string(kWrites));
    EXPECT_EQ(values.back().toUtf8(), std::to_string(kFloor + kWrites - 1));
}

} // namespace
} // namespace TAV::test
