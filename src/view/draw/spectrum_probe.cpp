#include "view/draw/spectrum_probe.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "sound/sample_io.h"
#include "sound/sample_types.h"

namespace sonavel {

std::vector<float> SpectrumProbe::PowerAt(const Sound& sound, unsigned channel,
                                          std::int64_t frame) {
    const SpectrogramColumns column = {
        .firstFrame = static_cast<double>(frame), .framesPerColumn = 1, .columns = 1};
    const SpectrogramFrames frames = ReadSpectrogramFrames(sound, column, look_);
    std::vector<float> shares(look_.windowFrames), power(spectrum_->Bins());
    ReadChannel(frames.sound, channel, 0, shares, EightBitReading::kFull);
    const auto greatest = static_cast<float>(LimitsOfSamples(sound.GetBits()).greatest);
    for (float& share : shares) share /= greatest;
    spectrum_->Compute(shares, power);
    return power;
}

std::optional<double> SpectrumProbe::Decibels(const Sound& sound, unsigned channel,
                                              std::int64_t frame, const Band& band,
                                              const SpectrogramLook& look) try {
    constexpr double kLeastPower = 1e-20;
    if (!spectrum_ || look != look_)
        spectrum_ = std::make_unique<PowerSpectrum>(look.windowFrames, look.shape);
    look_ = look;
    const std::vector<float> power = PowerAt(sound, channel, frame);
    const double highest = std::max(sound.GetSamplesPerSecond(), 1U) / 2.0;
    const auto binOf = [&](double frequency) {
        const double last = static_cast<double>(power.size()) - 1;
        return std::lround(std::clamp(frequency / highest, 0.0, 1.0) * last);
    };
    const double loudest =
        *std::max_element(power.begin() + binOf(band.low), power.begin() + binOf(band.high) + 1);
    if (!(loudest > kLeastPower)) return std::nullopt;
    return 10 * std::log10(loudest);
} catch (const std::bad_alloc&) {
    spectrum_.reset();
    return std::nullopt;
}

}  // namespace sonavel
