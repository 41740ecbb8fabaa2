#include "sound/sample_texts.h"

#include <cstdio>

#include "sound/sample_types.h"

namespace sonavel {

std::string SampleText(const Sound& sound, unsigned channel, std::uint32_t frame, int decimals) {
    if (AreWholeNumbers(sound.GetBits())) return std::to_string(sound.GetSample(channel, frame));
    char text[64];  // a float has at most 39 digits before the point
    std::snprintf(text, sizeof text, "%.*f", decimals, sound.GetShare(channel, frame));
    return text;
}

}  // namespace sonavel
