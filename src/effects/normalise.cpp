#include "effects/normalise.h"

#include <algorithm>
#include <cmath>

#include "sound/sample_scan.h"
#include "sound/sound_loudness.h"

namespace sonavel {
namespace {

using Gains = std::array<double, 2>;

constexpr int kHalfWay = 50;  // percent, where measuring ends and changing begins
constexpr const char* kSilent = "The range is silent: there is nothing to normalise.";
constexpr const char* kNoLoudness =
    "The range has no loudness: it is shorter than 0.4 seconds, or a pause.";

NormaliseParameters ParametersOf(std::span<const double> values) {
    return {values[0] != 0 ? NormaliseTo::kLoudness : NormaliseTo::kPeak, values[1], values[2],
            values[3] != 0 ? NormaliseChannels::kEach : NormaliseChannels::kTogether};
}

Result<Gains> GainsToPeak(const RangeWork& work, const NormaliseParameters& parameters) {
    auto peaks = PeaksOfChannels(work.sound, work.range);
    const double most = std::max(peaks[0], peaks[1]);
    if (most == 0) return Failed(kSilent);
    if (parameters.channels == NormaliseChannels::kTogether) peaks.fill(most);
    const double wanted = ShareOfDecibels(parameters.peakDecibels);
    Gains gains{1, 1};
    // A silent channel beside another stays silent.
    for (std::size_t i = 0; i < gains.size(); ++i)
        if (peaks[i] > 0) gains[i] = wanted / peaks[i];
    return gains;
}

Result<Gains> GainsToLoudness(const RangeWork& work, const NormaliseParameters& parameters) {
    const auto measured = MeasureLoudness(work.sound, work.range, work.progress, kHalfWay);
    if (!measured) return measured.Ended();
    if (!measured->integrated) return Failed(kNoLoudness);
    const double wanted = ShareOfDecibels(parameters.loudness - *measured->integrated);
    const double highest = ShareOfDecibels(parameters.peakDecibels) / measured->truePeak;
    const double gain = std::min(wanted, highest);
    return Gains{gain, gain};
}

void Scale(std::span<float> shares, const std::array<float, 2>& factors, bool alike) {
    if (alike) {
        for (float& share : shares) share *= factors[0];
        return;
    }
    for (std::size_t i = 0; i + 1 < shares.size(); i += 2) {
        shares[i] *= factors[0];
        shares[i + 1] *= factors[1];
    }
}

}  // namespace

std::array<double, 2> PeaksOfChannels(const Sound& sound, FrameRange range) {
    const std::size_t align = sound.GetBlockAlign();
    const FrameRange inside = range.ClampedTo(sound.GetFrameCount());
    if (inside.Frames() == 0) return {};
    const auto bytes = sound.Bytes().subspan(inside.start * align, inside.Frames() * align);
    return VisitSampleType(sound.GetBits(), [&](auto type) {
        using Type = decltype(type);
        const auto found = ScanStored(SamplesOf<Type>(bytes), sound.GetChannels());
        std::array<double, 2> peaks{};
        for (std::size_t channel = 0; channel < peaks.size(); ++channel) {
            const SampleExtremes levels = LevelsOf<Type>(found, channel);
            const double most = std::max(std::abs(static_cast<double>(levels.maximum)),
                                         std::abs(static_cast<double>(levels.minimum)));
            peaks[channel] = most * 2 / static_cast<double>(Type::kFullScale);
        }
        return peaks;
    });
}

Result<Gains> NormaliseGains(const RangeWork& work, const NormaliseParameters& parameters) {
    return parameters.to == NormaliseTo::kPeak ? GainsToPeak(work, parameters)
                                               : GainsToLoudness(work, parameters);
}

Outcome Normalise(const RangeWork& work, RangeSink& sink) {
    const auto gains = NormaliseGains(work, ParametersOf(work.values));
    if (!gains) return gains.Ended();
    const std::array<float, 2> factors = {static_cast<float>((*gains)[0]),
                                          static_cast<float>((*gains)[1])};
    const bool alike = work.Channels() == 1 || factors[0] == factors[1];
    return ChangePieces(work, sink, Cancel::kIgnored,
                        [&](const RangePiece& piece) { Scale(piece.shares, factors, alike); },
                        {kHalfWay, 100});
}

}  // namespace sonavel
