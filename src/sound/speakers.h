// Where the channels of a sound are meant to be heard.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace sonavel {

// The numbers of the first 18 are the bits of a WAV file's channel mask.
enum class Speaker : std::uint8_t {
    kFrontLeft,
    kFrontRight,
    kFrontCentre,
    kLowFrequency,
    kRearLeft,
    kRearRight,
    kFrontLeftOfCentre,
    kFrontRightOfCentre,
    kRearCentre,
    kSideLeft,
    kSideRight,
    kTopCentre,
    kTopFrontLeft,
    kTopFrontCentre,
    kTopFrontRight,
    kTopRearLeft,
    kTopRearCentre,
    kTopRearRight,
    kMono,
    kAmbisonicW,
    kAmbisonicX,
    kAmbisonicY,
    kAmbisonicZ,
    kUnknown,
};
inline constexpr unsigned kSpeakersOfMask = 18;
inline constexpr unsigned kSpeakerCount = static_cast<unsigned>(Speaker::kUnknown) + 1;

// "Front left"; empty for kUnknown.
std::string_view SpeakerName(Speaker speaker);

// The speakers of a WAV file's channel mask in the order of the channels; empty unless the mask
// names as many as there are channels.
std::vector<Speaker> SpeakersOfMask(std::uint32_t mask, unsigned channels);

}  // namespace sonavel
