#include "sound/format_refusal.h"

#include "sound/sample_types.h"
#include "sound/sound_texts.h"

namespace sonavel {

std::string FormatRefusal(const PcmFormat& format) {
    const std::string prefix = "This format cannot be edited: ";
    if (format.formatTag != kPcmFormatTag) return prefix + FormatTagName(format.formatTag);
    return prefix + std::to_string(format.channels) + " channels, " +
           BitsText(format.bitsPerSample) + ", " + RateText(format.samplesPerSecond) + ", " +
           std::to_string(format.blockAlign) + " bytes a frame";
}

Outcome CheckSavedFormat(const PcmFormat& format) {
    if (AreWholeNumbers(format.bitsPerSample)) return Done();
    return Failed(
        "A sound of 32-bit float samples cannot be saved as it is in this kind of file. Export "
        "keeps the samples; Save As rounds them to 16 bits.");
}

}  // namespace sonavel
