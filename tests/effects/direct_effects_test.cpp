// The effects that work in place, against their formulas written out sample by sample.
#include <algorithm>
#include <cmath>
#include <functional>

#include "effect_fixture.h"
#include "effects/quantizer.h"
#include "effects/range_extremes.h"
#include "effects/volume.h"

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

class DirectEffectTest : public EffectTest {
  protected:
    // Runs the effect on the range in every format that `formats` names.
    void Check(std::span<const Format> formats, double tolerance, int (*finish)(double),
               const char* name, const std::vector<double>& values,
               const std::function<Formula(const Format&)>& formula) {
        for (const Format& format : formats) {
            SCOPED_TRACE(NameOf(format));
            const auto document = MakeNoise(format, kFrames);
            const std::vector<Channel> before = ChannelsOf(
                document->Sound(), finish == Truncated ? Reading::kFull : Reading::kSignedByte);
            const Bytes bytesBefore = BytesOf(document->Sound());
            ASSERT_TRUE(Apply(name, Target(*document, kStart, kEnd), values));
            ExpectRange(document->Sound(), before, tolerance, formula(format), finish);
            ASSERT_TRUE(document->Undo());
            EXPECT_EQ(BytesOf(document->Sound()), bytesBefore);
        }
    }
};

constexpr Format kStereo[] = {{2, 8}, {2, 16}};

TEST_F(DirectEffectTest, VolumeScalesAndWraps) {
    for (const int percent : {0, 33, 100, 300})
        Check(kFormats, 1e-2, Truncated, "volume", {percent / 1.0, 0}, [&](const Format&) {
            return [=](unsigned, std::uint32_t, double x) { return percent * 0.01 * x; };
        });
    EXPECT_EQ(progress_.titles.back(), "ProgressVolume");
}

TEST_F(DirectEffectTest, VolumeCanBeHeldAtFullScale) {
    for (const int percent : {99, 300})
        Check(kFormats, 1e-2, Truncated, "volume", {percent / 1.0, 1}, [&](const Format& format) {
            const double least = format.bits == 8 ? -127 : -32768;
            const double greatest = format.bits == 8 ? 128 : 32767;
            return [=](unsigned, std::uint32_t, double x) {
                return std::clamp(percent * 0.01 * x, least, greatest);
            };
        });
    // Heard as it would be applied.
    const auto document = MakeNoise({2, 8}, kFrames);
    ASSERT_TRUE(Preview("volume", Target(*document), {300, 1}));
    EXPECT_EQ(PeakOf(document->Preview()), 128);
}

TEST_F(DirectEffectTest, PanLowersTheOtherSideOnly) {
    for (const int pan : {-1000, -250, 5, 0, 999})
        Check(kStereo, 1e-2, QuantizedLiterally, "panpot", {0, pan / 1.0, 0, 0, 0},
              [&](const Format&) {
                  const int p = pan / 10;
                  return [=](unsigned channel, std::uint32_t, double x) {
                      const bool lowered = channel == 0 ? p > 0 : p < 0;
                      return lowered ? x * (100 - std::abs(p)) * 0.01 : x;
                  };
              });
}

TEST_F(DirectEffectTest, CrossfadeMovesFromOnePositionToTheOther) {
    for (const bool nonlinear : {false, true})
        Check(std::span(kStereo).last(1), 2e-2, QuantizedLiterally, "panpot",
              {1, 0, -1000, 709, nonlinear ? 1.0 : 0.0}, [&](const Format&) {
                  std::vector<float> positions(kEnd - kStart);
                  const float step = -170.0f / static_cast<float>(positions.size());
                  float p = -100;
                  for (float& position : positions) position = p = p - step;
                  return [=](unsigned channel, std::uint32_t i, double x) {
                      const double position = positions[i];
                      const bool lowered = channel == 0 ? position > 0 : position < 0;
                      if (!lowered) return x;
                      const double v = 100 - std::abs(position);
                      return nonlinear ? x * std::exp(v / 21.8) * 0.01 : x * v * 0.01;
                  };
              });
}

TEST_F(DirectEffectTest, PanpotRefusesAMonoSound) {
    const auto document = MakeNoise({1, 16}, 100);
    EXPECT_EQ(Apply("panpot", Target(*document), {0, 0, 0, 0, 0}),
              Failed("Can not use Panpot/Crossfade in Mono File."));
    EXPECT_FALSE(document->CanUndo());
}

TEST_F(DirectEffectTest, DynamicsBendsAtTheThresholdAndClips) {
    // Threshold in percent, ratios below and above it to 1, for the left and the right channel.
    const std::vector<double> settings[] = {
        {50, 1, 20, 12.5, 0.4, 2}, {0, 1, 2, 100, 1, 1}, {25, 0.3, 4, 75, 0.8, 0.5}};
    for (const std::vector<double>& values : settings)
        Check(kFormats, 2e-2, QuantizedLiterally, "dynamics", values, [&](const Format&) {
            return [=](unsigned channel, std::uint32_t, double x) {
                const double* of = values.data() + 3 * channel;
                const double s = x < 0 ? -1 : 1;
                const double t = of[0] / 100, p = 1 / of[1], q = 1 / of[2];
                const double y = std::abs(x) / 32768 > t ? (p - q) * s * t * 32768 + q * x : p * x;
                return std::abs(y) > 32767 ? s * 32767 : y;
            };
        });
}

TEST_F(DirectEffectTest, ModulatorMultipliesByBothOscillators) {
    // Of each oscillator: 1/20 Hz, ms, percent. One without frequency or amplitude is off.
    const std::vector<double> settings[] = {
        {500, 20, 80, 1333, 7, 60}, {500, 20, 80, 0, 0, 60}, {1333, 7, 0, 500, 20, 80}};
    for (const std::vector<double>& values : settings)
        Check(kFormats, 1e-2, QuantizedLiterally, "modulator", values, [&](const Format& format) {
            Channel gain(kEnd - kStart, 1.0f);
            for (const double* of : {values.data(), values.data() + 3}) {
                if (of[0] == 0 || of[2] == 0) continue;
                float phase = 0;
                const double step =
                    static_cast<float>(of[0]) * 0.001f * 6.283184 / (format.rate / 50);
                const auto delay = static_cast<std::size_t>(of[1] * 44.1);
                for (std::size_t i = 0; i < gain.size(); ++i) {
                    if (i >= delay)
                        gain[i] *= static_cast<float>(-0.01 * of[2] * std::sin(double{phase}));
                    phase = static_cast<float>(phase + step);
                }
            }
            return [=](unsigned, std::uint32_t i, double x) { return gain[i] * x; };
        });
}

TEST(VolumeTest, TellsFromWhichPercentageOnTheRangeIsTooLoud) {
    struct Case {
        SampleExtremes extremes;
        unsigned bits;
        std::optional<int> percent;
    };
    const Case cases[] = {
        {{19800, -100}, 16, 166}, {{100, -19800}, 16, 166},  {{32767, 0}, 16, 101},
        {{0, -32768}, 16, 101},   {{10922, -10922}, 16, {}}, {{10923, 0}, 16, 300},
        {{0, -10923}, 16, 300},   {{0, 0}, 16, {}},          {{128, 0}, 8, 101},
        {{64, 0}, 8, 202},        {{0, -64}, 8, 200},        {{42, -42}, 8, {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FirstTooLoudPercent(c.extremes, c.bits), c.percent)
            << c.extremes.maximum << ' ' << c.extremes.minimum;
}

TEST_F(DirectEffectTest, ExtremesAreThoseOfTheRangeOverAllChannels) {
    for (const Format& format : kFormats) {
        SCOPED_TRACE(NameOf(format));
        const auto document = MakeNoise(format, 100, 10000);
        CWave& sound = document->Sound();
        const unsigned last = format.channels - 1;
        const int most = format.bits == 8 ? 128 : 32767;
        const int least = format.bits == 8 ? -127 : -32768;
        sound.SetSample(0, 10, most);
        sound.SetSample(last, 49, least);
        EXPECT_EQ(ExtremesOf(sound, {10, 50}), (SampleExtremes{most, least}));
        const SampleExtremes between = ExtremesOf(sound, {11, 49});
        EXPECT_LT(between.maximum, most / 2);
        EXPECT_GT(between.minimum, least / 2);
        EXPECT_EQ(ExtremesOf(sound, {10, 10}), SampleExtremes{});
    }
}

}  // namespace
}  // namespace sonavel::testing
