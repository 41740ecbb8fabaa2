#include "effects/noise_reduction.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "effects/effect_table.h"
#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// Windows to either side over which a bin's power is averaged.
constexpr int kTimeReach = 4;
// Windows that begin before a piece and reach into it.
constexpr int kOverlaps = static_cast<int>(kNoiseWindow / kNoiseHop) - 1;
// The windows of a piece overlap four times, each time as the square of the window's root.
constexpr float kOverlapGain = 2;

// How far above the noise, in dB, a bin begins to be spared, and from where on it stays as it is.
constexpr float kSparedFrom = 3;
constexpr float kSparedWhollyFrom = 9;

struct ReductionParameters {
    float decibels;
    int smoothing;
    bool residue;
};

// The mean over a bin's neighbours.
void SmoothBins(NoiseBins& bins, int reach) {
    const NoiseBins before = bins;
    const int count = static_cast<int>(kNoiseBins);
    for (int bin = 0; bin < count; ++bin) {
        const int first = std::max(bin - reach, 0), end = std::min(bin + reach + 1, count);
        float sum = 0;
        for (int i = first; i < end; ++i) sum += before[static_cast<std::size_t>(i)];
        bins[static_cast<std::size_t>(bin)] = sum / static_cast<float>(end - first);
    }
}

// The factor of a bin whose power is so many times that of the noise.
float GainAt(float ratio, float reduction) {
    constexpr float kLeastRatio = 1e-9f;
    const float above = 10 * std::log10(std::max(ratio, kLeastRatio));
    const float lowered =
        std::clamp((kSparedWhollyFrom - above) / (kSparedWhollyFrom - kSparedFrom), 0.0f, 1.0f);
    return std::pow(10.0f, -reduction * lowered / 20);
}

// One channel of a piece: its windows with those around them, which the averages need.
class NoisePiece {
  public:
    NoisePiece(const ReductionParameters& parameters, const NoiseBins& noise)
        : parameters_(parameters), noise_(noise) {}

    // `first` is a multiple of the hop. Replaces the shares by what is left of them.
    void Reduce(const RangeWork& work, unsigned channel, std::uint32_t first,
                std::span<float> shares) {
        const auto hops = static_cast<int>((shares.size() + kNoiseHop - 1) / kNoiseHop);
        windows_ = hops + kOverlaps;
        const std::int64_t start =
            std::int64_t{first} - std::int64_t{kOverlaps + kTimeReach} * kNoiseHop;
        Analyse(work, channel, start);
        std::vector<float> sum(static_cast<std::size_t>(hops + 2 * kOverlaps) * kNoiseHop);
        for (int window = 0; window < windows_; ++window)
            AddBack(window, sum.data() + static_cast<std::size_t>(window) * kNoiseHop);
        std::copy_n(sum.begin() + std::ptrdiff_t{kOverlaps} * kNoiseHop, shares.size(),
                    shares.begin());
    }

  private:
    void Analyse(const RangeWork& work, unsigned channel, std::int64_t start) {
        const auto count = static_cast<std::size_t>(windows_) + 2 * kTimeReach;
        std::vector<float> frames((count - 1) * kNoiseHop + kNoiseWindow);
        ReadAround(work, channel, start, frames);
        spectra_.resize(count);
        powers_.resize(count);
        for (std::size_t window = 0; window < count; ++window) {
            TransformWindow(
                std::span<const float, kFftSize>(frames.data() + window * kNoiseHop, kFftSize),
                spectra_[window]);
            PowerOf(spectra_[window], powers_[window]);
        }
    }

    // Of the window's bins, by their power on average over time and frequency.
    NoiseBins Gains(int window) const {
        NoiseBins gains{};
        for (int i = window; i <= window + 2 * kTimeReach; ++i)
            for (std::size_t bin = 0; bin < kNoiseBins; ++bin)
                gains[bin] += powers_[static_cast<std::size_t>(i)][bin];
        SmoothBins(gains, parameters_.smoothing);
        constexpr float kWindows = 2 * kTimeReach + 1;
        constexpr float kLeastNoise = 1e-30f;
        for (std::size_t bin = 0; bin < kNoiseBins; ++bin)
            gains[bin] = GainAt(gains[bin] / kWindows / std::max(noise_[bin], kLeastNoise),
                                parameters_.decibels);
        return gains;
    }

    // Real and imaginary parts change places before and after a transform forward, which makes it
    // the one back.
    void AddBack(int window, float* sum) {
        const NoiseBins gains = Gains(window);
        const Spectrum& from = spectra_[static_cast<std::size_t>(window) + kTimeReach];
        Spectrum scaled, back;
        for (std::size_t bin = 0; bin < kFftSize; ++bin) {
            const float gain = gains[std::min(bin, kFftSize - bin)];
            scaled.real[bin] = from.imaginary[bin] * gain;
            scaled.imaginary[bin] = from.real[bin] * gain;
        }
        Fft(scaled, back);
        const auto& shape = NoiseWindow();
        for (std::size_t i = 0; i < kFftSize; ++i)
            sum[i] += back.imaginary[i] * shape[i] / (kFftSize * kOverlapGain);
    }

    const ReductionParameters& parameters_;
    const NoiseBins& noise_;
    int windows_ = 0;
    std::vector<Spectrum> spectra_;
    std::vector<NoiseBins> powers_;
};

void ReduceChannel(const RangeWork& work, const RangePiece& piece, unsigned channel,
                   const ReductionParameters& parameters, const NoiseBins& noise) {
    const unsigned channels = work.Channels();
    std::vector<float> shares(piece.shares.size() / channels);
    NoisePiece(parameters, noise).Reduce(work, channel, piece.first, shares);
    for (std::size_t i = 0; i < shares.size(); ++i) {
        float& share = piece.shares[i * channels + channel];
        share = parameters.residue ? share - shares[i] : shares[i];
    }
}

}  // namespace

Outcome ReduceNoise(const RangeWork& work, RangeSink& sink) {
    const std::optional<NoiseProfile>& learned = work.state.noise;
    if (!learned) return Failed("No noise has been learned yet.");
    if (learned->samplesPerSecond != work.Rate())
        return Failed("The noise was learned at another sample rate.");
    const ReductionParameters parameters{static_cast<float>(work.values[0]),
                                         static_cast<int>(std::lround(work.values[1])),
                                         work.values[2] != 0};
    // Smoothed as the powers that it is compared to.
    std::vector<NoiseBins> noise = learned->channels;
    for (NoiseBins& bins : noise) SmoothBins(bins, parameters.smoothing);
    return ChangePieces(work, sink, Cancel::kHeeded, [&](const RangePiece& piece) {
        for (unsigned channel = 0; channel < work.Channels(); ++channel)
            ReduceChannel(work, piece, channel, parameters,
                          noise[std::min<std::size_t>(channel, noise.size() - 1)]);
    });
}

}  // namespace sonavel
