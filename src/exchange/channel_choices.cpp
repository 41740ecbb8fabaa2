#include "exchange/channel_choices.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace sonavel {
namespace {

constexpr float kHalfPower = 0.70710678f;

struct Shares {
    float left;
    float right;
};

// Ambisonic channels are no speakers: the first holds all directions and the third left less right.
Shares SharesOf(Speaker speaker) {
    using enum Speaker;
    switch (speaker) {
        case kFrontLeft:
        case kFrontLeftOfCentre:
            return {1, 0};
        case kFrontRight:
        case kFrontRightOfCentre:
            return {0, 1};
        case kRearLeft:
        case kSideLeft:
        case kTopFrontLeft:
        case kTopRearLeft:
            return {kHalfPower, 0};
        case kRearRight:
        case kSideRight:
        case kTopFrontRight:
        case kTopRearRight:
            return {0, kHalfPower};
        case kLowFrequency:
        case kAmbisonicX:
        case kAmbisonicZ:
            return {0, 0};
        case kAmbisonicY:
            return {0.5f, -0.5f};
        default:
            return {kHalfPower, kHalfPower};
    }
}

Speaker SpeakerOf(std::span<const Speaker> speakers, unsigned channel) {
    return channel < speakers.size() ? speakers[channel] : Speaker::kUnknown;
}

Shares SharesOfChannel(std::span<const Speaker> speakers, unsigned channel) {
    if (!speakers.empty()) return SharesOf(SpeakerOf(speakers, channel));
    return channel % 2 == 0 ? Shares{1, 0} : Shares{0, 1};
}

float SumOfShares(const std::vector<float>& row) {
    return std::accumulate(row.begin(), row.end(), 0.0f,
                           [](float sum, float share) { return sum + std::abs(share); });
}

std::string PairText(std::span<const Speaker> speakers, unsigned first, unsigned second) {
    return ChannelName(speakers, first) + " and " + ChannelName(speakers, second);
}

}  // namespace

std::string ChannelName(std::span<const Speaker> speakers, unsigned channel) {
    const std::string_view name = SpeakerName(SpeakerOf(speakers, channel));
    return name.empty() ? "Channel " + std::to_string(channel + 1) : std::string(name);
}

ChannelMatrix MixToStereo(std::span<const Speaker> speakers, unsigned channels) {
    ChannelMatrix matrix{{std::vector<float>(channels), std::vector<float>(channels)}};
    for (unsigned channel = 0; channel < channels; ++channel) {
        const Shares shares = SharesOfChannel(speakers, channel);
        matrix.rows[0][channel] = shares.left;
        matrix.rows[1][channel] = shares.right;
    }
    // One scale for both sides, so that neither moves.
    const float sum = std::max(SumOfShares(matrix.rows[0]), SumOfShares(matrix.rows[1]));
    if (sum <= 1) return matrix;
    for (std::vector<float>& row : matrix.rows)
        for (float& share : row) share /= sum;
    return matrix;
}

ChannelMatrix MixToMono(std::span<const Speaker> speakers, unsigned channels) {
    const ChannelMatrix stereo = MixToStereo(speakers, channels);
    ChannelMatrix mono{{std::vector<float>(channels)}};
    for (unsigned channel = 0; channel < channels; ++channel)
        mono.rows[0][channel] = (stereo.rows[0][channel] + stereo.rows[1][channel]) / 2;
    return mono;
}

ChannelMatrix PickChannels(std::span<const unsigned> picked, unsigned channels) {
    ChannelMatrix matrix;
    for (const unsigned channel : picked) {
        std::vector<float>& row = matrix.rows.emplace_back(channels);
        if (channel < channels) row[channel] = 1;
    }
    return matrix;
}

std::vector<ChannelChoiceRow> ChannelChoices(std::span<const Speaker> speakers, unsigned channels) {
    std::vector<ChannelChoiceRow> rows = {{"Mix down to stereo", MixToStereo(speakers, channels)}};
    const auto add = [&](unsigned first, unsigned second) {
        if (rows.size() == kMostChannelChoices) return;
        const unsigned pair[] = {first, second};
        rows.push_back({PairText(speakers, first, second), PickChannels(pair, channels)});
    };
    for (unsigned channel = 0; channel + 1 < channels; channel += 2) add(channel, channel + 1);
    for (unsigned first = 0; first < channels && rows.size() < kMostChannelChoices; ++first)
        for (unsigned second = first + 1; second < channels; ++second)
            if (first % 2 != 0 || second != first + 1) add(first, second);
    return rows;
}

void ApplyMatrix(const ChannelMatrix& matrix, std::span<const float> from, std::span<float> to) {
    const std::size_t channels = matrix.rows.empty() ? 0 : matrix.rows[0].size();
    const std::size_t frames = channels == 0 ? 0 : from.size() / channels;
    for (std::size_t frame = 0; frame < frames; ++frame)
        for (std::size_t out = 0; out < matrix.rows.size(); ++out)
            to[frame * matrix.rows.size() + out] = std::inner_product(
                matrix.rows[out].begin(), matrix.rows[out].end(),
                from.begin() + static_cast<std::ptrdiff_t>(frame * channels), 0.0f);
}

}  // namespace sonavel
