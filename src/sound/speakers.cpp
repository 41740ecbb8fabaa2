#include "sound/speakers.h"

#include <array>

namespace sonavel {
namespace {

constexpr std::array<std::string_view, kSpeakerCount> kNames = {"Front left",
                                                                "Front right",
                                                                "Front centre",
                                                                "Low frequency",
                                                                "Rear left",
                                                                "Rear right",
                                                                "Front left of centre",
                                                                "Front right of centre",
                                                                "Rear centre",
                                                                "Side left",
                                                                "Side right",
                                                                "Top centre",
                                                                "Top front left",
                                                                "Top front centre",
                                                                "Top front right",
                                                                "Top rear left",
                                                                "Top rear centre",
                                                                "Top rear right",
                                                                "Mono",
                                                                "Ambisonic W",
                                                                "Ambisonic X",
                                                                "Ambisonic Y",
                                                                "Ambisonic Z",
                                                                ""};

}  // namespace

std::string_view SpeakerName(Speaker speaker) {
    const auto index = static_cast<std::size_t>(speaker);
    return index < kNames.size() ? kNames[index] : std::string_view{};
}

std::vector<Speaker> SpeakersOfMask(std::uint32_t mask, unsigned channels) {
    std::vector<Speaker> speakers;
    for (unsigned bit = 0; bit < kSpeakersOfMask; ++bit)
        if ((mask >> bit & 1u) != 0) speakers.push_back(static_cast<Speaker>(bit));
    if (speakers.size() != channels) speakers.clear();
    return speakers;
}

}  // namespace sonavel
