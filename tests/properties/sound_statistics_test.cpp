#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "properties/sound_statistics.h"
#include "support/fake_progress.h"

namespace sonavel {
namespace {

class SoundStatisticsTest : public ::testing::Test {
  protected:
    // The value of a channel at a frame.
    template <typename Value>
    void Fill(unsigned channels, unsigned bits, std::uint32_t frames, Value value) {
        ASSERT_TRUE(wave_.Create(channels, bits, 44100, frames));
        for (std::uint32_t frame = 0; frame < frames; ++frame)
            for (unsigned channel = 0; channel < channels; ++channel)
                wave_.SetSample(channel, frame, value(channel, frame));
    }
    SoundStatistics Measured() {
        const auto result = MeasureSound(wave_, progress_);
        EXPECT_TRUE(result);
        return result.value_or(SoundStatistics{});
    }

    FakeProgress progress_;
    Sound wave_;
};

TEST_F(SoundStatisticsTest, ASineLeftAndAShiftedSquareRight) {
    // 441 whole periods of 100 frames, behind them the frames that no run of values fills.
    Fill(2, 16, 44100, [](unsigned channel, std::uint32_t frame) {
        if (channel == 1) return frame % 2 == 0 ? 3100 : -2900;
        return static_cast<int>(std::lround(20000 * std::sin(2 * std::numbers::pi * frame / 100)));
    });
    const SoundStatistics found = Measured();
    EXPECT_EQ(found.frames, 44100);
    EXPECT_EQ(found.channels, 2u);
    EXPECT_EQ(found.reference, 32768);
    EXPECT_EQ(found.channel[0].peak, 20000);
    EXPECT_EQ(found.channel[0].peakFrame, 25);
    EXPECT_NEAR(found.channel[0].rms, 20000 / std::sqrt(2.0), 0.5);
    EXPECT_NEAR(found.channel[0].offset, 0, 1e-9);
    EXPECT_EQ(found.channel[1].peak, 3100);
    EXPECT_EQ(found.channel[1].peakFrame, 0);
    EXPECT_NEAR(found.channel[1].rms, std::sqrt((3100.0 * 3100 + 2900.0 * 2900) / 2), 1e-6);
    EXPECT_NEAR(found.channel[1].offset, 100, 1e-9);
    EXPECT_EQ(found.channel[0].clippedSamples + found.channel[1].clippedSamples, 0);
}

TEST_F(SoundStatisticsTest, PeaksAndClippedSamplesAnywhere) {
    const struct {
        unsigned channels, bits;
        std::uint32_t frame;  // of the one loud sample, on the last channel
        int sample;
        int clipped;
    } cases[] = {
        {1, 16, 0, -32768, 1},  {1, 16, 8191, 32767, 1},  {1, 16, 8192, -32767, 0},
        {2, 16, 20002, 500, 0}, {2, 16, 4096, -32768, 1}, {1, 8, 20002, -127, 1},
        {1, 8, 77, 128, 1},     {2, 8, 4095, 127, 0},
    };
    for (const auto& c : cases) {
        Fill(c.channels, c.bits, 20003, [&](unsigned channel, std::uint32_t frame) {
            return channel + 1 == c.channels && frame == c.frame ? c.sample : -1;
        });
        const SoundStatistics found = Measured();
        const ChannelStatistics& last = found.channel[c.channels - 1];
        EXPECT_EQ(last.peak, c.sample) << c.frame;
        EXPECT_EQ(last.peakFrame, c.frame);
        EXPECT_EQ(last.clippedSamples, c.clipped) << c.frame;
        EXPECT_NEAR(last.offset, (c.sample - 20002.0) / 20003, 1e-9);
        if (c.channels == 2) {
            EXPECT_EQ(found.channel[0].peak, -1);
            EXPECT_EQ(found.channel[0].peakFrame, 0);
            EXPECT_EQ(found.channel[0].rms, 1);
        }
    }
}

TEST_F(SoundStatisticsTest, FullScaleThroughoutKeepsItsSums) {
    constexpr std::uint32_t kFrames = 300000;
    Fill(1, 16, kFrames, [](unsigned, std::uint32_t) { return -32768; });
    const SoundStatistics found = Measured();
    EXPECT_EQ(found.channel[0].rms, 32768);
    EXPECT_EQ(found.channel[0].offset, -32768);
    EXPECT_EQ(found.channel[0].clippedSamples, kFrames);
}

TEST_F(SoundStatisticsTest, FloatsAreMeasuredAgainstFullScale) {
    Fill(1, 32, 10000,
         [](unsigned, std::uint32_t frame) { return frame == 9000 ? -49152 : 16384; });
    const SoundStatistics found = Measured();
    EXPECT_EQ(found.channel[0].peak, -1.5 * found.reference);
    EXPECT_EQ(found.channel[0].peakFrame, 9000);
    EXPECT_EQ(found.channel[0].clippedSamples, 1);
    EXPECT_NEAR(found.channel[0].rms / found.reference, std::sqrt((9999 * 0.25 + 2.25) / 10000),
                1e-9);
    EXPECT_NEAR(found.channel[0].offset / found.reference, (9999 * 0.5 - 1.5) / 10000, 1e-9);
}

TEST_F(SoundStatisticsTest, AnEmptySoundAndNoSoundAtAll) {
    EXPECT_EQ(Measured().channels, 0u);
    ASSERT_TRUE(wave_.Create(2, 16, 44100, 0));
    const SoundStatistics found = Measured();
    EXPECT_EQ(found.frames, 0);
    EXPECT_EQ(found.channel[1].peak, 0);
    EXPECT_EQ(found.channel[1].rms, 0);
}

TEST_F(SoundStatisticsTest, ProgressGoesUpAndCancelling) {
    Fill(1, 8, 2000000, [](unsigned, std::uint32_t frame) { return static_cast<int>(frame % 50); });
    Measured();
    EXPECT_GE(progress_.positions.size(), 4u);
    EXPECT_TRUE(std::is_sorted(progress_.positions.begin(), progress_.positions.end()));
    EXPECT_LE(progress_.positions.back(), 100);
    EXPECT_EQ(progress_.titles, std::vector<std::string>{" Statistics"});
    progress_.cancelAtPoll = progress_.polls + 2;
    EXPECT_FALSE(MeasureSound(wave_, progress_));
    EXPECT_EQ(progress_.openWindows, 0);
}

}  // namespace
}  // namespace sonavel
