// The effects that compute a whole result first, against their formulas written out literally.
#include <algorithm>
#include <array>
#include <cmath>

#include "effect_fixture.h"
#include "effects/flanger.h"
#include "effects/reverb.h"

namespace sonavel::testing {
namespace {

// A ring that is walked backwards, as the formulas describe it.
Channel FlangedLiterally(const Channel& in, double rate, int delayTenths, int modulationTenths) {
    const double delayMs = static_cast<float>(delayTenths * 0.1);
    const double omega = static_cast<float>(modulationTenths * 0.1) / rate;
    const auto n = static_cast<std::size_t>(rate * delayMs * 0.001);
    Channel ring(n + 1), out(in.size());
    std::size_t w = 0;
    for (std::size_t i = 0; i < in.size(); ++i) {
        const double d = (1 - std::cos(2.0 * static_cast<double>(i) * 3.141592502593994 * omega)) *
                         static_cast<double>(n) * 0.5;
        const auto k = static_cast<std::size_t>(d);
        const double a = ring[(w + k) % (n + 1)];
        const double b = ring[((k + 1) % (n + 1) + w) % (n + 1)];
        out[i] = static_cast<float>(((b - a) * (d - static_cast<double>(k)) + a + in[i]) * 0.5);
        ring[w] = in[i];
        w = w ? w - 1 : n;
    }
    return out;
}

class PreviewedEffectTest : public EffectTest {
  protected:
    static void ExpectNear(const CWave& sound, unsigned channel, std::uint32_t start,
                           const Channel& wanted, double tolerance = 1.01) {
        for (std::uint32_t i = 0; i < wanted.size(); ++i)
            ASSERT_NEAR(sound.GetSample(channel, start + i), wanted[i], tolerance)
                << "channel " << channel << " frame " << i;
    }
};

TEST_F(PreviewedEffectTest, FlangerSweepsItsDelay) {
    for (const auto& [delay, modulation] : {std::pair{0, 5}, {10, 100}, {150, 3}}) {
        const auto document = MakeNoise({2, 16, 8000}, 20000);
        const Channel before[] = {ValuesOf(document->Sound(), 0), ValuesOf(document->Sound(), 1)};
        ASSERT_TRUE(Apply("flanger", Target(*document), {delay / 10.0, modulation / 10.0}));
        for (const unsigned channel : {0u, 1u})
            ExpectNear(document->Sound(), channel, 0,
                       FlangedLiterally(before[channel], 8000, delay, modulation));
    }
}

// An error of the angle in its tenth digit is heard by then.
TEST_F(PreviewedEffectTest, FlangerKeepsItsSweepForAMinute) {
    const auto document = MakeNoise({2, 16, 44100}, 60 * 44100);
    const Channel before = ValuesOf(document->Sound(), 0);
    ASSERT_TRUE(Apply("flanger", Target(*document), {15, 10}));
    const Channel wanted = FlangedLiterally(before, 44100, 150, 100);
    for (const std::uint32_t second : {0u, 59u}) {
        const auto from = wanted.begin() + second * 44100;
        ExpectNear(document->Sound(), 0, second * 44100, Channel(from, from + 44100));
    }
}

TEST_F(PreviewedEffectTest, AMonoRangeIsPreviewedByHalfAndNotApplied) {
    const auto document = MakeNoise({1, 16, 8000}, 9000);
    const Channel before = ValuesOf(document->Sound(), 0);
    ASSERT_TRUE(Apply("flanger", Target(*document), {5, 1}));
    EXPECT_EQ(ValuesOf(document->Sound(), 0), before);

    ASSERT_TRUE(Preview("flanger", Target(*document), {5, 1}));
    const CWave& preview = document->Preview();
    EXPECT_EQ(preview.GetChannels(), 2u);
    EXPECT_EQ(preview.GetBits(), 16u);
    ASSERT_EQ(preview.GetFrameCount(), 4500u);
    Channel wanted = FlangedLiterally(before, 8000, 50, 10);
    wanted.resize(4500);
    ExpectNear(preview, 0, 0, wanted);
    EXPECT_EQ(ValuesOf(preview, 1), Channel(4500));
}

TEST_F(PreviewedEffectTest, CancelHandsNothingOverAndLeavesTheHistoryAlone) {
    for (const char* name : {"flanger", "reverb"}) {
        const auto document = MakeNoise({2, 16, 8000}, 200000);
        ASSERT_TRUE(edit::Delete(*document, {0, 10, 0}));
        ASSERT_TRUE(document->Undo());
        document->SetModified(false);
        const Bytes before = BytesOf(document->Sound());
        progress_.polls = 0;
        progress_.cancelAtPoll = 30;
        const std::vector<double> values = StartValuesOf(*FindEffect(name));
        EXPECT_FALSE(Apply(name, Target(*document), values)) << name;
        EXPECT_EQ(BytesOf(document->Sound()), before) << name;
        EXPECT_FALSE(document->GetModified()) << name;
        EXPECT_TRUE(document->CanRedo() && !document->CanUndo()) << name;
        EXPECT_FALSE(Preview(name, Target(*document), values)) << name;
        EXPECT_EQ(document->Preview().GetFrameCount(), 0u) << name;
        EXPECT_EQ(progress_.openWindows, 0);
    }
}

TEST(ReverbTapsTest, PairsSortedGainsWithMidpoints) {
    const ReverbTaps none = MakeReverbTaps({.reflections = 0}, 44100);
    EXPECT_EQ(none.longest, 1u);
    EXPECT_EQ(none.lateStart, 1u);
    EXPECT_EQ(none.taps[6].delay, 1u);
    for (int k = 7; k < 13; ++k) EXPECT_EQ(none.taps[k].delay, 0u);
    for (int k = 0; k < 13; ++k) EXPECT_EQ(none.taps[k].gain, k == 6 ? 1 : k == 7 ? 0.5f : 0) << k;

    const ReverbTaps all = MakeReverbTaps({.earlyMs = 120}, 1000);
    const std::uint32_t delays[] = {12, 15, 30, 40, 80, 100, 6, 9, 13, 22, 35, 60, 90};
    for (int k = 0; k < 13; ++k) EXPECT_EQ(all.taps[k].delay, delays[k]) << k;
    EXPECT_FLOAT_EQ(all.taps[7].gain, 0.975f);
    EXPECT_FLOAT_EQ(all.taps[12].gain, 0.58f);
    EXPECT_EQ(all.longest, 100u);
    EXPECT_EQ(all.lateStart, 50u);
}

// The late part sample by sample: six combs with damped feedback, then the all-passes.
Channel LateLiterally(const Channel& in, const ReverbParameters& parameters, double rate) {
    constexpr double kDelays[] = {0.05, 0.065, 0.075, 0.085, 0.095, 0.12};
    constexpr double kDecays[] = {0.07, 0.065, 0.6, 0.055, 0.05, 0.045};
    constexpr double kTaps[3][4] = {{0.0014, -0.0319, 0.0481, 0.4824},
                                    {0.006, 0.0429, 0.1627, 0.2884},
                                    {0.0083, 0.0472, 0.1638, 0.2806}};
    const double* taps = kTaps[parameters.timeMs < 2000 ? 0 : parameters.timeMs < 4000 ? 1 : 2];
    std::vector<double> sum(in.size());
    for (int c = 0; c < 6; ++c) {
        const auto delay = static_cast<std::size_t>(rate * kDelays[c]);
        const double gain = std::pow(0.001, kDecays[c] / (parameters.timeMs * 0.001));
        std::vector<double> ring(delay);
        std::array<double, 8> history{};
        for (std::size_t i = 0; i < in.size(); ++i) {
            const double delayed = ring[i % delay];
            std::copy_backward(history.begin(), history.end() - 1, history.end());
            history[0] = delayed;
            double damped = 0;
            for (int k = 0; k < 8; ++k) damped += history[k] * taps[k < 4 ? k : 7 - k];
            sum[i] += delayed;
            ring[i % delay] = in[i] + damped * gain;
        }
    }
    constexpr double kStages[4][2] = {
        {0.006, 0.7}, {0.0091, 0.683}, {0.0099, 0.678}, {0.0107, 0.671}};
    for (const auto& [seconds, gain] : kStages) {
        if (parameters.timeMs <= 1700) break;
        std::vector<double> ring(static_cast<std::size_t>(rate * seconds));
        for (std::size_t i = 0; i < sum.size(); ++i) {
            double& slot = ring[i % ring.size()];
            const double out = -gain * sum[i] + slot;
            slot = out * gain + sum[i];
            sum[i] = out;
        }
    }
    return Channel(sum.begin(), sum.end());
}

// As the dialog shows them, in its order.
std::vector<double> ReverbValues(const ReverbParameters& parameters) {
    return {parameters.earlyMs / 1.0, parameters.timeMs / 1.0, parameters.reflections / 1.0,
            parameters.dryPercent / 1.0, parameters.wetPercent / 1.0};
}

Channel ReverbLiterally(const Channel& in, const ReverbParameters& parameters, double rate) {
    constexpr std::size_t kBlock = 32768;
    const ReverbTaps taps = MakeReverbTaps(parameters, static_cast<std::uint32_t>(rate));
    const Channel late = LateLiterally(in, parameters, rate);
    Channel out(in.size());
    for (std::size_t i = 0; i < in.size(); ++i) {
        double wet = i >= taps.lateStart ? late[i - taps.lateStart] : 0;
        for (const ReverbTap& tap : taps.taps) {
            if (i < tap.delay) continue;
            // What crosses a block's end changes its sign.
            const double polarity = i / kBlock == (i - tap.delay) / kBlock ? 1 : -1;
            wet += polarity * in[i - tap.delay] * tap.gain;
        }
        out[i] = static_cast<float>(
            (parameters.dryPercent * in[i] + parameters.wetPercent * wet / 4) * 0.01);
    }
    return out;
}

TEST_F(PreviewedEffectTest, ReverbAddsEarlyAndLateSound) {
    for (const ReverbParameters& parameters :
         {ReverbParameters{}, ReverbParameters{200, 1701, 6, 50, 50},
          ReverbParameters{7, 2500, 3, 0, 100}, ReverbParameters{100, 6000, 0, 20, 80}}) {
        SCOPED_TRACE(parameters.timeMs);
        for (const unsigned channels : {1u, 2u}) {
            const auto document = MakeNoise({channels, 16, 11025}, 70000, 3000);
            const Channel before = ValuesOf(document->Sound(), channels - 1);
            ASSERT_TRUE(Apply("reverb", Target(*document, 500, 70000), ReverbValues(parameters)));
            const Channel range(before.begin() + 500, before.end());
            ExpectNear(document->Sound(), channels - 1, 500,
                       ReverbLiterally(range, parameters, 11025));
        }
    }
}

// Whichever sign the loudest sample has, it stays within 16 bits and keeps it.
TEST_F(PreviewedEffectTest, ReverbBringsTheLoudestSampleToFullScale) {
    for (const int loudest : {32767, -32768}) {
        for (const unsigned channels : {1u, 2u}) {
            for (const double time : {500.0, 3000.0}) {
                SCOPED_TRACE(loudest);
                const auto document = MakeNoise({channels, 16, 8000}, 4000, 2000);
                CWave& sound = document->Sound();
                // Eight times the same sign, each a reflection later.
                for (std::uint32_t i = 0; i < 8; ++i)
                    sound.SetSample(channels - 1, 1000 + 100 * i, loudest);
                ASSERT_TRUE(Apply("reverb", Target(*document), {200, time, 6, 100, 100}));
                int most = 0;
                for (const float value : ValuesOf(sound, channels - 1))
                    if (std::abs(value) > std::abs(most)) most = static_cast<int>(value);
                EXPECT_EQ(most > 0, loudest > 0);
                EXPECT_LE(std::abs(most), 32767);
                EXPECT_GE(std::abs(most), 32766);
            }
        }
    }
}

TEST_F(PreviewedEffectTest, ReverbBringsEightBitPreviewsTo16Bits) {
    const auto quiet = MakeNoise({1, 8, 8000}, 4000);
    ASSERT_TRUE(Preview("reverb", Target(*quiet), {50, 1500, 6, 100, 0}));
    // The value 128 passes full scale and wraps.
    for (std::uint32_t i = 0; i < 2000; ++i)
        ASSERT_NEAR(quiet->Preview().GetSample(0, i),
                    Stored(quiet->Sound().GetSample(0, i) * 258.00787, 16), 1.01);
}

TEST(ReverbTest, ARunThatEndsBeforeItsDelaysSoundsTheSame) {
    for (const std::uint32_t frames : {1u, 60u, 500u, 6000u, 40000u}) {
        ReverbChannel endless({.timeMs = 3000}, 44100);
        ReverbChannel ending({.timeMs = 3000}, 44100, frames);
        for (std::uint32_t done = 0; done < frames; done += ReverbChannel::kPieceFrames) {
            Channel a(std::min(frames - done, ReverbChannel::kPieceFrames));
            for (std::size_t i = 0; i < a.size(); ++i) a[i] = static_cast<float>(i * i % 1999);
            Channel b = a;
            endless.Process(a);
            ending.Process(b);
            ASSERT_EQ(a, b) << frames;
        }
    }
}

TEST(ReverbTest, HowTheSamplesAreCutDoesNotMatter) {
    Channel whole(80000);
    for (std::size_t i = 0; i < whole.size(); ++i) whole[i] = static_cast<float>(i * i % 1999);
    Channel cut = whole;
    ReverbChannel({.timeMs = 3000}, 44100).Process(whole);
    ReverbChannel channel({.timeMs = 3000}, 44100);
    for (std::size_t done = 0; done < cut.size(); done += 777)
        channel.Process(
            std::span(cut).subspan(done, std::min<std::size_t>(777, cut.size() - done)));
    EXPECT_EQ(cut, whole);
}

// A run takes no more history than it has frames.
TEST_F(PreviewedEffectTest, AFlangerThatEndsBeforeItsDelaySoundsTheSame) {
    const std::vector<double> values = {15, 0.7};
    const std::uint32_t longest = FlangerMaxDelay({150, 7}, 192000);
    const auto flanged = [&](std::uint32_t frames) {
        const auto processor = MakeFlanger(values, {192000, 16, 1, frames, state_});
        const std::uint32_t history = processor->HistoryFrames();
        EXPECT_LE(history, std::min(frames, longest) + 1);
        Channel samples(history + frames);
        for (std::size_t i = 0; i < frames; ++i)
            samples[history + i] = static_cast<float>(i * i % 1999);
        processor->Process({0, frames, {samples}});
        samples.erase(samples.begin(), samples.begin() + history);
        return samples;
    };
    const Channel whole = flanged(6000);
    for (const std::uint32_t frames : {1u, 2u, 300u, 2000u, longest, longest + 1, 4000u})
        EXPECT_EQ(flanged(frames), Channel(whole.begin(), whole.begin() + frames)) << frames;
}

// Seven sections whose memory goes on from one channel, and one run, to the next.
struct LiteralEqualizer {
    std::array<double, 7> w1{}, w2{};

    // Only the first frames are filtered; all are brought to the peak of the input.
    Channel Run(const Channel& in, const std::vector<double>& gains,
                std::size_t filtered = static_cast<std::size_t>(-1)) {
        Channel out = in;
        for (std::size_t i = 0; i < std::min(in.size(), filtered); ++i) {
            double y = in[i];
            for (int k = 0; k < 7; ++k) {
                const EqualizerSection& s = kEqualizerSections[k];
                const double w = s.g * in[i] - s.a1 * w1[k] - s.a2 * w2[k];
                y += std::pow(10.0, gains[k] / 20) * (w - w2[k]);
                w2[k] = w1[k];
                w1[k] = w;
            }
            out[i] = static_cast<float>(y);
        }
        const auto peak = [](const Channel& values) {
            const auto [least, greatest] = std::minmax_element(values.begin(), values.end());
            return std::max(-*least, *greatest);
        };
        const float factor = peak(in) / peak(out);
        for (float& value : out) value *= factor;
        return out;
    }
};

const std::vector<double> kGains = {6, -10, 0, 3, -4, 12, -2};

TEST_F(PreviewedEffectTest, EqualizerFiltersOnlyItsPreviewAndKeepsItsStates) {
    LiteralEqualizer literal;
    for (int run = 0; run < 2; ++run) {
        const auto document = MakeNoise({2, 16}, 30000, 12000);
        const Bytes before = BytesOf(document->Sound());
        ASSERT_TRUE(Preview("equalizer", Target(*document), kGains));
        for (const unsigned channel : {0u, 1u})
            ExpectNear(document->Preview(), channel, 0,
                       literal.Run(ValuesOf(document->Sound(), channel), kGains), 3);
        EXPECT_EQ(BytesOf(document->Sound()), before);
        EXPECT_FALSE(document->CanUndo());
    }
}

TEST_F(PreviewedEffectTest, ACancelledEqualizerLeavesTheRestUnfiltered) {
    const auto document = MakeNoise({2, 16}, 30000, 12000);
    progress_.cancelAtPoll = 2;
    ASSERT_TRUE(Preview("equalizer", Target(*document), kGains));
    LiteralEqualizer literal;
    const Channel left = ValuesOf(document->Sound(), 0);
    ExpectNear(document->Preview(), 0, 0, literal.Run(left, kGains, 2 * kPieceFrames), 3);
    ExpectNear(document->Preview(), 1, 0, ValuesOf(document->Sound(), 1));
    // What was not filtered leaves no trace in the states either.
    progress_.cancelAtPoll.reset();
    ASSERT_TRUE(Preview("equalizer", Target(*document), kGains));
    ExpectNear(document->Preview(), 0, 0, literal.Run(left, kGains), 3);
}

TEST_F(PreviewedEffectTest, EqualizerLeavesSilenceSilent) {
    const auto document = MakeDocument({2, 16}, Bytes(4000));
    ASSERT_TRUE(Preview("equalizer", Target(*document), kGains));
    EXPECT_EQ(BytesOf(document->Preview()), Bytes(4000));
}

TEST(EqualizerTest, SectionsAreTheirDesignFormulas) {
    constexpr double kCentres[] = {60, 150, 400, 1000, 2400, 6000, 15000};
    for (int k = 0; k < 7; ++k) {
        const double w0 = 2 * M_PI * kCentres[k] / 44100;
        const double alpha = std::sin(w0) / (2 * (k == 6 ? 0.7 : 5.0 / 3));
        EXPECT_NEAR(kEqualizerSections[k].g, alpha / (1 + alpha), 1e-6) << k;
        EXPECT_NEAR(kEqualizerSections[k].a1, -2 * std::cos(w0) / (1 + alpha), 1e-6) << k;
        EXPECT_NEAR(kEqualizerSections[k].a2, (1 - alpha) / (1 + alpha), 1e-6) << k;
    }
    EXPECT_NEAR(EqualizerWeight(-400), 100, 1e-4);
    EXPECT_STREQ(EqualizerLabels(48000)[0], "");
    EXPECT_STREQ(EqualizerLabels(22050)[6], "7.5kHz");
}

}  // namespace
}  // namespace sonavel::testing
