#include <cmath>
#include <limits>

#include "sound/dither.h"
#include "sound/format_refusal.h"
#include "sound/sample_io.h"
#include "sound/sample_texts.h"
#include "sound/sample_types.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

class FloatSoundTest : public WaveTest {
  protected:
    void FillFloats(unsigned channels, std::span<const float> samples) {
        ASSERT_TRUE(wave.Create(channels, 32, 44100, 0));
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(samples.data());
        ASSERT_TRUE(wave.InsertFrames(0, {bytes, samples.size_bytes()}));
    }
    std::vector<float> Floats() const {
        const auto samples = SamplesOf<FloatSample>(wave.Bytes());
        return {samples.begin(), samples.end()};
    }
};

TEST_F(FloatSoundTest, EachTypeHasItsFormatItsSharesAndItsTexts) {
    const struct {
        unsigned bits;
        std::int32_t set, got;
        double share;
        const char* text;
    } cases[] = {
        {8, 32, 32, 0.25, "32"},
        {8, -127, -127, -127.0 / 128, "-127"},
        {16, -32768, -32768, -1, "-32768"},
        {16, 70000, 4464, 4464.0 / 32768, "4464"},
        {32, 16384, 16384, 0.5, "0.5000000"},
        {32, -98304, -98304, -3, "-3.0000000"},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(wave.Create(2, c.bits, 8000, 3));
        FillWithSilence(wave.MutableBytes(), c.bits);
        wave.SetSample(1, 1, c.set);
        EXPECT_EQ(wave.GetSample(1, 1), c.got) << c.bits;
        EXPECT_EQ(wave.GetShare(1, 1), c.share) << c.bits;
        EXPECT_EQ(SampleText(wave, 1, 1, 7), c.text);
        EXPECT_EQ(wave.GetShare(0, 1), 0) << c.bits;
        EXPECT_EQ(wave.GetSample(0, 2), 0) << c.bits;
        EXPECT_EQ(wave.GetShare(1, 3), 0) << "beyond the end";
        EXPECT_EQ(wave.GetDuration(), 3.0 / 8000);
        EXPECT_TRUE(IsEditable(wave.GetFormat()));
        EXPECT_EQ(wave.GetBlockAlign(), 2 * c.bits / 8);
    }
}

TEST_F(FloatSoundTest, WholeNumbersOf32BitsAreNoFloats) {
    EXPECT_FALSE(IsEditable(MakePcmFormat(1, 32, 44100)));
    PcmFormat words = MakePcmFormat(1, 16, 44100);
    words.formatTag = kFloatFormatTag;
    EXPECT_FALSE(IsEditable(words));
}

TEST_F(FloatSoundTest, EveryWholeNumberComesBackFromFloats) {
    for (const unsigned bits : {8u, 16u}) {
        const auto limits = LimitsOfSamples(bits);
        const auto frames = static_cast<std::uint32_t>(limits.greatest - limits.least + 1);
        ASSERT_TRUE(wave.Create(1, bits, 8000, frames));
        for (std::uint32_t i = 0; i < frames; ++i)
            wave.SetSample(0, i, limits.least + static_cast<std::int32_t>(i));
        const FileBytes before = SoundBytes(wave);
        ASSERT_TRUE(wave.ConvertBits(32));
        EXPECT_EQ(wave.GetFormat(), MakeSoundFormat(1, 32, 8000));
        EXPECT_EQ(wave.GetShare(0, 0) * FullScaleOf(bits) / 2, limits.least);
        EXPECT_EQ(wave.GetShare(0, frames - 1) * FullScaleOf(bits) / 2, limits.greatest);
        ASSERT_TRUE(wave.ConvertBits(bits));
        EXPECT_EQ(SoundBytes(wave), before) << bits;
    }
}

TEST_F(FloatSoundTest, WhatDoesNotFitIsDitheredAroundItsValueAndHeld) {
    std::vector<float> samples(60000, 0.3f / 32768);
    samples[0] = 1.5f;
    samples[1] = -7;
    for (const unsigned bits : {8u, 16u}) {
        FillFloats(1, samples);
        ASSERT_TRUE(wave.ConvertBits(bits));
        const auto limits = LimitsOfSamples(bits);
        EXPECT_EQ(wave.GetSample(0, 0), limits.greatest);
        EXPECT_EQ(wave.GetSample(0, 1), limits.least);
        double sum = 0;
        for (std::uint32_t i = 2; i < samples.size(); ++i) {
            ASSERT_LE(std::abs(wave.GetSample(0, i)), 1);
            sum += wave.GetSample(0, i);
        }
        // Rounding alone would leave silence.
        const double units = bits == 16 ? 0.3 : 0.3 / 256;
        EXPECT_NEAR(sum / static_cast<double>(samples.size()), units, 0.01) << bits;
        EXPECT_NE(sum, 0);
    }
}

TEST_F(FloatSoundTest, SamplesAreReadInUnitsOf16BitsAndWrittenWithoutLoss) {
    const float samples[] = {0.123456789f, -1e-7f, 3.5f, -2, 1e-30f, 0};
    FillFloats(2, samples);
    std::vector<float> values(6), left(3);
    ReadInterleaved(wave, 0, values);
    ReadChannel(wave, 0, 0, left, EightBitReading::kSignedByte);
    EXPECT_EQ(values[2], 3.5f * 32768);
    EXPECT_EQ(left, (std::vector{values[0], values[2], values[4]}));
    ASSERT_TRUE(wave.Create(2, 32, 44100, 3));
    WriteInterleaved(wave, 0, values);
    EXPECT_EQ(Floats(), std::vector(std::begin(samples), std::end(samples)));
    values = {kInfinity, NAN, -kInfinity, 5, 1e30f, -1};
    WriteInterleaved(wave, 0, values);
    EXPECT_EQ(Floats(),
              (std::vector{0.0f, 0.0f, 0.0f, 5 / 32768.0f, 1e30f / 32768, -1 / 32768.0f}));
}

TEST_F(FloatSoundTest, ChannelsAreMixedAndSpreadWithoutRounding) {
    FillFloats(2, std::vector{0.5f, 0.25f, 3.0f, -1.0f});
    ASSERT_TRUE(wave.ConvertChannels(1, ChannelChoice::kBothOrMix));
    EXPECT_EQ(Floats(), (std::vector{0.375f, 1.0f}));
    ASSERT_TRUE(wave.ConvertChannels(2, ChannelChoice::kLeft));
    EXPECT_EQ(Floats(), (std::vector{0.375f, 0.0f, 1.0f, 0.0f}));
    ASSERT_TRUE(wave.GrowWithSilence(3));
    EXPECT_EQ(wave.GetShare(0, 2), 0);
}

TEST(SampleLevels, CountInStepsOfEachTypeAndStayWithin32Bits) {
    EXPECT_EQ(FullScaleOf(8), 256);
    EXPECT_EQ(FullScaleOf(16), 65536);
    EXPECT_EQ(FloatSample::LevelOf(1), FullScaleOf(32) / 2);
    EXPECT_EQ(FloatSample::LevelOf(-0.5f), -FullScaleOf(32) / 4);
    EXPECT_GT(FloatSample::LevelOf(1e20f), 2000000000);
    EXPECT_LT(FloatSample::LevelOf(-1e20f), -2000000000);
}

TEST(SoundLimits, FloatsCountByFramesAndWholeNumbersByBytes) {
    EXPECT_EQ(MostSoundBytes(MakeSoundFormat(2, 8, 8000)), 0x7FFFFFFFu);
    EXPECT_EQ(MostSoundBytes(MakeSoundFormat(2, 16, 8000)), 0x7FFFFFFFu);
    EXPECT_EQ(MostSoundBytes(MakeSoundFormat(1, 32, 8000)), 4u * 0xFFFFFFFFull);
    EXPECT_EQ(MostSoundBytes(MakeSoundFormat(2, 32, 8000)), 8u * 0xFFFFFFFFull);
}

TEST_F(FloatSoundTest, SaveRefusesFloatsAndLeavesTheFileAlone) {
    FillFloats(1, std::vector{0.5f});
    for (const FileAction save : {SaveWav, SaveAu, SaveAiff}) {
        WriteFileBytes(folder / "kept", {1, 2, 3});
        EXPECT_FALSE(save(folder / "kept", wave));
        EXPECT_EQ(ReadFileBytes(folder / "kept"), (FileBytes{1, 2, 3}));
        EXPECT_NE(wave.LastError().find("32-bit float"), std::string::npos) << wave.LastError();
    }
}

}  // namespace
}  // namespace sonavel
