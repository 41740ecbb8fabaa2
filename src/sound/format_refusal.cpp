#include "sound/format_refusal.h"

#include "sound/sound_texts.h"

namespace sonavel {

std::string FormatRefusal(const PcmFormat& format) {
    const std::string prefix = "This format cannot be edited: ";
    if (format.formatTag != kPcmFormatTag) return prefix + FormatTagName(format.formatTag);
    return prefix + std::to_string(format.channels) + " channels, " +
           BitsText(format.bitsPerSample) + ", " + RateText(format.samplesPerSecond) + ", " +
           std::to_string(format.blockAlign) + " bytes a frame";
}

}  // namespace sonavel
