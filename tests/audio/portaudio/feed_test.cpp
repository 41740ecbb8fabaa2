// The callbacks' work without a device: the tests call it as a sound card would.
#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <thread>

#include "platform/portaudio/block_notifier.h"
#include "platform/portaudio/callback_gate.h"
#include "platform/portaudio/input_feed.h"
#include "platform/portaudio/output_feed.h"
#include "test_loop.h"

namespace sonavel {
namespace {

using Bytes = std::vector<std::uint8_t>;

void Discard(const std::function<void()>&) {}

class FeedTest : public ::testing::Test {
  protected:
    static constexpr WaveFormat kMono8{1, 8000, 8};

    FeedTest() {
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            blocks[i].data.resize(10);
            std::iota(blocks[i].data.begin(), blocks[i].data.end(),
                      static_cast<std::uint8_t>(1 + 10 * i));
        }
    }

    Bytes Render(OutputFeed& feed, std::size_t size, std::uint64_t latency = 0) {
        Bytes bytes(size, 0xEE);
        feed.Render(bytes, latency);
        return bytes;
    }
    static Bytes Range(int from, int to, std::size_t silence = 0) {
        Bytes bytes(static_cast<std::size_t>(to - from));
        std::iota(bytes.begin(), bytes.end(), static_cast<std::uint8_t>(from));
        bytes.insert(bytes.end(), silence, 128);
        return bytes;
    }

    std::array<WaveBlock, 4> blocks;
    BlockNotifier notifier{Discard};
    std::shared_ptr<BlockNotifier::Channel> channel = notifier.OpenChannel({});
};

TEST_F(FeedTest, BytesGoOutInOrderWhateverTheBufferSize) {
    OutputFeed feed(kMono8, *channel);
    for (WaveBlock& block : blocks) ASSERT_TRUE(feed.Push(block));
    EXPECT_EQ(Render(feed, 5), Bytes(5, 128));
    feed.SetPaused(false);
    EXPECT_EQ(Render(feed, 7), Range(1, 8));
    EXPECT_FALSE(blocks[0].done);
    EXPECT_EQ(Render(feed, 3), Range(8, 11));
    EXPECT_TRUE(blocks[0].done);
    feed.SetPaused(true);
    EXPECT_EQ(Render(feed, 5), Bytes(5, 128));
    feed.SetPaused(false);
    EXPECT_EQ(Render(feed, 25), Range(11, 36));
    EXPECT_TRUE(blocks[2].done);
    EXPECT_FALSE(blocks[3].done);
    EXPECT_EQ(Render(feed, 10), Range(36, 41, 5));
}

TEST_F(FeedTest, TheLastBlockIsDoneWhenItHasBeenHeard) {
    OutputFeed feed(kMono8, *channel);
    feed.SetPaused(false);
    ASSERT_TRUE(feed.Push(blocks[0]));
    Render(feed, 12, 20);  // the block's end is byte 10; with this latency it is heard at byte 30
    EXPECT_FALSE(blocks[0].done);
    Render(feed, 12, 20);
    EXPECT_FALSE(blocks[0].done);
    Render(feed, 12, 20);  // begins at byte 24
    EXPECT_FALSE(blocks[0].done);
    Render(feed, 12, 20);  // begins at byte 36
    EXPECT_TRUE(blocks[0].done);
}

TEST_F(FeedTest, EverythingComesBackAtAReset) {
    OutputFeed feed(kMono8, *channel);
    feed.SetPaused(false);
    for (WaveBlock& block : blocks) ASSERT_TRUE(feed.Push(block));
    Render(feed, 5);
    feed.ReturnAll();
    for (const WaveBlock& block : blocks) EXPECT_TRUE(block.done);
    EXPECT_EQ(Render(feed, 3), Bytes(3, 128));
    ASSERT_TRUE(feed.Push(blocks[1]));
    EXPECT_FALSE(blocks[1].done);
    EXPECT_EQ(Render(feed, 3), Range(11, 14));
}

TEST_F(FeedTest, InputFillsBlocksAndSaysWhereItLostSound) {
    InputFeed feed(kMono8, *channel);
    for (std::size_t i = 0; i < 3; ++i) ASSERT_TRUE(feed.Push(blocks[i]));
    feed.Capture(Range(50, 57));
    feed.Capture(Range(57, 62));
    EXPECT_TRUE(blocks[0].done);
    EXPECT_EQ(blocks[0].data, Range(50, 60));
    EXPECT_FALSE(blocks[1].done);
    feed.NoteGap();
    EXPECT_TRUE(blocks[1].done);
    EXPECT_EQ(blocks[1].recordedBytes, 2u);
    // One byte finds no block any more.
    feed.Capture(Range(0, 11));
    EXPECT_TRUE(blocks[2].done);
    EXPECT_FALSE(blocks[0].afterGap);
    EXPECT_FALSE(blocks[1].afterGap);
    EXPECT_TRUE(blocks[2].afterGap);
    for (const std::size_t i : {3u, 2u}) ASSERT_TRUE(feed.Push(blocks[i]));
    EXPECT_FALSE(blocks[2].afterGap);
    feed.Capture(Range(20, 35));
    EXPECT_TRUE(blocks[3].afterGap);
    EXPECT_EQ(blocks[3].data, Range(20, 30));
    feed.ReturnAll();
    EXPECT_TRUE(blocks[2].done);
    EXPECT_FALSE(blocks[2].afterGap) << "one gap is told once";
    EXPECT_EQ(blocks[2].recordedBytes, 5u);
}

TEST_F(FeedTest, AClosedGateWaitsForTheCallbackAndKeepsTheNextOut) {
    CallbackGate gate;
    EXPECT_FALSE(CallbackGate::Visit(gate)) << "closed at first";
    gate.Open();
    std::atomic<int> inside{0};
    std::atomic<int> visits{0};
    std::atomic<bool> ended{false};
    std::thread callbacks([&] {
        while (!ended) {
            std::this_thread::sleep_for(std::chrono::microseconds(20));
            const CallbackGate::Visit visit(gate);
            if (!visit) continue;
            ++inside;
            ++visits;
            std::this_thread::yield();
            --inside;
        }
    });
    while (visits < 200) {
        gate.Open();
        std::this_thread::sleep_for(std::chrono::microseconds(50));
        gate.Close();
        ASSERT_EQ(inside, 0);
    }
    ended = true;
    callbacks.join();
}

TEST(BlockNotifierTest, SignalsArriveOnTheLoopMergedAndNeverAfterTheClose) {
    TestLoop loop;
    BlockNotifier notifier([&](std::function<void()> task) { loop.Post(std::move(task)); });
    int first = 0;
    int second = 0;
    const auto one = notifier.OpenChannel([&] { ++first; });
    const auto two = notifier.OpenChannel([&] { ++second; });
    for (int i = 0; i < 100; ++i) one->Signal();
    ASSERT_TRUE(loop.RunOne());
    EXPECT_GE(first, 1);
    EXPECT_LE(first, 100);
    EXPECT_EQ(second, 0);
    two->Signal();
    two->Close();
    one->Signal();
    const int before = first;
    while (first == before) ASSERT_TRUE(loop.RunOne());
    EXPECT_EQ(second, 0);
}

TEST(BlockNotifierTest, ADeliveryMayOutliveItsNotifier) {
    TestLoop loop;
    int calls = 0;
    {
        BlockNotifier notifier([&](std::function<void()> task) { loop.Post(std::move(task)); });
        const auto channel = notifier.OpenChannel([&] { ++calls; });
        channel->Signal();
        // The delivery is waiting in the loop now, or the notifier has ended before it was posted.
    }
    loop.Post([] {});
    ASSERT_TRUE(loop.RunOne());
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace sonavel
