// Effects on sounds of floats: the formulas of 16-bit sounds, without their rounding.
#include <algorithm>
#include <cmath>
#include <limits>

#include "effect_fixture.h"
#include "sound/sample_types.h"

namespace sonavel::testing {
namespace {

class FloatEffectsTest : public EffectTest {
  protected:
    // Two documents of the same noise, of which the other holds floats.
    struct Pair {
        std::unique_ptr<CSoundDoc> words, floats;
    };
    Pair MakePair(unsigned channels, std::uint32_t frames, int greatest) {
        Pair pair{MakeNoise({channels, 16, 44100}, frames, greatest),
                  MakeNoise({channels, 16, 44100}, frames, greatest)};
        EXPECT_TRUE(pair.floats->Sound().ConvertBits(32));
        return pair;
    }
    // What a 16-bit sound keeps of a result in its units.
    static int StoredAs16Bits(const Effect& effect, double value) {
        if (effect.range.compute)
            return static_cast<int>(std::clamp(std::lrint(value), -32768L, 32767L));
        const Storing storing = effect.traits.storing;
        return Stored(storing == Storing::kQuantized ? QuantizedLiterally(value) : value, 16);
    }
};

TEST_F(FloatEffectsTest, EveryEffectLeavesWhatA16BitSoundWouldRound) {
    for (const unsigned channels : {1u, 2u}) {
        for (const Effect& effect : Effects()) {
            SCOPED_TRACE(std::string(effect.name) + ", channels: " + std::to_string(channels));
            const Pair pair = MakePair(channels, 9000, 6000);
            const Bytes before = BytesOf(pair.floats->Sound());
            const auto values = StartValuesOf(effect);
            const Outcome applied = Apply(effect.name, Target(*pair.floats, 500, 8500), values);
            ASSERT_EQ(Apply(effect.name, Target(*pair.words, 500, 8500), values).IsDone(),
                      applied.IsDone());
            const CWave& words = pair.words->Sound();
            const CWave& floats = pair.floats->Sound();
            EXPECT_EQ(floats.GetFormat(), MakeSoundFormat(channels, 32, 44100));
            for (std::uint32_t frame = 0; frame < 9000; ++frame)
                for (unsigned channel = 0; channel < channels; ++channel) {
                    const double value = floats.GetShare(channel, frame) * 32768;
                    const bool outside = frame < 500 || frame >= 8500;
                    ASSERT_EQ(words.GetSample(channel, frame),
                              outside ? static_cast<int>(value) : StoredAs16Bits(effect, value))
                        << frame;
                }
            if (pair.floats->CanUndo()) {
                ASSERT_TRUE(pair.floats->Undo());
            }
            EXPECT_EQ(BytesOf(pair.floats->Sound()), before);
        }
    }
}

TEST_F(FloatEffectsTest, WhatPassesFullScaleIsKeptUnlessHeld) {
    const Pair pair = MakePair(2, 100, 32767);
    const CWave& sound = pair.floats->Sound();
    const double before = sound.GetShare(1, 7);
    ASSERT_TRUE(Apply("volume", Target(*pair.floats), {400, 0}));
    EXPECT_NEAR(sound.GetShare(1, 7), before * 4, 1e-6);
    EXPECT_GT(PeakOf(sound), 2 * 32768);
    ASSERT_TRUE(Apply("volume", Target(*pair.floats), {100, 1}));
    EXPECT_EQ(PeakOf(sound), 32768);
}

TEST_F(FloatEffectsTest, ResultsThatAreNoNumbersAreSilence) {
    const Pair pair = MakePair(1, 10, 20000);
    SamplesOf<FloatSample>(pair.floats->Sound().MutableBytes())[3] =
        std::numeric_limits<float>::max();
    ASSERT_TRUE(Apply("volume", Target(*pair.floats), {400, 0}));
    EXPECT_EQ(pair.floats->Sound().GetShare(0, 3), 0);
    EXPECT_NE(pair.floats->Sound().GetShare(0, 4), 0);
}

TEST_F(FloatEffectsTest, PreviewsHoldFloatsToo) {
    const Pair pair = MakePair(2, 1000, 6000);
    const auto values = StartValuesOf(*FindEffect("equalizer"));
    EffectState other;  // what the first run leaves behind is heard in the next
    ASSERT_TRUE(Preview("equalizer", Target(*pair.floats), values));
    ASSERT_TRUE(Preview("equalizer", {*pair.words, 0, 0, other}, values));
    EXPECT_EQ(pair.floats->Preview().GetFormat(), MakeSoundFormat(2, 32, 44100));
    ASSERT_EQ(pair.floats->Preview().GetFrameCount(), pair.words->Preview().GetFrameCount());
    for (std::uint32_t frame = 0; frame < 1000; ++frame)
        ASSERT_EQ(static_cast<int>(pair.floats->Preview().GetShare(1, frame) * 32768),
                  pair.words->Preview().GetSample(1, frame));
}

}  // namespace
}  // namespace sonavel::testing
