#include "spatial/crosstalk_filter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

#include "spatial/analysis_fft.h"

namespace sonavel {
namespace {

using Complex = std::complex<double>;

constexpr double kLeastSeconds = 0.06;
// The inverse is computed finer than it is kept, so that its ends do not meet.
constexpr int kFiner = 4;
// What a frequency's power is raised by before it is divided by: shares of its own mean, and of
// that of all of them.
constexpr double kOwnShare = 0.003;
constexpr double kOverallShare = 0.0003;
// But no more than this share of the weaker one of what both ears hear alike and what they hear
// unlike, so that it, too, is heard: of loudspeakers close together low tones have little of it.
constexpr double kWeakerShare = 0.25;
// And no less than this share of that of all, lest the loudspeakers play little else.
constexpr double kLeastShare = 0.00001;
// Where the ears are told apart.
constexpr double kSeparatedFrom = 200;  // Hz
constexpr double kSeparatedTo = 8000;

Complex SpectrumAt(std::span<const float> taps, double delay, double frequency) {
    Complex sum = 0;
    const Complex step = std::polar(1.0, -2 * std::numbers::pi * frequency);
    Complex turn = std::polar(1.0, -2 * std::numbers::pi * frequency * delay);
    for (const float tap : taps) {
        sum += static_cast<double>(tap) * turn;
        turn *= step;
    }
    return sum;
}

double PowerOf(const EarMatrix& m) {
    return (std::norm(m[0][0]) + std::norm(m[0][1]) + std::norm(m[1][0]) + std::norm(m[1][1])) / 2;
}

EarMatrix Product(const EarMatrix& a, const EarMatrix& b) {
    EarMatrix product;
    for (int i = 0; i < 2; ++i)
        for (int k = 0; k < 2; ++k) product[i][k] = a[i][0] * b[0][k] + a[i][1] * b[1][k];
    return product;
}

bool IsSeparated(double hertz) {
    return hertz >= kSeparatedFrom && hertz <= kSeparatedTo;
}

// The lesser of the two powers with which the matrix can pass a pair on.
double WeakerPowerOf(const EarMatrix& m) {
    const double determinant = std::norm(m[0][0] * m[1][1] - m[0][1] * m[1][0]);
    const double mean = PowerOf(m);
    return mean - std::sqrt(std::max(0.0, mean * mean - determinant));
}

EarMatrix Adjoint(const EarMatrix& m) {
    return {{{std::conj(m[0][0]), std::conj(m[1][0])}, {std::conj(m[0][1]), std::conj(m[1][1])}}};
}

// By how much the powers are raised.
struct Regularisation {
    double overall;  // the mean power
    double weakest;  // the weaker power at the lowest frequency where the ears are told apart

    double Of(const EarMatrix& h, double hertz) const {
        const double raised = kOwnShare * PowerOf(h) + kOverallShare * overall;
        if (hertz > kSeparatedTo) return raised;
        // Below, as there: that asks for less and less.
        const double weaker = hertz < kSeparatedFrom ? weakest : WeakerPowerOf(h);
        return std::min(raised, kWeakerShare * weaker + kLeastShare * overall);
    }
};

// (h* h + b)^-1 h*.
EarMatrix RegularisedInverse(const EarMatrix& h, double b) {
    EarMatrix gram = Product(Adjoint(h), h);
    gram[0][0] += b;
    gram[1][1] += b;
    const Complex determinant = gram[0][0] * gram[1][1] - gram[0][1] * gram[1][0];
    const EarMatrix inverse = {{{gram[1][1] / determinant, -gram[0][1] / determinant},
                                {-gram[1][0] / determinant, gram[0][0] / determinant}}};
    return Product(inverse, Adjoint(h));
}

// Towards both ends of the kept taps.
double Fade(int tap, int taps) {
    const int faded = taps / 16;
    const int toEnd = std::min(tap, taps - 1 - tap);
    if (toEnd >= faded) return 1;
    return 0.5 - 0.5 * std::cos(std::numbers::pi * (toEnd + 0.5) / faded);
}

int PartsFor(double rate) {
    const auto least = static_cast<unsigned>(std::ceil(kLeastSeconds * rate / kCrosstalkBlock));
    return static_cast<int>(std::bit_ceil(std::max(least, 2u)));
}

// The impulse response to a spectrum of which each bin is the `speaker`, `channel` element.
ComplexSeries ResponseTo(const std::vector<EarMatrix>& matrices, int speaker, int channel,
                         double loudness, const AnalysisFft& fft) {
    const std::size_t size = fft.Size();
    ComplexSeries series(size);
    for (std::size_t bin = 0; bin < size; ++bin) {
        const bool mirrored = bin > size / 2;
        const Complex value = matrices[mirrored ? size - bin : bin][speaker][channel];
        series.real[bin] = loudness * value.real();
        series.imaginary[bin] = loudness * (mirrored ? -value.imag() : value.imag());
    }
    fft.TransformBack(series);
    return series;
}

}  // namespace

CrosstalkFilter::CrosstalkFilter(ResponseBank& bank, double angle)
    : rate_(bank.Responses().Rate()), parts_(PartsFor(rate_)) {
    std::size_t nearby = 0;
    std::array<SphereBlend, 2> speakers;
    std::array<BankBlend, 2> heard;
    for (const int speaker : {0, 1}) {
        const Vector3 direction = VectorOf(speaker == 0 ? -angle : angle, 0);
        speakers[speaker] = bank.Responses().Mesh().Around(direction, nearby);
        heard[speaker] = bank.At(speakers[speaker]);
    }
    for (const int speaker : {0, 1})
        for (const int ear : {0, 1}) {
            std::vector<float>& taps = speakerTaps_[ear][speaker];
            taps.resize(bank.Responses().Taps());
            heard[speaker].Sum(kBothEars[ear], 1, taps);
            speakerDelays_[ear][speaker] =
                bank.Responses().DelayAt(speakers[speaker], kBothEars[ear]);
        }
    // Only the differences count: the way to the listener delays nothing.
    const double least = std::min(
        {speakerDelays_[0][0], speakerDelays_[0][1], speakerDelays_[1][0], speakerDelays_[1][1]});
    for (auto& delays : speakerDelays_)
        for (double& delay : delays) delay -= least;
    Invert();
}

EarMatrix CrosstalkFilter::SpeakersToEars(double frequency) const {
    EarMatrix matrix;
    for (int ear = 0; ear < 2; ++ear)
        for (int speaker = 0; speaker < 2; ++speaker)
            matrix[ear][speaker] =
                SpectrumAt(speakerTaps_[ear][speaker], speakerDelays_[ear][speaker], frequency);
    return matrix;
}

EarMatrix CrosstalkFilter::ChannelsToEars(double frequency) const {
    EarMatrix filters;
    const int middle = -Taps() / 2;
    for (int speaker = 0; speaker < 2; ++speaker)
        for (int channel = 0; channel < 2; ++channel) {
            const std::vector<float> taps(taps_[speaker][channel].begin(),
                                          taps_[speaker][channel].end());
            filters[speaker][channel] = SpectrumAt(taps, middle, frequency);
        }
    return Product(SpeakersToEars(frequency), filters);
}

void CrosstalkFilter::Invert() {
    const AnalysisFft fft(static_cast<std::size_t>(kFiner * Taps()));
    std::vector<EarMatrix> matrices;
    double overall = 0;
    int counted = 0;
    for (std::size_t bin = 0; bin <= fft.Size() / 2; ++bin) {
        const double frequency = static_cast<double>(bin) / static_cast<double>(fft.Size());
        matrices.push_back(SpeakersToEars(frequency));
        if (!IsSeparated(frequency * rate_)) continue;
        overall += PowerOf(matrices.back());
        ++counted;
    }
    overall /= std::max(counted, 1);
    const Regularisation raise{overall, WeakerPowerOf(SpeakersToEars(kSeparatedFrom / rate_))};
    for (std::size_t bin = 0; bin < matrices.size(); ++bin) {
        const double hertz = rate_ * static_cast<double>(bin) / static_cast<double>(fft.Size());
        matrices[bin] = RegularisedInverse(matrices[bin], raise.Of(matrices[bin], hertz));
    }
    for (int speaker = 0; speaker < 2; ++speaker)
        for (int channel = 0; channel < 2; ++channel) {
            // As loud in the end as the loudspeakers without a filter.
            const ComplexSeries response =
                ResponseTo(matrices, speaker, channel, std::sqrt(overall), fft);
            std::vector<double>& taps = taps_[speaker][channel];
            for (int tap = 0; tap < Taps(); ++tap)
                taps.push_back(
                    Fade(tap, Taps()) *
                    response.real[(static_cast<std::size_t>(tap) + fft.Size() - Taps() / 2) %
                                  fft.Size()]);
        }
    LoadSpectra();
}

// With z = left + i right, what the loudspeakers play is a z + b z*, so that one transform there
// and one back serve both channels and all four filters.
void CrosstalkFilter::LoadSpectra() {
    const auto& [toLeft, toRight] = taps_;
    for (std::size_t part = 0; part < parts_.size(); ++part) {
        Spectrum straight{};
        Spectrum mirrored{};
        for (int i = 0; i < kCrosstalkBlock; ++i) {
            const std::size_t tap = part * kCrosstalkBlock + i;
            straight.real[i] = static_cast<float>((toLeft[0][tap] + toRight[1][tap]) / 2);
            straight.imaginary[i] = static_cast<float>((toRight[0][tap] - toLeft[1][tap]) / 2);
            mirrored.real[i] = static_cast<float>((toLeft[0][tap] - toRight[1][tap]) / 2);
            mirrored.imaginary[i] = static_cast<float>((toRight[0][tap] + toLeft[1][tap]) / 2);
        }
        Fft(straight, parts_[part].straight);
        Fft(mirrored, parts_[part].mirrored);
    }
}

// Adds with real and imaginary parts exchanged, which makes the next transform the inverse one.
void CrosstalkFilter::Accumulate(const Part& part, const Spectrum& z, Spectrum& sum) {
    for (int k = 0; k < kFftSize; ++k) {
        const int m = (kFftSize - k) % kFftSize;
        const float zr = z.real[k], zi = z.imaginary[k], mr = z.real[m], mi = -z.imaginary[m];
        const float ar = part.straight.real[k], ai = part.straight.imaginary[k];
        const float br = part.mirrored.real[k], bi = part.mirrored.imaginary[k];
        sum.imaginary[k] += (zr * ar - zi * ai + mr * br - mi * bi) / kFftSize;
        sum.real[k] += (zr * ai + zi * ar + mr * bi + mi * br) / kFftSize;
    }
}

void CrosstalkFilter::Process(std::span<const float> input,
                              std::span<float, kFftSize> output) const {
    Spectrum x, z;
    Spectrum sum{};
    for (std::size_t part = 0; part < parts_.size(); ++part) {
        // The later taps of a filter meet the earlier frames.
        const float* from = input.data() + (parts_.size() - 1 - part) * kFftSize;
        for (int i = 0; i < kFftSize; ++i) {
            x.real[i] = from[2 * i];
            x.imaginary[i] = from[2 * i + 1];
        }
        Fft(x, z);
        Accumulate(parts_[part], z, sum);
    }
    Fft(sum, z);
    for (int j = 0; j < kCrosstalkBlock; ++j) {
        output[2 * j] = z.imaginary[kCrosstalkBlock + j];
        output[2 * j + 1] = z.real[kCrosstalkBlock + j];
    }
}

}  // namespace sonavel
