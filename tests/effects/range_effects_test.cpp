// The effects that make their range anew, on sounds whose results can be worked out on paper.
#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

#include "effect_fixture.h"
#include "effects/fade.h"
#include "effects/resample.h"
#include "libraries/loudness_meter.h"
#include "sound/share_io.h"
#include "sound/sound_loudness.h"
#include "support/thread_count.h"

namespace sonavel::testing {
namespace {

using Wave = std::function<double(unsigned channel, double seconds)>;

class RangeEffectTest : public EffectTest {
  protected:
    std::unique_ptr<CSoundDoc> MakeWave(const Format& format, double seconds, const Wave& wave) {
        const auto frames = static_cast<std::uint32_t>(seconds * format.rate);
        auto document =
            MakeDocument(format, Bytes(std::size_t{frames} * format.channels * format.bits / 8));
        std::vector<float> shares(std::size_t{frames} * format.channels);
        for (std::size_t i = 0; i < shares.size(); ++i)
            shares[i] =
                static_cast<float>(wave(static_cast<unsigned>(i % format.channels),
                                        static_cast<double>(i / format.channels) / format.rate));
        WriteShares(document->Sound(), 0, shares);
        return document;
    }
    static double Sine(double hertz, double seconds) {
        return std::sin(2 * std::numbers::pi * hertz * seconds);
    }
    static double Energy(const CWave& sound, double from, double to) {
        double sum = 0;
        const auto rate = sound.GetSamplesPerSecond();
        const auto end = static_cast<std::uint32_t>(to * rate);
        for (auto i = static_cast<std::uint32_t>(from * rate); i < end; ++i)
            sum += sound.GetShare(0, i) * sound.GetShare(0, i);
        return sum;
    }
    // Of the left channel, upward.
    static int ZeroCrossings(const CWave& sound) {
        int count = 0;
        for (std::uint32_t i = 1; i < sound.GetFrameCount(); ++i)
            count += sound.GetShare(0, i - 1) < 0 && sound.GetShare(0, i) >= 0;
        return count;
    }
    Result<SoundLoudness> LoudnessOf(const CWave& sound) {
        const auto window = progress_.CreateProgress("");
        return MeasureLoudness(sound, {0, sound.GetFrameCount()}, *window);
    }
};

TEST_F(RangeEffectTest, FadesGoFromSilenceToTheSoundByTheirCurve) {
    const struct {
        double curve, quarter, middle;
    } curves[] = {{0, 0.25, 0.5}, {1, 0.1464466, 0.5}, {2, 0.0056234, 0.0316228}};
    for (const Format& format : {Format{1, 8}, Format{2, 16}, Format{2, 32}})
        for (const auto& [curve, quarter, middle] : curves)
            for (const bool in : {true, false}) {
                SCOPED_TRACE(NameOf(format) + (in ? " in " : " out ") + std::to_string(curve));
                const auto document = MakeWave(format, 0.2, [](unsigned, double) { return 0.5; });
                ASSERT_TRUE(
                    Apply(in ? "fade-in" : "fade-out", Target(*document, 100, 1101), {curve}));
                const CWave& sound = document->Sound();
                const auto at = [&](std::uint32_t way) {
                    return sound.GetShare(format.channels - 1, in ? 100 + way : 1100 - way);
                };
                const double unit = format.bits == 8 ? 1.0 / 128 : 1.0 / 32768;
                EXPECT_EQ(at(0), 0);
                EXPECT_NEAR(at(250), 0.5 * quarter, unit);
                EXPECT_NEAR(at(500), 0.5 * middle, unit);
                EXPECT_NEAR(at(1000), 0.5, 1e-6);
                EXPECT_NEAR(sound.GetShare(0, 99), 0.5, 1e-6);
                EXPECT_NEAR(sound.GetShare(0, 1101), 0.5, 1e-6);
            }
}

TEST_F(RangeEffectTest, ChangesWithoutSettingsKeepToTheirRange) {
    for (const Format& format : {Format{1, 8}, Format{2, 8}, Format{2, 16}, Format{1, 32}})
        for (const char* name : {"mute", "invert", "reverse"}) {
            SCOPED_TRACE(std::string(name) + ", " + NameOf(format));
            constexpr std::uint32_t kFrom = 10, kTo = 20013;
            const auto before = MakeNoise(format, 30000, 20000),
                       after = MakeNoise(format, 30000, 20000);
            ASSERT_TRUE(Apply(name, Target(*after, kFrom, kTo), {}));
            for (std::uint32_t i = 0; i < 30000; ++i)
                for (unsigned channel = 0; channel < format.channels; ++channel) {
                    const bool inside = i >= kFrom && i < kTo;
                    const bool turned = inside && name[0] == 'r';
                    const double was =
                        before->Sound().GetShare(channel, turned ? kFrom + kTo - 1 - i : i);
                    const double want = !inside          ? was
                                        : name[0] == 'm' ? 0
                                        : name[0] == 'i' ? -was
                                                         : was;
                    ASSERT_EQ(after->Sound().GetShare(channel, i), want) << i;
                }
            ASSERT_TRUE(after->Undo());
            EXPECT_EQ(BytesOf(after->Sound()), BytesOf(before->Sound()));
        }
}

TEST_F(RangeEffectTest, AnOffsetIsTakenOutOfEachChannelByItself) {
    for (const unsigned bits : {8u, 16u, 32u}) {
        const auto document = MakeWave({2, bits}, 1, [](unsigned channel, double t) {
            return (channel ? -0.25 : 0.125) + 0.5 * Sine(100, t);
        });
        ASSERT_TRUE(Apply("remove-offset", Target(*document), {}));
        for (unsigned channel = 0; channel < 2; ++channel) {
            double sum = 0;
            for (std::uint32_t i = 0; i < 8000; ++i) sum += document->Sound().GetShare(channel, i);
            EXPECT_NEAR(sum / 8000, 0, bits == 8 ? 0.004 : 2e-5) << bits;
        }
    }
}

TEST_F(RangeEffectTest, EchoesComeLaterAndQuieterAndByTurns) {
    const struct {
        double pingPong;
        std::vector<double> left, right;  // at multiples of the delay
    } cases[] = {{0, {0.5, 0.2, 0.1, 0.05}, {0, 0, 0, 0}},
                 {1, {0.5, 0.1, 0, 0.025}, {0, 0, 0.05, 0}}};
    for (const unsigned bits : {16u, 32u})
        for (const auto& [pingPong, left, right] : cases) {
            const auto document = MakeWave({2, bits}, 2, [](unsigned channel, double t) {
                return channel == 0 && t == 0 ? 0.5 : 0;
            });
            ASSERT_TRUE(Apply("echo", Target(*document), {300, 50, 40, pingPong}));
            for (std::uint32_t k = 0; k < 4; ++k) {
                EXPECT_NEAR(document->Sound().GetShare(0, k * 2400), left[k], 4e-5) << k;
                EXPECT_NEAR(document->Sound().GetShare(1, k * 2400), right[k], 4e-5) << k;
                EXPECT_EQ(document->Sound().GetShare(0, k * 2400 + 1), 0) << k;
            }
        }
}

TEST_F(RangeEffectTest, NormaliseBringsPeaksWhereTheyAreWanted) {
    const struct {
        double peak, each, left, right;
    } cases[] = {{-6, 0, 0.501187, 0.2505935}, {-6, 1, 0.501187, 0.501187}, {0, 0, 1, 0.5}};
    for (const unsigned bits : {8u, 16u, 32u})
        for (const auto& [peak, each, left, right] : cases) {
            const auto document = MakeWave({2, bits, 8000}, 0.5, [](unsigned channel, double t) {
                return (channel ? 0.125 : 0.25) * Sine(1000, t);
            });
            ASSERT_TRUE(Apply("normalise", Target(*document), {0, peak, -16, each}));
            const double unit = bits == 8 ? 1.0 / 128 : 1.0 / 16384;
            double most[2] = {};
            for (std::uint32_t i = 0; i < 4000; ++i)
                for (unsigned c = 0; c < 2; ++c)
                    most[c] = std::max(most[c], std::abs(document->Sound().GetShare(c, i)));
            EXPECT_NEAR(most[0], left, unit) << bits;
            EXPECT_NEAR(most[1], right, unit) << bits;
        }
    const auto silent = MakeWave({1, 16}, 1, [](unsigned, double) { return 0; });
    for (const double to : {0.0, 1.0})
        EXPECT_FALSE(Apply("normalise", Target(*silent), {to, -1, -16, 0}));
    EXPECT_FALSE(silent->CanUndo());
}

TEST_F(RangeEffectTest, ReferenceTonesReadTheirLoudness) {
    // A sine of 1 kHz on both channels is as loud as its peak's level says.
    for (const std::uint32_t rate : {44100u, 48000u, 96000u})
        for (const double level : {-23.0, -33.0}) {
            const auto document = MakeWave({2, 16, rate}, 5, [=](unsigned, double t) {
                return ShareOfDecibels(level) * Sine(1000, t);
            });
            const auto found = LoudnessOf(document->Sound());
            ASSERT_TRUE(found && found->integrated);
            EXPECT_NEAR(*found->integrated, level, 0.1) << rate;
            EXPECT_NEAR(DecibelsOfShare(found->truePeak), level, 0.1);
            EXPECT_NEAR(found->range, 0, 0.1);
        }
    // Levels -20 and -30 dB, 20 seconds each: the range between them.
    const auto steps = MakeWave({2, 16, 8000}, 40, [](unsigned, double t) {
        return ShareOfDecibels(t < 20 ? -20 : -30) * Sine(1000, t);
    });
    const auto found = LoudnessOf(steps->Sound());
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->range, 10, 1);
}

TEST_F(RangeEffectTest, TruePeaksLieBetweenTheSamplesWhereverTheyAre) {
    // A quarter of the rate, its samples at 45 degrees: 3 dB below the wave's peak.
    for (const double loudAt : {0.0, 1.0, 2.9}) {
        const auto document = MakeWave({1, 32, 48000}, 3, [=](unsigned, double t) {
            const double level = t >= loudAt && t < loudAt + 0.1 ? 0.5 : 0.01;
            return level * std::sin(2 * std::numbers::pi * (12000 * t + 0.125));
        });
        const auto found = LoudnessOf(document->Sound());
        ASSERT_TRUE(found);
        EXPECT_NEAR(found->samplePeak, 0.35355, 1e-4);
        EXPECT_NEAR(found->truePeak, 0.5, 0.04) << loudAt;
    }
}

// It is looked for piece by piece, and no seam may be taken for a peak.
TEST_F(RangeEffectTest, TheTruePeakIsThatOfTheWholeInOnePass) {
    const Wave waves[] = {
        [](unsigned, double t) { return 0.9 * Sine(50, t); },
        [](unsigned channel, double t) { return (channel ? 0.8 : 0.5) * Sine(11025, t + 1e-5); },
        [](unsigned, double t) { return t < 0.5 ? 0.1 * Sine(9000, t) : 0.7; },
    };
    for (const Wave& wave : waves)
        for (const unsigned threads : {1u, 3u}) {
            const ThreadCount count(threads);
            const auto document = MakeWave({2, 32, 44100}, 1, wave);
            std::vector<float> shares(std::size_t{2} * document->Sound().GetFrameCount());
            ReadShares(document->Sound(), 0, shares);
            LoudnessMeter meter(LoudnessMeter::Finds::kTruePeak, 2, 44100);
            ASSERT_TRUE(meter.Add(shares));
            EXPECT_EQ(LoudnessOf(document->Sound())->truePeak, meter.TruePeak()) << threads;
        }
}

TEST_F(RangeEffectTest, NormaliseToALoudnessStopsAtTheCeiling) {
    const struct {
        double wanted, ceiling, got;
    } cases[] = {{-16, -1, -16}, {-30, -1, -30}, {-10, -14, -14}};
    for (const auto& [wanted, ceiling, got] : cases) {
        const auto document = MakeWave({2, 16, 48000}, 2, [](unsigned, double t) {
            return ShareOfDecibels(-23) * Sine(1000, t);
        });
        ASSERT_TRUE(Apply("normalise", Target(*document), {1, ceiling, wanted, 0}));
        EXPECT_NEAR(LoudnessOf(document->Sound())->integrated.value_or(0), got, 0.1) << wanted;
    }
}

TEST_F(RangeEffectTest, TempoChangesTheLengthAndMovesOnsetsAndMarkers) {
    for (const Format& format : {Format{1, 16, 44100}, Format{2, 8, 22050}, Format{2, 32, 48000}})
        for (const double percent : {50.0, 80.0, 200.0}) {
            SCOPED_TRACE(NameOf(format) + " " + std::to_string(percent));
            const auto document = MakeWave(format, 4, [](unsigned, double t) {
                return std::fmod(t, 1) < 0.5 ? 0 : 0.5 * Sine(441, t);
            });
            CWave& sound = document->Sound();
            sound.Markers().Add(format.rate, "one", format.rate);
            ASSERT_TRUE(Apply("tempo", Target(*document), {percent}));
            const double scale = 100 / percent;
            EXPECT_EQ(sound.GetFrameCount(), std::lround(4 * format.rate * scale));
            EXPECT_EQ(sound.Markers().All()[0].position, std::lround(format.rate * scale));
            // Start and end are rounded each.
            EXPECT_NEAR(sound.Markers().All()[0].length, format.rate * scale, 1);
            // Pitch stays, and each burst begins where it should, within the library's windows.
            EXPECT_NEAR(ZeroCrossings(sound), 2 * 441 * scale, 0.04 * 2 * 441 * scale);
            for (int burst = 0; burst < 4; ++burst) {
                const double from = (burst + 0.5) * scale, to = (burst + 1) * scale;
                EXPECT_LT(Energy(sound, from - 0.3 * scale, from - 0.09),
                          0.02 * Energy(sound, from, to));
                EXPECT_GT(Energy(sound, from + 0.09, from + 0.2 * scale), 0);
            }
        }
}

TEST_F(RangeEffectTest, PitchMovesTheToneAndKeepsTheLength) {
    for (const Format& format : {Format{1, 16, 44100}, Format{2, 32, 22050}})
        for (const double semitones : {12.0, -12.0, 7.0, 0.0}) {
            const auto document =
                MakeWave(format, 3, [](unsigned, double t) { return 0.5 * Sine(440, t); });
            ASSERT_TRUE(Apply("pitch", Target(*document), {semitones}));
            EXPECT_EQ(document->Sound().GetFrameCount(), 3 * format.rate);
            const double wanted = 3 * 440 * std::pow(2.0, semitones / 12);
            EXPECT_NEAR(ZeroCrossings(document->Sound()), wanted, 0.03 * wanted) << semitones;
        }
}

TEST_F(RangeEffectTest, ResamplingKeepsToneLengthAndMarkerTimes) {
    for (const Format& format : {Format{1, 8, 44100}, Format{2, 16, 44100}, Format{2, 32, 8000}})
        for (const std::uint32_t rate : {48000u, 22050u})
            for (const unsigned threads : {1u, 2u}) {
                const ThreadCount count(threads);
                const auto document = MakeWave(format, 3, [](unsigned channel, double t) {
                    return (channel ? 0.25 : 0.5) * Sine(1000, t);
                });
                CWave& sound = document->Sound();
                sound.Markers().Add(format.rate, "one", format.rate / 2);
                ASSERT_TRUE(ResampleSound(*document, rate));
                EXPECT_EQ(sound.GetSamplesPerSecond(), rate);
                ASSERT_EQ(sound.GetFrameCount(), 3 * rate);
                EXPECT_EQ(sound.Markers().All()[0].position, rate);
                EXPECT_EQ(sound.Markers().All()[0].length, rate / 2);
                const double unit = format.bits == 8 ? 0.02 : 2e-4;
                for (std::uint32_t i = rate / 10; i < 3 * rate - rate / 10; i += 7)
                    for (unsigned c = 0; c < format.channels; ++c)
                        ASSERT_NEAR(sound.GetShare(c, i),
                                    (c ? 0.25 : 0.5) * Sine(1000, static_cast<double>(i) / rate),
                                    unit);
                ASSERT_TRUE(document->Undo());
                EXPECT_EQ(sound.GetSamplesPerSecond(), format.rate);
            }
}

TEST_F(RangeEffectTest, LearnedNoiseFallsAndSpeechStays) {
    // Syllables of voiced harmonics, 30 ms of rise and fall, with pauses; noise 50 dB below.
    const auto clean = [](double t) {
        const double place = std::fmod(t, 0.6);
        if (t < 1 || place > 0.4) return 0.0;
        const double shape = std::clamp(std::min(place, 0.4 - place) / 0.03, 0.0, 1.0);
        double sum = 0;
        for (int k = 1; k <= 20; ++k) sum += Sine(140 * k, t) / k;
        return 0.25 * shape * sum;
    };
    for (const Format& format : {Format{1, 16, 44100}, Format{2, 32, 44100}}) {
        std::mt19937 random(7);
        std::normal_distribution<double> noise(0, 0.4 * ShareOfDecibels(-50));
        const auto document =
            MakeWave(format, 5, [&](unsigned, double t) { return clean(t) + noise(random); });
        const CWave& sound = document->Sound();
        state_ = {};
        EXPECT_FALSE(Apply("noise-reduce", Target(*document), {18, 3, 0}));
        ASSERT_TRUE(LearnNoiseFrom(Target(*document, 0, format.rate * 9 / 10)));
        const double noiseBefore = Energy(sound, 0.1, 0.9), speechBefore = Energy(sound, 1, 5);
        ASSERT_TRUE(Apply("noise-reduce", Target(*document), {18, 3, 0}));
        EXPECT_GT(10 * std::log10(noiseBefore / Energy(sound, 0.1, 0.9)), 12);
        // A pause between syllables, too.
        EXPECT_GT(10 * std::log10(noiseBefore / 0.8 * 0.07 / Energy(sound, 1.68, 1.75)), 12);
        EXPECT_NEAR(10 * std::log10(Energy(sound, 1, 5) / speechBefore), 0, 0.5);
    }
}

TEST_F(RangeEffectTest, WhatStaysAndWhatGoesAreTheSound) {
    const auto whole = MakeNoise({2, 32, 44100}, 30001, 3000),
               stays = MakeNoise({2, 32, 44100}, 30001, 3000),
               goes = MakeNoise({2, 32, 44100}, 30001, 3000);
    ASSERT_TRUE(LearnNoiseFrom(Target(*whole)));
    ASSERT_TRUE(Apply("noise-reduce", Target(*stays), {24, 2, 0}));
    ASSERT_TRUE(Apply("noise-reduce", Target(*goes), {24, 2, 1}));
    for (std::uint32_t i = 0; i < 30001; ++i)
        ASSERT_NEAR(stays->Sound().GetShare(1, i) + goes->Sound().GetShare(1, i),
                    whole->Sound().GetShare(1, i), 1e-6);
}

TEST_F(RangeEffectTest, EachIsOneStepIsHeardFirstAndDoesNotDependOnThreads) {
    for (const Effect& effect : Effects()) {
        if (!effect.range.compute) continue;
        SCOPED_TRACE(effect.name);
        std::vector<double> values = StartValuesOf(effect);
        if (effect.commandId == effect_command::kTempo) values = {80};
        Bytes alone;
        for (const unsigned threads : {1u, 3u}) {
            const ThreadCount count(threads);
            const auto document = MakeNoise({2, 16, 44100}, 400000);
            const Bytes before = BytesOf(document->Sound());
            ASSERT_TRUE(LearnNoiseFrom(Target(*document)));
            if (effect.HasPreview()) {
                ASSERT_TRUE(Preview(effect.name, Target(*document, 1000, 90000), values));
                EXPECT_GT(document->Preview().GetFrameCount(), 80000u);
            }
            ASSERT_TRUE(Apply(effect.name, Target(*document, 1000, 300000), values));
            EXPECT_FALSE(document->Preview().HasData());
            const Bytes after = BytesOf(document->Sound());
            if (threads == 1) alone = after;
            EXPECT_TRUE(after == alone);
            EXPECT_TRUE(std::equal(before.begin(), before.begin() + 4000, after.begin()));
            EXPECT_TRUE(std::equal(before.end() - 400000, before.end(), after.end() - 400000));
            ASSERT_TRUE(document->Undo());
            EXPECT_TRUE(BytesOf(document->Sound()) == before);
            EXPECT_FALSE(document->CanUndo());
        }
    }
}

TEST_F(RangeEffectTest, ACancelLeavesTheSoundAsItWas) {
    for (const char* name : {"reverse", "echo", "tempo", "pitch", "noise-reduce"}) {
        const auto document = MakeNoise({2, 16, 44100}, 600000);
        const Bytes before = BytesOf(document->Sound());
        progress_.cancelAtPoll.reset();
        ASSERT_TRUE(LearnNoiseFrom(Target(*document, 0, 5000)));
        progress_.polls = 0;
        progress_.cancelAtPoll = 1;
        std::vector<double> values = StartValuesOf(*FindEffect(name));
        if (values.size() == 1) values[0] = values[0] + 3;
        EXPECT_TRUE(Apply(name, Target(*document), values).IsCancelled()) << name;
        EXPECT_EQ(BytesOf(document->Sound()), before) << name;
        EXPECT_FALSE(document->CanUndo() || document->GetModified()) << name;
    }
}

TEST_F(RangeEffectTest, WhereOkChangesNothingApplyingCanBeAskedFor) {
    const struct {
        const char* name;
        std::vector<double> values;
        unsigned channels;
    } cases[] = {{"equalizer", {6, 6, 6, 6, 6, 6, 6}, 2}, {"flanger", {7, 1}, 1}};
    for (const auto& [name, values, channels] : cases)
        for (const unsigned bits : {8u, 16u, 32u}) {
            const auto document = MakeNoise({channels, bits == 32 ? 16 : bits, 44100}, 50000, 9000);
            ASSERT_TRUE(document->Sound().ConvertBits(bits));
            const Bytes before = BytesOf(document->Sound());
            ASSERT_TRUE(Apply(name, Target(*document), values));
            EXPECT_EQ(BytesOf(document->Sound()), before) << name;
            ASSERT_TRUE(
                ApplyEffect(*FindEffect(name), Target(*document), values, Applying::kAlways));
            EXPECT_NE(BytesOf(document->Sound()), before) << name;
        }
}

}  // namespace
}  // namespace sonavel::testing
