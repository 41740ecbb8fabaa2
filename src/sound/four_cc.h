// Four-character codes of chunked files, as the little-endian words that they are in memory.
#pragma once

#include <cstdint>

namespace sonavel {

using FourCc = std::uint32_t;

constexpr FourCc MakeFourCc(const char (&text)[5]) {
    FourCc code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

inline constexpr FourCc kRiffChunk = MakeFourCc("RIFF");
inline constexpr FourCc kListChunk = MakeFourCc("LIST");
inline constexpr FourCc kWaveForm = MakeFourCc("WAVE");
inline constexpr FourCc kFormatChunk = MakeFourCc("fmt ");
inline constexpr FourCc kDataChunk = MakeFourCc("data");
inline constexpr FourCc kCueChunk = MakeFourCc("cue ");
inline constexpr FourCc kAssociatedDataForm = MakeFourCc("adtl");
inline constexpr FourCc kLabelChunk = MakeFourCc("labl");
inline constexpr FourCc kTextChunk = MakeFourCc("ltxt");
inline constexpr FourCc kRegionPurpose = MakeFourCc("rgn ");

}  // namespace sonavel
