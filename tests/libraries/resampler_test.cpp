// Resampling keeps a sound's pitch, level and place, whatever the pieces that it comes in.
#include "libraries/resampler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace sonavel::testing {
namespace {

constexpr double kTone = 1000.0;  // Hz

float ToneAt(double seconds) {
    return static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * kTone * seconds));
}

// A tone on the left channel, its negative half on the right.
std::vector<float> Tone(std::size_t frames, double rate) {
    std::vector<float> tone;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const float value = ToneAt(static_cast<double>(frame) / rate);
        tone.push_back(value);
        tone.push_back(-value / 2);
    }
    return tone;
}

std::vector<float> Resampled(const std::vector<float>& frames, double from, double to,
                             std::size_t piece) {
    Resampler resampler(2, from, to);
    std::vector<float> out;
    for (std::size_t at = 0; at < frames.size(); at += piece * 2) {
        const std::size_t count = std::min(piece * 2, frames.size() - at);
        EXPECT_TRUE(resampler.Add(std::span(frames).subspan(at, count), out));
    }
    EXPECT_TRUE(resampler.Finish(out));
    return out;
}

TEST(ResamplerTest, ATonesWaveIsTheSameAtAnotherRate) {
    const struct {
        double from, to;
    } rates[] = {{44100, 48000}, {48000, 44100}, {96000, 8000}, {8000, 48000}, {44100, 44100}};
    for (const auto& [from, to] : rates) {
        const auto frames = static_cast<std::size_t>(from);
        const std::vector<float> out = Resampled(Tone(frames, from), from, to, 1000);
        ASSERT_EQ(out.size(), 2 * static_cast<std::size_t>(to)) << from << " to " << to;
        // The filter sees an edge at both ends.
        for (std::size_t frame = out.size() / 10; frame < out.size() / 2 - out.size() / 10;
             ++frame) {
            const float want = ToneAt(static_cast<double>(frame) / to);
            ASSERT_NEAR(out[2 * frame], want, 2e-5) << from << " to " << to << ", frame " << frame;
            ASSERT_NEAR(out[2 * frame + 1], -want / 2, 2e-5);
        }
    }
}

TEST(ResamplerTest, PiecesDoNotMatter) {
    const std::vector<float> tone = Tone(50000, 44100);
    const std::vector<float> whole = Resampled(tone, 44100, 48000, tone.size());
    EXPECT_EQ(whole, Resampled(tone, 44100, 48000, 1));
    EXPECT_EQ(whole, Resampled(tone, 44100, 48000, 4711));
}

}  // namespace
}  // namespace sonavel::testing
