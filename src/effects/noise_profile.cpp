#include "effects/noise_profile.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "sound/share_io.h"

namespace sonavel {
namespace {

// Windows between two looks at the progress.
constexpr std::uint32_t kWindowsAtOnce = 64;

void AddPowers(const RangeWork& work, unsigned channel, std::uint32_t first,
               std::array<double, kNoiseBins>& sums) {
    std::array<float, kFftSize> frames;
    Spectrum spectrum;
    NoiseBins power;
    ReadAround(work, channel, first, frames);
    TransformWindow(frames, spectrum);
    PowerOf(spectrum, power);
    for (std::size_t bin = 0; bin < kNoiseBins; ++bin) sums[bin] += static_cast<double>(power[bin]);
}

}  // namespace

const std::array<float, kFftSize>& NoiseWindow() {
    static const auto kWindow = [] {
        std::array<float, kFftSize> window;
        for (std::size_t i = 0; i < window.size(); ++i)
            window[i] =
                static_cast<float>(std::sin(std::numbers::pi * static_cast<double>(i) / kFftSize));
        return window;
    }();
    return kWindow;
}

void TransformWindow(std::span<const float, kFftSize> frames, Spectrum& spectrum) {
    const auto& window = NoiseWindow();
    Spectrum input;
    for (std::size_t i = 0; i < frames.size(); ++i) input.real[i] = frames[i] * window[i];
    input.imaginary.fill(0);
    Fft(input, spectrum);
}

void PowerOf(const Spectrum& spectrum, NoiseBins& power) {
    for (std::size_t bin = 0; bin < kNoiseBins; ++bin)
        power[bin] = spectrum.real[bin] * spectrum.real[bin] +
                     spectrum.imaginary[bin] * spectrum.imaginary[bin];
}

void ReadAround(const RangeWork& work, unsigned channel, std::int64_t first,
                std::span<float> shares) {
    const auto size = static_cast<std::int64_t>(shares.size());
    const std::int64_t before = std::clamp<std::int64_t>(-first, 0, size);
    const std::int64_t inside = std::clamp<std::int64_t>(work.Frames() - first, before, size);
    std::ranges::fill(shares.first(static_cast<std::size_t>(before)), 0.0f);
    std::ranges::fill(shares.subspan(static_cast<std::size_t>(inside)), 0.0f);
    const auto heard =
        shares.subspan(static_cast<std::size_t>(before), static_cast<std::size_t>(inside - before));
    if (heard.empty()) return;
    ReadChannelShares(work.sound, channel,
                      work.range.start + static_cast<std::uint32_t>(first + before), heard);
}

Result<NoiseProfile> LearnNoise(const RangeWork& work) {
    if (work.Frames() < kNoiseWindow) return Failed("Noise is learned from at least 1024 frames.");
    const std::uint32_t windows = (work.Frames() - kNoiseWindow) / kNoiseHop + 1;
    NoiseProfile profile{work.Rate(), std::vector<NoiseBins>(work.Channels())};
    for (unsigned channel = 0; channel < work.Channels(); ++channel) {
        std::array<double, kNoiseBins> sums{};
        for (std::uint32_t window = 0; window < windows; ++window) {
            work.progress.SetPosition(static_cast<int>(std::uint64_t{window} * 100 / windows));
            if (window % kWindowsAtOnce == 0 && work.progress.Poll()) return Cancelled();
            AddPowers(work, channel, window * kNoiseHop, sums);
        }
        std::ranges::transform(sums, profile.channels[channel].begin(),
                               [=](double sum) { return static_cast<float>(sum / windows); });
    }
    return profile;
}

}  // namespace sonavel
