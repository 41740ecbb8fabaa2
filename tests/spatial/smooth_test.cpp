// Smoothly placed sources, measured on what they render.
#include <cmath>
#include <numbers>

#include "document/document_fixture.h"
#include "spatial/analysis_fft.h"
#include "spatial/hrir_table.h"
#include "spatial/scene_points.h"
#include "spatial/spatializer.h"
#include "support/thread_count.h"

namespace sonavel::testing {
namespace {

constexpr double kRate = 44100;
constexpr std::size_t kAnalysed = 2048;

// Around the head on the horizon, as straight legs of two degrees.
std::vector<SourcePosition> Orbit(double radius, int degrees) {
    std::vector<SourcePosition> path;
    for (int i = 0; i <= degrees; i += 2)
        path.push_back(PositionOf(PolarPosition{1.0 * i, 0, radius}));
    return path;
}

using Samples = std::vector<double>;

Samples Part(const CWave& sound, unsigned channel, std::uint32_t start, std::size_t frames) {
    Samples samples(kAnalysed);
    for (std::uint32_t i = 0; i < frames; ++i) samples[i] = sound.GetShare(channel, start + i);
    return samples;
}

Samples TableResponse(int index) {
    Samples samples(kAnalysed);
    std::ranges::copy(HrirTable::Get().Response(index), samples.begin());
    return samples;
}

Samples PowerOf(const Samples& samples) {
    const AnalysisFft fft(kAnalysed);
    ComplexSeries series(kAnalysed);
    std::ranges::copy(samples, series.real.begin());
    fft.Transform(series);
    Samples power(kAnalysed / 2);
    for (std::size_t k = 0; k < power.size(); ++k)
        power[k] = series.real[k] * series.real[k] + series.imaginary[k] * series.imaginary[k];
    return power;
}

// In the octaves around 125, 250 ... 16000 Hz.
Samples OctavePowers(const Samples& samples) {
    const Samples power = PowerOf(samples);
    Samples octaves(8);
    for (std::size_t k = 1; k < power.size(); ++k) {
        const double octave = std::floor(std::log2(kRate * k / kAnalysed / 125) + 0.5);
        if (octave >= 0 && octave < 8) octaves[static_cast<std::size_t>(octave)] += power[k];
    }
    return octaves;
}

double Decibels(double powerRatio) {
    return 10 * std::log10(powerRatio);
}

Samples LowTones(const Samples& samples) {
    const AnalysisFft fft(kAnalysed);
    ComplexSeries series(kAnalysed);
    std::ranges::copy(samples, series.real.begin());
    fft.Transform(series);
    for (std::size_t k = 0; k < kAnalysed; ++k) {
        const double hertz = kRate * std::min(k, kAnalysed - k) / kAnalysed;
        const double weight = std::exp2(-std::pow(hertz / 1500, 2));
        series.real[k] *= weight;
        series.imaginary[k] *= weight;
    }
    fft.TransformBack(series);
    return series.real;
}

// How many microseconds later the low tones of one ear come than those of the other.
double Lag(const Samples& later, const Samples& earlier) {
    const Samples a = LowTones(later), b = LowTones(earlier);
    const auto product = [&](int lag) {
        double sum = 0;
        for (std::size_t i = 0; i < kAnalysed; ++i)
            sum += a[(i + kAnalysed + lag) % kAnalysed] * b[i];
        return sum;
    };
    int best = -50;
    for (int lag = -50; lag < 50; ++lag)
        if (product(lag) > product(best)) best = lag;
    const double before = product(best - 1), at = product(best), behind = product(best + 1);
    const double vertex = best + 0.5 * (before - behind) / (before - 2 * at + behind);
    return vertex / kRate * 1e6;
}

class SmoothTest : public DocumentTest {
  protected:
    std::unique_ptr<CSoundDoc> MakeFloats(std::uint32_t frames, std::uint32_t rate = 44100) {
        auto document = MakeDocument();
        EXPECT_TRUE(document->Sound().Create(1, 32, rate, frames));
        for (std::uint32_t i = 0; i < frames; ++i) document->Sound().SetSample(0, i, 0);
        return document;
    }
    std::unique_ptr<CSoundDoc> MakeSine(std::uint32_t frames, double hertz) {
        auto document = MakeFloats(frames);
        const auto floats = reinterpret_cast<float*>(document->Sound().MutableBytes().data());
        for (std::uint32_t i = 0; i < frames; ++i)
            floats[i] = static_cast<float>(
                0.3 * std::sin(2 * std::numbers::pi * std::fmod(hertz / kRate * i, 1.0)));
        return document;
    }
    Outcome Place(CSoundDoc& document, const Placing& placing) {
        return SpatializePlaced({document, 0, 0, "", SpatialOutcome::kApply}, placing, listener_);
    }
    // What both ears hear of a click of half full scale.
    std::unique_ptr<CSoundDoc> ClickAt(const SourcePosition& position, std::uint32_t rate = 44100) {
        auto document = MakeFloats(1600, rate);
        document->Sound().SetSample(0, 0, 16384);
        EXPECT_TRUE(Place(*document, {.points = {position}, .smoothness = Smoothness::kSmooth}));
        return document;
    }

    Listener listener_;
};

TEST_F(SmoothTest, EveryOctaveOfAnOrbitStaysWithinADecibelOfWhatWasMeasured) {
    constexpr std::uint32_t kApart = 1024;
    constexpr std::uint32_t kClicks = 180;
    const auto document = MakeFloats(kApart * kClicks);
    for (std::uint32_t i = 0; i < kClicks; ++i) document->Sound().SetSample(0, i * kApart, 16384);
    ASSERT_TRUE(Place(*document, {.kind = PlacingKind::kPath,
                                  .points = Orbit(0.6, 360),
                                  .smoothness = Smoothness::kSmooth}));
    std::vector<Samples> measured;
    for (int i = 0; i < 36; ++i) measured.push_back(OctavePowers(TableResponse(132 + i)));
    for (std::uint32_t click = 0; click < kClicks; ++click)
        for (const unsigned ear : {0u, 1u}) {
            const double azimuth = 360.0 * click / kClicks;
            const double step = (ear == 0 ? azimuth : 360 - azimuth) / 10;
            const int entry = static_cast<int>(step);
            const double share = step - entry;
            const Samples octaves =
                OctavePowers(Part(document->Sound(), ear, click * kApart, kApart));
            for (std::size_t k = 0; k < octaves.size(); ++k) {
                const double wanted =
                    (1 - share) * measured[entry % 36][k] + share * measured[(entry + 1) % 36][k];
                ASSERT_NEAR(Decibels(4 * octaves[k] / wanted), 0, 1)
                    << "azimuth " << azimuth << ", ear " << ear << ", octave " << k;
            }
        }
}

class SmoothOrbitTest : public SmoothTest, public ::testing::WithParamInterface<double> {};

INSTANTIATE_TEST_SUITE_P(SecondsOfATurn, SmoothOrbitTest, ::testing::Values(10.0, 2.2));

TEST_P(SmoothOrbitTest, ASineHasNoSteps) {
    const auto frames = static_cast<std::uint32_t>(GetParam() * 130 / 360 * kRate);
    const auto document = MakeSine(frames, 440);
    ASSERT_TRUE(Place(
        *document,
        {.kind = PlacingKind::kPath, .points = Orbit(1, 130), .smoothness = Smoothness::kSmooth}));
    double greatest = -200;
    for (std::uint32_t start = 2048; start + kAnalysed <= frames; start += 512)
        for (const unsigned ear : {0u, 1u}) {
            Samples samples = Part(document->Sound(), ear, start, kAnalysed);
            // The four-term Blackman-Harris window, whose side lobes lie below -92 dB.
            for (std::size_t i = 0; i < kAnalysed; ++i) {
                const double turn = 2 * std::numbers::pi * i / kAnalysed;
                samples[i] *= 0.35875 - 0.48829 * std::cos(turn) + 0.14128 * std::cos(2 * turn) -
                              0.01168 * std::cos(3 * turn);
            }
            const Samples power = PowerOf(samples);
            const double line = *std::max_element(power.begin(), power.end());
            for (std::size_t k = 1; k < power.size(); ++k) {
                if (std::abs(kRate * k / kAnalysed - 440) < 120) continue;
                greatest = std::max(greatest, Decibels(power[k] / line));
            }
        }
    EXPECT_LT(greatest, -80);
}

TEST_F(SmoothTest, TimeAndLevelBetweenTheEarsAreThoseOfTheMeasuredResponses) {
    for (int azimuth = 0; azimuth < 360; azimuth += 30) {
        const auto heard = ClickAt(PositionOf(PolarPosition{azimuth * 1.0, 0, 0.6}));
        const Samples left = Part(heard->Sound(), 0, 0, 1600);
        const Samples right = Part(heard->Sound(), 1, 0, 1600);
        const Samples leftTable = TableResponse(132 + azimuth / 10);
        const Samples rightTable = TableResponse(132 + (36 - azimuth / 10) % 36);
        EXPECT_NEAR(Lag(left, right), Lag(leftTable, rightTable), 20) << azimuth;
        // And the way to each ear as long.
        EXPECT_NEAR(Lag(left, leftTable), 0, 30) << azimuth;
        const auto energy = [](const Samples& samples) {
            double sum = 0;
            for (const double sample : samples) sum += sample * sample;
            return sum;
        };
        EXPECT_NEAR(Decibels(energy(left) / energy(right)),
                    Decibels(energy(leftTable) / energy(rightTable)), 0.5)
            << azimuth;
    }
}

TEST_F(SmoothTest, TheResponsesSoundAlikeAtEveryRate) {
    const SourcePosition position = PositionOf(PolarPosition{250, 10, 0.6});
    double arrival44 = 0;
    for (const std::uint32_t rate : {44100u, 48000u, 22050u, 96000u}) {
        const auto heard = ClickAt(position, rate);
        double energy = 0, moment = 0;
        for (std::uint32_t i = 0; i < 1600; ++i) {
            const double share = heard->Sound().GetShare(0, i);
            energy += share * share;
            moment += share * share * i / rate;
        }
        const double arrival = moment / energy;
        if (rate == 44100) arrival44 = arrival;
        EXPECT_NEAR(arrival, arrival44, 1e-4) << rate;
    }
}

TEST_F(SmoothTest, BelowTheLowestRingTheSoundComesFromThereAndNotFromOverhead) {
    const auto overhead = ClickAt({0, 0, 1});
    const auto below = ClickAt(PositionOf(PolarPosition{270, -60, 0.6}));
    const auto ring = ClickAt(PositionOf(PolarPosition{270, -40, 0.6}));
    const auto lag = [](const CSoundDoc& document) {
        return Lag(Part(document.Sound(), 1, 0, 1600), Part(document.Sound(), 0, 0, 1600));
    };
    EXPECT_NEAR(lag(*overhead), 0, 5);
    EXPECT_GT(lag(*below), 150);
    EXPECT_LT(lag(*below), lag(*ring));
}

TEST_F(SmoothTest, DopplerBendsThePitchAsTheSpeedOfSoundHasIt) {
    struct Case {
        double metresPerUnit, from, to, wanted;
    };
    // In two seconds from there to there, straight ahead: 34.3 m/s towards the head and away.
    const Case cases[] = {
        {1, 70.6, 2, 1000 / 0.9}, {1, 2, 70.6, 1000 / 1.1}, {0.5, 139.2, 2, 1000 / 0.9}};
    for (const Case& c : cases) {
        const auto document = MakeSine(88200, 1000);
        ASSERT_TRUE(Place(*document, {.kind = PlacingKind::kPath,
                                      .points = {{0, static_cast<float>(c.from), 0},
                                                 {0, static_cast<float>(c.to), 0}},
                                      .smoothness = Smoothness::kSmooth,
                                      .doppler = Doppler::kOn,
                                      .metresPerUnit = c.metresPerUnit}));
        const auto crossing = [&](std::uint32_t from, int which) {
            double before = document->Sound().GetShare(0, from);
            for (std::uint32_t i = from + 1; i < 88200; ++i) {
                const double now = document->Sound().GetShare(0, i);
                if (before < 0 && now >= 0 && which-- == 0) return i - now / (now - before);
                before = now;
            }
            return -1.0;
        };
        const double frames = crossing(4410, 1000) - crossing(4410, 0);
        EXPECT_NEAR(1000 * kRate / frames, c.wanted, 0.01 * c.wanted) << c.from;
    }
}

TEST_F(SmoothTest, DopplerNeedsSmoothResponses) {
    const auto document = MakeSine(1000, 1000);
    EXPECT_EQ(Place(*document, {.kind = PlacingKind::kPath,
                                .points = {{0, 1, 0}, {1, 0, 0}},
                                .doppler = Doppler::kOn}),
              Failed("Doppler needs smooth responses."));
    EXPECT_FALSE(document->GetModified());
}

TEST_F(SmoothTest, RatesOfNoSoundAreRefused) {
    for (const std::uint32_t rate : {1u, 3999u, 384001u, 0x7FFFFFFFu}) {
        const auto document = MakeFloats(100, rate);
        EXPECT_TRUE(Place(*document, {.points = {{1, 0, 0}}, .smoothness = Smoothness::kSmooth})
                        .IsFailed());
        EXPECT_FALSE(document->GetModified());
    }
}

TEST_F(SmoothTest, ThreadsLeaveTheSameSound) {
    const Placing placing{.kind = PlacingKind::kPath,
                          .points = {{-3, 0.2f, 0}, {0, 0, 0}, {4, 0, -0.5f}},
                          .curve = PathCurve::kSpline,
                          .smoothness = Smoothness::kSmooth,
                          .doppler = Doppler::kOn};
    Bytes alone;
    for (const unsigned threads : {1u, 5u}) {
        const ThreadCount count(threads);
        const auto document = MakeNoise({1, 8, 8000}, 20001, 100);
        ASSERT_TRUE(Place(*document, placing));
        if (threads == 1) alone = BytesOf(document->Sound());
        EXPECT_TRUE(BytesOf(document->Sound()) == alone);
        EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(2, 16, 8000));
    }
}

}  // namespace
}  // namespace sonavel::testing
