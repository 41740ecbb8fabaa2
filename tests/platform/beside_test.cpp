#include "platform/beside.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "platform/commit_beside.h"
#include "support/fake_progress.h"
#include "support/patience.h"
#include "support/test_files.h"

namespace sonavel {
namespace {

using namespace std::chrono_literals;

TEST(BesideTest, TheCallerPollsWhileTheWorkRunsElsewhere) {
    FakeProgress progress;
    const auto window = progress.CreateProgress("Slow");
    std::thread::id worker;
    const bool went = DoBeside(*window, [&](const std::atomic<bool>& cancelled) {
        worker = std::this_thread::get_id();
        std::this_thread::sleep_for(80ms);
        EXPECT_FALSE(cancelled);
    });
    EXPECT_TRUE(went);
    EXPECT_NE(worker, std::this_thread::get_id());
    EXPECT_GE(progress.polls, 3);
}

TEST(BesideTest, ACancelIsHeardByTheWorkAndToldBehindIt) {
    FakeProgress progress;
    progress.cancelAtPoll = 1;
    const auto window = progress.CreateProgress("Slow");
    bool ended = false;
    const bool went = DoBeside(*window, [&](const std::atomic<bool>& cancelled) {
        const auto limit = std::chrono::steady_clock::now() + kPatience;
        while (!cancelled && std::chrono::steady_clock::now() < limit)
            std::this_thread::sleep_for(1ms);
        ended = cancelled;
    });
    EXPECT_FALSE(went);
    EXPECT_TRUE(ended) << "nothing returns before the work has ended";
}

// Shows what it is told, and cancels when it shows 70.
class CancellingWindow : public ProgressWindow {
  public:
    void SetRange(int, int) override {}
    void SetPosition(int position) override { shown = position; }
    bool Poll() override { return shown >= 70; }

    std::atomic<int> shown = -1;
};

TEST(BesideTest, WatchedWorkIsShownWhileItGoesOnAndHearsOfACancel) {
    CancellingWindow window;
    const auto limit = std::chrono::steady_clock::now() + kPatience;
    bool wasShown = false, wasStopped = false;
    const bool went = DoWatchedBeside(window, [&](const PieceWatch& watch) {
        EXPECT_EQ(watch(0.375), Onward::kGoOn);
        while (window.shown != 37 && std::chrono::steady_clock::now() < limit)
            std::this_thread::sleep_for(1ms);
        wasShown = window.shown == 37;
        while (!wasStopped && std::chrono::steady_clock::now() < limit)
            wasStopped = watch(0.7) == Onward::kStop;
    });
    EXPECT_FALSE(went);
    EXPECT_TRUE(wasShown);
    EXPECT_TRUE(wasStopped);
    EXPECT_EQ(window.shown, 70);

    CancellingWindow silent;
    EXPECT_TRUE(DoWatchedBeside(silent, [](const PieceWatch&) {}));
    EXPECT_EQ(silent.shown, -1) << "work that says nothing leaves the window as it was";
}

// The second poll and later ones come when the file is about to take its place.
TEST(CommitBesideTest, ACancelCountsUntilTheTargetIsReplaced) {
    const TemporaryFolder folder;
    const std::uint8_t bytes[] = {1, 2, 3};
    for (const int cancelledAt : {0, 1}) {
        SCOPED_TRACE(cancelledAt);
        const auto target = folder / std::to_string(cancelledAt);
        ReplacingFile file;
        ASSERT_TRUE(file.Open(target) && file.Write(bytes));
        // The flush of three bytes is over before it is polled again.
        int polls = 0;
        const Outcome ended = CommitBeside(
            file, [&] { return polls++ >= cancelledAt; }, "no disk");
        EXPECT_EQ(ended.IsCancelled(), !std::filesystem::exists(target));
        EXPECT_TRUE(cancelledAt > 0 || ended.IsCancelled());
    }
}

}  // namespace
}  // namespace sonavel
