// What is rendered of a range that is heard live.
#include <gtest/gtest.h>

#include <limits>

#include "live_fixture.h"

namespace sonavel::testing {
namespace {

constexpr std::uint32_t kPiece = 441;

std::vector<float> Render(LiveLoop& loop, int pieces) {
    std::vector<float> all;
    std::vector<float> piece(std::size_t{2} * loop.PieceFrames());
    for (; pieces > 0; --pieces) {
        loop.RenderPiece(piece);
        all.insert(all.end(), piece.begin(), piece.end());
    }
    return all;
}

LiveLoop LoopOf(std::uint32_t frames, const SineSetting& sine) {
    LiveLoop loop({frames, kRate}, Sine({}));
    loop.Change(Sine(sine));
    return loop;
}

TEST(LiveLoop, TheRangeIsHeardOverAndOverFromItsFirstFrameOn) {
    struct Case {
        std::uint32_t frames;
        const char* what;
    };
    for (const Case& range : {Case{kFrames, "many pieces"}, Case{1000, "some pieces and a part"},
                              Case{100, "less than a piece"}, Case{1, "a single frame"}}) {
        LiveLoop loop = LoopOf(range.frames, {});
        const std::vector<float> heard = Render(loop, 205);
        for (std::uint32_t i = 0; i < heard.size() / 2; ++i) {
            ASSERT_EQ(heard[2 * i], SineAt({}, i % range.frames)) << range.what << ", frame " << i;
            ASSERT_EQ(heard[2 * i + 1], heard[2 * i] / 2) << range.what << ", frame " << i;
        }
        EXPECT_EQ(loop.Position(), 205 * kPiece % range.frames) << range.what;
    }
}

// A sine that became another one at once would bend by as much as the two are apart.
TEST(LiveLoop, ChangesGlideWithinAPieceAndDoNotClick) {
    constexpr double kAngle = 2 * std::numbers::pi / 100;
    const SineSetting settings[] = {
        {0.9, 100, 0}, {0.1, 100, 0}, {0.9, 100, std::numbers::pi}, {0.9, 100, 1}, {0, 100, 0}};
    for (const SineSetting& from : settings)
        for (const SineSetting& to : settings) {
            LiveLoop loop = LoopOf(kFrames, from);
            std::vector<float> heard = Render(loop, 3);
            loop.Change(Sine(to));
            const std::vector<float> after = Render(loop, 3);
            heard.insert(heard.end(), after.begin(), after.end());
            // The sine's own bend, and what the glide adds: the rise bends by
            // (pi / piece)^2 / 2 at most, and is at its steepest while the sines are.
            const double apart = from.amplitude + to.amplitude;
            const double rise = std::numbers::pi / kPiece;
            const double bound = apart * (kAngle * kAngle + rise * kAngle + rise * rise / 2);
            EXPECT_LE(GreatestBend(heard), bound + 1e-6)
                << from.amplitude << " to " << to.amplitude << " at " << to.phase;
            for (std::uint32_t i = 4 * kPiece; i < 6 * kPiece; ++i)
                ASSERT_EQ(heard[2 * i], SineAt(to, i)) << "heard longer than a piece";
        }
}

// As a dragged slider changes it: in every piece.
TEST(LiveLoop, ADragOfManyChangesDoesNotClick) {
    LiveLoop loop = LoopOf(kFrames, {0.1, 100, 0});
    std::vector<float> heard = Render(loop, 1);
    for (int step = 1; step <= 80; ++step) {
        loop.Change(Sine({0.1 + 0.01 * step, 100, 0.02 * step}));
        const std::vector<float> piece = Render(loop, 1);
        heard.insert(heard.end(), piece.begin(), piece.end());
    }
    const double own = 0.9 * std::pow(2 * std::numbers::pi / 100, 2);
    EXPECT_LE(GreatestBend(heard), 1.1 * own);
}

TEST(LiveLoop, BypassHasTheLoudnessOfWhatIsCompared) {
    // Of the changed sound beside the untouched one, whose amplitude is 0.5.
    for (const double amplitude : {0.05, 0.25, 0.5, 0.9}) {
        LiveLoop loop = LoopOf(kFrames, {amplitude, 100, 1});
        const std::vector<float> changed = Render(loop, 100);
        loop.SetBypass(Bypass::kOn);
        std::vector<float> heard = Render(loop, 100);
        const std::span<const float> later = std::span(heard).subspan(2 * kPiece);
        EXPECT_NEAR(RootMeanSquare(later) / RootMeanSquare(changed), 1, 0.01) << amplitude;
        // It is the untouched sound that is heard, at another level.
        EXPECT_NEAR(later[50], SineAt({}, kPiece + 25) * amplitude / 0.5, 0.01) << amplitude;
        loop.SetBypass(Bypass::kOff);
        const std::vector<float> back = Render(loop, 2);
        heard.insert(heard.end(), back.begin(), back.end());
        EXPECT_EQ(back[2 * kPiece], SineAt({amplitude, 100, 1}, 201 * kPiece % kFrames));
        EXPECT_LE(GreatestBend(heard), 0.02) << "it clicks";
    }
}

TEST(LiveLoop, SilenceOnOneSideLeavesBypassAsItIs) {
    LiveLoop loop = LoopOf(kFrames, {0, 100, 0});
    loop.SetBypass(Bypass::kOn);
    EXPECT_EQ(Render(loop, 2)[2 * kPiece], SineAt({}, kPiece));
}

TEST(LiveLoop, WhatLiesBeyondFullScaleIsHeldAndNoNumberIsSilence) {
    struct Odd : LiveRenderer {
        void Render(std::uint32_t, std::span<float> pairs) override {
            std::ranges::fill(pairs, 0.0f);
            pairs[0] = 1.5f;
            pairs[1] = -7;
            pairs[2] = std::numeric_limits<float>::quiet_NaN();
            pairs[3] = std::numeric_limits<float>::infinity();
        }
    };
    LiveLoop loop({kFrames, kRate}, Sine({}));
    loop.Change(std::make_unique<Odd>());
    const std::vector<float> heard = Render(loop, 1);
    EXPECT_EQ(std::vector<float>(heard.begin(), heard.begin() + 4),
              (std::vector<float>{1, -1, 0, 1}));
}

// A piece and what bridges a busy machine: the rest up to 100 ms is the device's.
TEST(LiveLoop, PiecesLastTenMillisecondsAtAnyRate) {
    for (const std::uint32_t rate : {8000u, 22050u, 44100u, 48000u, 96000u, 384000u})
        EXPECT_NEAR(1000.0 * LiveLoop::PieceFramesAt(rate) / rate, 10, 0.1) << rate;
    EXPECT_GE(LiveLoop::PieceFramesAt(1), 1u);
    EXPECT_LE(LiveLoop::PieceFramesAt(4000000000u), 4096u);
}

}  // namespace
}  // namespace sonavel::testing
