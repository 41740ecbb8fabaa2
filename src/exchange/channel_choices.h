// Which channels a sound of more than two is opened with: mixed down, or a pair of them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "sound/speakers.h"

namespace sonavel {

// The share of each channel in one that comes out. One row for mono, two for stereo.
struct ChannelMatrix {
    std::vector<std::vector<float>> rows;

    bool operator==(const ChannelMatrix&) const = default;
};

// "Front left"; "Channel 3" where the file does not say. Channels count from 0.
std::string ChannelName(std::span<const Speaker> speakers, unsigned channel);

// All to two channels as they are heard: what stands left goes left, what stands in the middle goes
// to both at -3 dB, surrounding ones at -3 dB; low-frequency effects are left out (ITU-R BS.775).
// Scaled so that the shares of a side add up to 1 and full scale stays in range. Without speakers,
// channels go left and right in turn.
ChannelMatrix MixToStereo(std::span<const Speaker> speakers, unsigned channels);
// The mean of both sides of the above.
ChannelMatrix MixToMono(std::span<const Speaker> speakers, unsigned channels);
// Two channels as they are, or one.
ChannelMatrix PickChannels(std::span<const unsigned> picked, unsigned channels);

struct ChannelChoiceRow {
    std::string text;  // "Front left and Front right"
    ChannelMatrix matrix;
};
// What a person may choose from, first "Mix down to stereo", then the pairs of neighbours, then all
// other pairs. At most kMostChannelChoices.
std::vector<ChannelChoiceRow> ChannelChoices(std::span<const Speaker> speakers, unsigned channels);
inline constexpr std::size_t kMostChannelChoices = 512;

// `from` holds whole frames of as many channels as a row has shares; `to` has room for as many of
// as many channels as there are rows.
void ApplyMatrix(const ChannelMatrix& matrix, std::span<const float> from, std::span<float> to);

}  // namespace sonavel
