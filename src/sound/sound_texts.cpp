#include "sound/sound_texts.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace sonavel {
namespace {

struct TagName {
    std::uint16_t tag;
    const char* name;
};

constexpr TagName kTagNames[] = {
    {0, "** RESERVED INVALID TAG **"},
    {1, "PCM"},
    {2, "Microsoft ADPCM"},
    {3, "MV's *UNREGISTERED* ADPCM"},
    {5, "IBM CVSD"},
    {6, "A-Law"},
    {7, "u-Law"},
    {16, "OKI ADPCM"},
    {17, "IMA/DVI ADPCM"},
    {18, "Media Space ADPCM"},
    {19, "Sierra ADPCM"},
    {20, "CCITT G.723 ADPCM"},
    {21, "DIGI STD"},
    {22, "DIGI FIX"},
    {23, "Dialogic OKI ADPCM"},
    {32, "Yamaha ADPCM"},
    {33, "Sonarc"},
    {34, "DSP Group TrueSpeech"},
    {35, "Echo SC1"},
    {36, "Audiofile AF36"},
    {37, "APTX"},
    {38, "Audiofile AF10"},
    {48, "Dolby AC2"},
    {49, "GSM 6.10"},
    {51, "Antex Electronics ADPCME"},
    {52, "Control Resources (VQLPC)"},
    {53, "DSP Solutions (DIGIREAL)"},
    {54, "DSP Solutions (DIGIADPCM)"},
    {55, "Control Resources (CR10)"},
    {56, "Natural MicroSystems (VBXADPCM)"},
    {57, "Crystal Semiconductor IMA ADPCM"},
    {64, "CCITT G.721 ADPCM"},
    {80, "MPEG"},
    {512, "Creative Labs ADPCM"},
    {514, "Creative Labs FastSpeech8"},
    {515, "Creative Labs FastSpeech10"},
    {768, "Fujitsu FM TOWNS SND"},
    {4096, "OLIGSM"},
    {4097, "OLIADPCM"},
    {4098, "OLICELP"},
    {4099, "OLISBC"},
    {4100, "OLIOPR"},
    {65535, "** RESERVED DEVELOPMENT ONLY TAG **"},
};

}  // namespace

std::string TimeText(double seconds) {
    const int hours = static_cast<int>(seconds * (1.0 / 3600));
    double rest = seconds - hours * 3600.0;
    const int minutes = static_cast<int>(rest * (1.0 / 60));
    rest -= minutes * 60.0;
    // The zero is chosen before the decimals are rounded: 9.9996 shows as 010.000, which is
    // intended.
    const char* pattern = static_cast<int>(rest * 0.1) == 0 ? "%02d:%02d:0%.3f" : "%02d:%02d:%2.3f";
    char text[64];
    std::snprintf(text, sizeof text, pattern, hours, minutes, rest);
    return text;
}

std::string RateText(std::uint32_t samplesPerSecond) {
    char text[32];
    std::snprintf(text, sizeof text, "%u,%03u Hz", samplesPerSecond / 1000,
                  samplesPerSecond % 1000);
    return text;
}

std::string BitsText(unsigned bits) {
    return std::to_string(bits) + "-bit";
}

std::string ChannelsText(unsigned channels) {
    if (channels == 1) return "Mono";
    if (channels == 2) return "Stereo";
    return std::to_string(channels) + " channels";
}

std::string ByteCountText(std::uint64_t bytes) {
    return std::to_string(bytes) + " Bytes";
}

std::string FrameCountText(std::uint32_t frames) {
    return std::to_string(frames) + " Counts";
}

std::string FormatTagName(std::uint16_t tag) {
    const auto found = std::ranges::lower_bound(kTagNames, tag, {}, &TagName::tag);
    if (found != std::end(kTagNames) && found->tag == tag) return found->name;
    std::string text = "[";
    text += std::to_string(tag);
    return text += "] (unknown)";
}

}  // namespace sonavel
