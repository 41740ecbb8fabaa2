// The effects that work in place, against their formulas written out sample by sample.
#include <algorithm>
#include <cmath>
#include <functional>

#include "effect_fixture.h"
#include "effects/quantizer.h"

namespace sonavel::testing {
namespace {

constexpr std::uint32_t kFrames = 10000;  // several pieces and a rest
constexpr std::uint32_t kStart = 100;
constexpr std::uint32_t kEnd = 9900;

// (channel, frame of the range, value) to the value before it is quantized.
using Formula = std::function<double(unsigned, std::uint32_t, double)>;

void ExpectRange(const CWave& sound, const std::vector<Channel>& before, double tolerance,
                 const Formula& formula, int (*finish)(double)) {
    for (unsigned channel = 0; channel < before.size(); ++channel) {
        for (std::uint32_t i = 0; i < kFrames; ++i) {
            const bool inside = i >= kStart && i < kEnd;
            const double value = before[channel][i];
            const double wanted = inside ? formula(channel, i - kStart, value) : value;
            const int got = Stored(sound.GetSample(channel, i), sound.GetBits());
            // Beside a step of the quantizer the rounding of single precision decides.
            const double reach = inside ? tolerance : 0;
            const int low = Stored(finish(wanted - reach), sound.GetBits());
            const int high = Stored(finish(wanted + reach), sound.GetBits());
            const int exact = Stored(finish(wanted), sound.GetBits());
            ASSERT_TRUE(got == exact || got == low || got == high || (got >= low && got <= high))
                << "channel " << channel << " frame " << i << ": " << value << " became " << got
                << ", wanted " << wanted;
        }
    }
}

int Truncated(double value) {
    return static_cast<int>(value);
}

enum class Reading { kFull, kSignedByte };

// Through the work buffer an 8-bit value of 128 becomes -128; both are stored as byte 0.
std::vector<Channel> ChannelsOf(const CWave& sound, Reading reading) {
    std::vector<Channel> channels;
    for (unsigned channel = 0; channel < sound.GetChannels(); ++channel) {
        channels.push_back(ValuesOf(sound, channel));
        if (sound.GetBits() == 8 && reading == Reading::kSignedByte)
            std::replace(channels.back().begin(), channels.back().end(), 128.0f, -128.0f);
    }
    return channels;
}

TEST(QuantizerTest, TruncatesButLeapsBehindAPositiveHalf) {
    const std::pair<float, int> cases[] = {{100.7f, 228}, {100.5f, 100}, {-100.7f, -100},
                                           {0.51f, 128},  {0, 0},        {-0.9f, 0},
                                           {255.75f, 383}};
    for (const auto& [value, wanted] : cases) {
        EXPECT_EQ(Quantize(value), wanted) << value;
        EXPECT_EQ(QuantizedLiterally(value), wanted) << value;
    }
}

TEST(EffectRangeTest, TakesTheSelectionOrTheWholeSoundAndStaysInside) {
    using R = EffectRange;
    EXPECT_EQ(RangeToWorkOn(5, 5, 100, RangeStart::kSmallerEnd), (R{0, 100}));
    EXPECT_EQ(RangeToWorkOn(10, 30, 100, RangeStart::kSelectionStart), (R{10, 20}));
    EXPECT_EQ(RangeToWorkOn(30, 10, 100, RangeStart::kSmallerEnd), (R{10, 20}));
    EXPECT_EQ(RangeToWorkOn(30, 10, 100, RangeStart::kSelectionStart), (R{30, 20}));
    EXPECT_EQ(RangeToWorkOn(90, 300, 100, RangeStart::kSmallerEnd), (R{90, 10}));
}

class DirectEffectTest : public EffectTest {
  protected:
    // Runs the effect on the range in every format that `formats` names.
    void Check(std::span<const Format> formats, double tolerance, int (*finish)(double),
               const std::function<bool(const EffectTarget&)>& apply,
               const std::function<Formula(const Format&)>& formula) {
        for (const Format& format : formats) {
            SCOPED_TRACE(NameOf(format));
            const auto document = MakeNoise(format, kFrames);
            const std::vector<Channel> before = ChannelsOf(
                document->Sound(), finish == Truncated ? Reading::kFull : Reading::kSignedByte);
            const Bytes bytesBefore = BytesOf(document->Sound());
            ASSERT_TRUE(apply(Target(*document, kStart, kEnd)));
            ExpectRange(document->Sound(), before, tolerance, formula(format), finish);
            EXPECT_TRUE(document->IsModified());
            ASSERT_TRUE(document->Undo());
            EXPECT_EQ(BytesOf(document->Sound()), bytesBefore);
        }
    }
};

TEST_F(DirectEffectTest, VolumeScalesAndWraps) {
    for (const int percent : {0, 33, 100, 300})
        Check(
            kFormats, 1e-2, Truncated,
            [&](const EffectTarget& target) { return ApplyVolume(target, {percent}); },
            [&](const Format&) {
                return [=](unsigned, std::uint32_t, double x) { return percent * 0.01 * x; };
            });
    EXPECT_EQ(progress_.titles.back(), "ProgressVolume");
}

TEST_F(DirectEffectTest, PanLowersTheOtherSideOnly) {
    constexpr Format kStereo[] = {{2, 8}, {2, 16}};
    for (const int pan : {-1000, -250, 5, 0, 999})
        Check(
            kStereo, 1e-2, QuantizedLiterally,
            [&](const EffectTarget& target) {
                return ApplyPanpot(target, {.mode = PanMode::kPan, .pan = pan});
            },
            [&](const Format&) {
                const int p = pan / 10;
                return [=](unsigned channel, std::uint32_t, double x) {
                    const bool lowered = channel == 0 ? p > 0 : p < 0;
                    return lowered ? x * (100 - std::abs(p)) * 0.01 : x;
                };
            });
}

TEST_F(DirectEffectTest, CrossfadeMovesFromOnePositionToTheOther) {
    constexpr Format kStereo[] = {{2, 16}};
    for (const CrossfadeLaw law : {CrossfadeLaw::kLinear, CrossfadeLaw::kExponential})
        Check(
            kStereo, 2e-2, QuantizedLiterally,
            [&](const EffectTarget& target) {
                return ApplyPanpot(
                    target, {.mode = PanMode::kCrossfade, .from = -1000, .to = 1000, .law = law});
            },
            [&](const Format&) {
                std::vector<float> positions(kEnd - kStart);
                const float step = -200.0f / static_cast<float>(positions.size());
                float p = -100;
                for (float& position : positions) position = p = p - step;
                return [=](unsigned channel, std::uint32_t i, double x) {
                    const double position = positions[i];
                    const bool lowered = channel == 0 ? position > 0 : position < 0;
                    if (!lowered) return x;
                    const double v = 100 - std::abs(position);
                    return law == CrossfadeLaw::kLinear ? x * v * 0.01
                                                        : x * std::exp(v / 21.8) * 0.01;
                };
            });
}

TEST_F(DirectEffectTest, PanpotRefusesAMonoSound) {
    const auto document = MakeNoise({1, 16}, 100);
    EXPECT_FALSE(ApplyPanpot(Target(*document), {}));
    EXPECT_EQ(document->LastError(), "Can not use Panpot/Crossfade in Mono File.");
    EXPECT_FALSE(document->CanUndo());
}

TEST_F(DirectEffectTest, DynamicsBendsAtTheThresholdAndClips) {
    const DynamicsCurve curves[] = {{0.5f, 1, 0}, {0, 1, 0.5f}, {1, 1, 1}, {0.25f, 3, 0.5f}};
    for (const DynamicsCurve& curve : curves)
        Check(
            kFormats, 2e-2, QuantizedLiterally,
            [&](const EffectTarget& target) {
                return ApplyDynamics(target, {curve, curve});
            },
            [&](const Format&) {
                return [=](unsigned, std::uint32_t, double x) {
                    const double s = x < 0 ? -1 : 1;
                    const double t = curve.threshold, p = curve.below, q = curve.above;
                    const double y =
                        std::abs(x) / 32768 > t ? (p - q) * s * t * 32768 + q * x : p * x;
                    return std::abs(y) > 32767 ? s * 32767 : y;
                };
            });
}

TEST_F(DirectEffectTest, ModulatorMultipliesByBothOscillators) {
    const ModulatorParameters parameters = {{500, 20, 80}, {1333, 0, 60}};
    Check(
        kFormats, 1e-2, QuantizedLiterally,
        [&](const EffectTarget& target) { return ApplyModulator(target, parameters); },
        [&](const Format& format) {
            Channel gain(kEnd - kStart, 1.0f);
            for (const OscillatorParameters& oscillator : {parameters.first, parameters.second}) {
                float phase = 0;
                const double step = oscillator.frequency * 0.001f * 6.283184 / (format.rate / 50);
                const auto delay = static_cast<std::size_t>(oscillator.delayMs * 44.1);
                for (std::size_t i = 0; i < gain.size(); ++i) {
                    if (i >= delay)
                        gain[i] *= static_cast<float>(-0.01 * oscillator.amplitudePercent *
                                                      std::sin(double{phase}));
                    phase = static_cast<float>(phase + step);
                }
            }
            return [=](unsigned, std::uint32_t i, double x) { return gain[i] * x; };
        });
}

TEST_F(DirectEffectTest, AnEmptySoundIsRefusedByEveryEffect) {
    const auto document = MakeNoise({1, 16}, 0);
    for (const Effect& effect : Effects()) {
        const std::vector<double> values = StartValuesOf(effect);
        EXPECT_FALSE(effect.preview ? effect.preview(Target(*document), values, PreviewPlay::kNo)
                                    : effect.apply(Target(*document), values))
            << effect.name;
    }
}

}  // namespace
}  // namespace sonavel::testing
