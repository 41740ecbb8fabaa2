// What all effects have in common when they run on a document: what they leave behind, what they
// show while they run, and what they cost.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <set>
#include <thread>

#include "effect_fixture.h"
#include "support/thread_count.h"

namespace sonavel::testing {
namespace {

constexpr std::uint32_t kRunFrames = 5 * kPieceFrames;

struct EffectCase {
    const char* name;
    std::vector<double> values;
};

// Those that work in place and cannot be cancelled.
const EffectCase kDirectRuns[] = {{"volume", {50, 0}},
                                  {"panpot", {0, -300, 0, 0, 0}},
                                  {"panpot", {1, 0, -900, 700, 0}},
                                  {"modulator", {500, 20, 80, 0, 0, 0}},
                                  {"dynamics", {50, 2, 4, 25, 0.5, 1}}};

class EffectRunsTest : public EffectTest {
  protected:
    static Outcome Makes(const Effect& effect, const EffectTarget& target) {
        const std::vector<double> values = StartValuesOf(effect);
        return effect.HasPreview() ? Preview(effect.name, target, values)
                                   : Apply(effect.name, target, values);
    }
    // What the windows of one run showed, from the start of each channel.
    std::vector<std::vector<int>> ShownPositions() const {
        std::vector<std::vector<int>> rises;
        for (const int position : progress_.positions) {
            if (rises.empty() || position < rises.back().back()) rises.emplace_back();
            rises.back().push_back(position);
        }
        return rises;
    }
};

TEST_F(EffectRunsTest, AnEmptySoundIsRefusedByEveryEffect) {
    const auto document = MakeNoise({1, 16}, 0);
    for (const Effect& effect : Effects())
        EXPECT_FALSE(Makes(effect, Target(*document))) << effect.name;
}

TEST_F(EffectRunsTest, AnAppliedEffectIsOneStepAndLeavesNoStalePreview) {
    for (const Format& format : {Format{2, 16}, Format{1, 8}}) {
        for (const Effect& effect : Effects()) {
            if (effect.range.compute) continue;
            SCOPED_TRACE(std::string(effect.name) + ", " + NameOf(format));
            const bool changes = std::string_view(effect.name) != "equalizer";
            if (effect.commandId == effect_command::kPanpot && format.channels == 1) continue;
            const auto document = MakeNoise(format, 500);
            const Bytes before = BytesOf(document->Sound());
            ASSERT_TRUE(Preview("volume", Target(*document), {100, 0}));
            ASSERT_TRUE(document->Preview().HasData());
            NotingObserver observer;
            document->AddObserver(&observer);
            ASSERT_TRUE(Apply(effect.name, Target(*document, 100, 400), StartValuesOf(effect)));
            EXPECT_EQ(document->GetModified(), changes);
            EXPECT_EQ(observer.changes,
                      changes ? std::vector<std::uint32_t>{100} : std::vector<std::uint32_t>{});
            EXPECT_EQ(document->Preview().HasData(), !changes);
            document->RemoveObserver(&observer);
            const Bytes after = BytesOf(document->Sound());
            EXPECT_EQ(document->History().MemoryBytes(), changes ? before.size() * 3 / 5 : 0);
            EXPECT_EQ(document->Undo().IsDone(), changes);
            EXPECT_EQ(BytesOf(document->Sound()), before);
            EXPECT_FALSE(document->CanUndo());
            EXPECT_EQ(document->Redo().IsDone(), changes);
            EXPECT_EQ(BytesOf(document->Sound()), after);
        }
    }
}

// The windows of the others close at the start of their last piece.
const std::set<std::string_view> kShowTheirEnd = {"reverb", "flanger", "dynamics", "equalizer"};

TEST_F(EffectRunsTest, EveryEffectShowsHowFarItIs) {
    for (const Effect& effect : Effects()) {
        if (effect.range.compute) continue;
        SCOPED_TRACE(effect.name);
        const auto document = MakeNoise({2, 16}, kRunFrames);
        progress_.polls = 0;
        progress_.positions.clear();
        ASSERT_TRUE(Makes(effect, Target(*document)));
        // The reverberation shows larger blocks.
        const bool inBlocks = effect.commandId == effect_command::kReverb;
        EXPECT_GE(progress_.polls, 5);
        const bool twice = effect.commandId == effect_command::kVolume ||
                           effect.commandId == effect_command::kEqualizer;
        const bool toTheEnd = kShowTheirEnd.contains(effect.name);
        const auto rises = ShownPositions();
        EXPECT_EQ(rises.size(), twice ? 2u : 1u);
        for (const std::vector<int>& rise : rises) {
            EXPECT_EQ(rise.back(), toTheEnd && &rise == &rises.back() ? 100 : 80);
        }
        if (inBlocks) continue;
        EXPECT_EQ(std::vector<int>(rises[0].begin(), rises[0].begin() + 5),
                  (std::vector<int>{0, 20, 40, 60, 80}));
    }
}

TEST_F(EffectRunsTest, DirectEffectsKeepTheirWindowAliveAndCannotBeCancelled) {
    for (const EffectCase& run : kDirectRuns) {
        SCOPED_TRACE(run.name);
        const auto document = MakeNoise({2, 16}, kRunFrames);
        const auto cancelled = MakeNoise({2, 16}, kRunFrames);
        progress_.cancelAtPoll.reset();
        progress_.polls = 0;
        ASSERT_TRUE(Apply(run.name, Target(*document), run.values));
        EXPECT_GE(progress_.polls, 5);
        progress_.cancelAtPoll = 0;
        ASSERT_TRUE(Apply(run.name, Target(*cancelled), run.values));
        EXPECT_EQ(BytesOf(cancelled->Sound()), BytesOf(document->Sound()));
    }
}

// What a run leaves in the sound and in its preview, and what its windows showed.
struct Left {
    Bytes sound;
    Bytes preview;
    std::vector<int> positions;

    bool operator==(const Left&) const = default;
};

class ThreadedEffectsTest : public EffectRunsTest {
  protected:
    Left LeftBy(const EffectCase& run, const Format& format, unsigned threads) {
        const ThreadCount count(threads);
        const auto document = MakeNoise(format, 3 * format.rate + 77, 9000);
        state_ = {};
        progress_.polls = 0;
        progress_.positions.clear();
        if (FindEffect(run.name)->HasPreview())
            static_cast<void>(Preview(run.name, Target(*document), run.values));
        const Bytes preview = BytesOf(document->Preview());
        static_cast<void>(Apply(run.name, Target(*document, 1000, 3 * format.rate), run.values));
        return {BytesOf(document->Sound()), preview, progress_.positions};
    }
};

const EffectCase kLongRuns[] = {{"volume", {130, 0}},
                                {"panpot", {0, -300, 0, 0, 0}},
                                {"panpot", {1, 0, -900, 700, 0}},
                                {"panpot", {1, 0, 900, -1000, 1}},
                                {"modulator", {500, 20, 80, 1777, 700, 30}},
                                {"dynamics", {5, 2, 4, 2.5, 0.5, 1}},
                                {"flanger", {7, 9.1}},
                                {"reverb", {120, 2500, 4, 50, 50}},
                                {"equalizer", {6, -10, 0, 3, -4, 12, -2}}};

TEST_F(ThreadedEffectsTest, ResultsDoNotDependOnTheNumberOfThreads) {
    for (const Format& format : {Format{2, 16, 22050}, Format{1, 8, 8000}})
        for (const EffectCase& run : kLongRuns) {
            SCOPED_TRACE(std::string(run.name) + ", " + NameOf(format));
            const Left alone = LeftBy(run, format, 1);
            for (const unsigned threads : {2u, 5u})
                EXPECT_TRUE(LeftBy(run, format, threads) == alone) << threads;
        }
}

// Looks at a sound twice while its window is polled, as a view would that paints it.
class WatchingProgress : public FakeProgress {
  public:
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) override {
        return std::make_unique<Window>(FakeProgress::CreateProgress(title), *this);
    }
    const CWave* watched = nullptr;
    int changes = 0;

  private:
    class Window : public ProgressWindow {
      public:
        Window(std::unique_ptr<ProgressWindow> window, WatchingProgress& owner)
            : window_(std::move(window)), owner_(owner) {}
        void SetRange(int from, int to) override { window_->SetRange(from, to); }
        void SetPosition(int position) override { window_->SetPosition(position); }
        bool Poll() override {
            const Bytes before = BytesOf(*owner_.watched);
            std::this_thread::sleep_for(std::chrono::microseconds(200));
            if (BytesOf(*owner_.watched) != before) ++owner_.changes;
            return window_->Poll();
        }

      private:
        std::unique_ptr<ProgressWindow> window_;
        WatchingProgress& owner_;
    };
};

TEST_F(ThreadedEffectsTest, TheSoundStaysStillWhileTheWindowIsPolled) {
    const ThreadCount count(3);
    for (const EffectCase& run : kDirectRuns) {
        WatchingProgress progress;
        HostServices services{prompts_, progress, clipboard_, devices_, programFolder_};
        CSoundDoc document(services);
        document.Sound().Adopt(MakeSound({2, 16, 8000}, PatternBytes(400000 * 4, 1)));
        progress.watched = &document.Sound();
        ASSERT_TRUE(Apply(run.name, Target(document), run.values));
        EXPECT_EQ(progress.polls, 98) << run.name;
        EXPECT_EQ(progress.changes, 0) << run.name;
    }
}

TEST_F(ThreadedEffectsTest, WhatACancelLeavesDoesNotDependOnThreads) {
    for (const char* name : {"flanger", "reverb", "equalizer"}) {
        const EffectCase run{name, StartValuesOf(*FindEffect(name))};
        progress_.cancelAtPoll = 3;
        const Left alone = LeftBy(run, {2, 16, 44100}, 1);
        EXPECT_EQ(alone.preview.empty(), std::string_view(name) != "equalizer");
        EXPECT_TRUE(LeftBy(run, {2, 16, 44100}, 4) == alone) << name;
    }
}

// Has no memory for what lies behind its third piece.
class ForgetfulProcessor : public EffectProcessor {
  public:
    void Process(const EffectPiece& piece) override {
        if (piece.first >= 3 * kPieceFrames) throw std::bad_alloc();
    }
};

TEST_F(ThreadedEffectsTest, MemoryThatRunsOutOnAnyThreadLeavesTheSoundAsItWas) {
    for (const char* name : {"flanger", "reverb", "equalizer"}) {
        Effect effect = *FindEffect(name);
        effect.make = [](std::span<const double>,
                         const EffectRun&) -> std::unique_ptr<EffectProcessor> {
            return std::make_unique<ForgetfulProcessor>();
        };
        for (const unsigned threads : {1u, 2u, 5u}) {
            SCOPED_TRACE(std::string(name) + ", " + std::to_string(threads));
            const ThreadCount count(threads);
            const auto document = MakeNoise({2, 16, 8000}, 8 * kPieceFrames);
            const Bytes before = BytesOf(document->Sound());
            EXPECT_EQ(PreviewEffect(effect, Target(*document), {}, PreviewPlay::kNo),
                      Failed(failure::kMemory));
            EXPECT_FALSE(document->Preview().HasData());
            EXPECT_EQ(
                ApplyEffect(effect, Target(*document), {}),
                effect.traits.storing == Storing::kNothing ? Done() : Failed(failure::kMemory));
            EXPECT_EQ(BytesOf(document->Sound()), before);
            EXPECT_FALSE(document->CanUndo() || document->GetModified());
            EXPECT_EQ(progress_.openWindows, 0);
        }
    }
}

std::size_t VirtualBytes() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// Notes at every poll how much memory the program takes.
class MemoryProgress : public FakeProgress {
  public:
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) override {
        return std::make_unique<Window>(FakeProgress::CreateProgress(title), most_);
    }
    std::size_t Most() const { return most_; }

  private:
    class Window : public ProgressWindow {
      public:
        Window(std::unique_ptr<ProgressWindow> window, std::size_t& most)
            : window_(std::move(window)), most_(most) {}
        void SetRange(int from, int to) override { window_->SetRange(from, to); }
        void SetPosition(int position) override { window_->SetPosition(position); }
        bool Poll() override {
            most_ = std::max(most_, VirtualBytes());
            return window_->Poll();
        }

      private:
        std::unique_ptr<ProgressWindow> window_;
        std::size_t& most_;
    };
    std::size_t most_ = 0;
};

// Delays of seconds at this rate are hundreds of megabytes; a sound of 300 frames hears none.
TEST_F(EffectRunsTest, DelaysTakeNoMemoryForTheRateThatAFileClaims) {
    const EffectCase runs[] = {{"reverb", {200, 6000, 6, 100, 30}}, {"flanger", {15, 10}}};
    for (const EffectCase& run : runs) {
        MemoryProgress progress;
        HostServices services{prompts_, progress, clipboard_, devices_, programFolder_};
        CSoundDoc document(services);
        document.Sound().Adopt(MakeSound({2, 16, 100'000'000}, PatternBytes(1200, 1)));
        const std::size_t least = VirtualBytes();
        ASSERT_TRUE(Apply(run.name, Target(document), run.values)) << run.name;
        ASSERT_GE(progress.Most(), least) << run.name;
        EXPECT_LT(progress.Most() - least, std::size_t{8} << 20) << run.name;
    }
}

}  // namespace
}  // namespace sonavel::testing
