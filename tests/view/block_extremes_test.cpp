#include "view/draw/block_extremes.h"

#include <gtest/gtest.h>

#include "view/random_sound.h"

namespace sonavel {
namespace {

SampleExtremes BlockByAccessor(const CWave& wave, unsigned channel, std::uint32_t block) {
    SampleExtremes extremes{-999999, 999999};
    const std::uint32_t end = std::min(wave.GetFrameCount(), (block + 1) * 256);
    for (std::uint32_t frame = block * 256; frame < end; ++frame) {
        extremes.maximum = std::max(extremes.maximum, wave.GetSample(channel, frame));
        extremes.minimum = std::min(extremes.minimum, wave.GetSample(channel, frame));
    }
    return extremes;
}

void ExpectExtremesOf(const CWave& wave, const BlockExtremes& extremes) {
    ASSERT_EQ(extremes.BlockCount(), (wave.GetFrameCount() + 255) / 256);
    for (unsigned channel = 0; channel < wave.GetChannels(); ++channel) {
        for (std::uint32_t block = 0; block < extremes.BlockCount(); ++block) {
            const SampleExtremes found{extremes.Maxima(channel)[block],
                                       extremes.Minima(channel)[block]};
            ASSERT_EQ(found, BlockByAccessor(wave, channel, block))
                << "channel " << channel << " block " << block;
        }
    }
}

// Rebuilds the extremes from a frame on and compares all of them.
void ExpectRebuilt(const CWave& wave, BlockExtremes& extremes, std::uint32_t firstChanged) {
    extremes.Rebuild(wave, firstChanged);
    ExpectExtremesOf(wave, extremes);
}

TEST(BlockExtremes, RebuildReadsFromTheChangedFrameOn) {
    RandomSound sound(2, 16, 3000);
    BlockExtremes extremes;
    ExpectRebuilt(sound.wave, extremes, 0);
    sound.Scramble(1000, 3000, 9);
    ExpectRebuilt(sound.wave, extremes, 1000);
    ASSERT_TRUE(sound.wave.GrowWithSilence(4000));
    ExpectRebuilt(sound.wave, extremes, 3000);
    ASSERT_TRUE(sound.wave.RemoveFrames(1500, 4000));
    ExpectRebuilt(sound.wave, extremes, 1500);
}

TEST(BlockExtremes, SeveralChangesAreReadOnceFromTheFirstOfThemOn) {
    RandomSound sound(2, 16, 6000);
    BlockExtremes extremes;
    ExpectRebuilt(sound.wave, extremes, 0);
    const std::uint64_t revision = extremes.Revision();
    ASSERT_TRUE(sound.wave.RemoveFrames(5000, 6000));
    extremes.NoteChange(5000);
    sound.Scramble(1000, 1200, 9);
    extremes.NoteChange(1000);
    ASSERT_TRUE(sound.wave.GrowWithSilence(7000));
    extremes.NoteChange(5000);
    extremes.Refresh(sound.wave);
    ExpectExtremesOf(sound.wave, extremes);
    extremes.Refresh(sound.wave);
    EXPECT_EQ(extremes.Revision(), revision + 1);
}

TEST(BlockExtremes, FloatsCountInTheirOwnSteps) {
    RandomSound sound(2, 16, 3000);
    BlockExtremes words, floats;
    words.Rebuild(sound.wave, 0);
    ASSERT_TRUE(sound.wave.ConvertBits(32));
    sound.wave.SetSample(1, 2999, 1 << 20);  // beyond full scale
    floats.Rebuild(sound.wave, 0);
    const auto steps = static_cast<std::int32_t>(FullScaleOf(32) / FullScaleOf(16));
    for (unsigned channel = 0; channel < 2; ++channel)
        for (std::size_t block = 0; block + 1 < words.BlockCount(); ++block) {
            EXPECT_EQ(floats.Maxima(channel)[block], words.Maxima(channel)[block] * steps);
            EXPECT_EQ(floats.Minima(channel)[block], words.Minima(channel)[block] * steps);
        }
    EXPECT_EQ(floats.Maxima(1).back(), steps << 20);
}

TEST(BlockExtremes, AnotherFormatIsReadFromTheStart) {
    RandomSound sound(2, 16, 3000);
    BlockExtremes extremes;
    extremes.Rebuild(sound.wave, 0);
    ASSERT_TRUE(sound.wave.ConvertChannels(1, ChannelChoice::kLeft));
    ExpectRebuilt(sound.wave, extremes, 2999);
    EXPECT_TRUE(extremes.Maxima(1).empty());
    ASSERT_TRUE(sound.wave.ConvertBits(8));
    ExpectRebuilt(sound.wave, extremes, 2999);
}

TEST(BlockExtremes, ARunVisitsTheBlocksOfEvery256thFrame) {
    RandomSound sound(1, 16, 2000);
    for (std::uint32_t frame = 0; frame < 2000; ++frame)
        sound.wave.SetSample(0, frame, static_cast<std::int32_t>(frame / 256 * 10 + 5));
    BlockExtremes extremes;
    extremes.Rebuild(sound.wave, 0);
    const struct {
        std::int64_t start, end;
        SampleExtremes expected;
    } cases[] = {
        {0, 256, {5, 5}},        // block 0 alone
        {200, 456, {5, 5}},      // ends in block 1 without a visit there
        {200, 457, {15, 5}},     // frame 456 lies in block 1
        {1792, 2048, {75, 75}},  // the partial last block
        {1536, 2049, {75, 65}},  // behind it the values read last count again
        {2048, 4000, {75, 75}}, {90000, 90256, {75, 75}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(extremes.Over(0, c.start, c.end), c.expected) << c.start << ".." << c.end;
    EXPECT_EQ(BlockExtremes().Over(0, 0, 4000), SampleExtremes{});
}

}  // namespace
}  // namespace sonavel
