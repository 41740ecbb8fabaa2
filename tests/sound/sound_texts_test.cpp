#include "sound/sound_texts.h"

#include <gtest/gtest.h>

namespace sonavel {
namespace {

TEST(SoundTextsTest, ShowsTimes) {
    const std::pair<double, const char*> cases[] = {
        {0, "00:00:00.000"},          {65.5, "00:01:05.500"}, {3725.25, "01:02:05.250"},
        {9.9996, "00:00:010.000"},    {10, "00:00:10.000"},   {59.9994, "00:00:59.999"},
        {360000.125, "100:00:00.125"}};
    for (const auto& [seconds, text] : cases) EXPECT_EQ(TimeText(seconds), text);
}

TEST(SoundTextsTest, ShowsFormats) {
    const std::pair<std::uint32_t, const char*> rates[] = {
        {44100, "44,100 Hz"}, {8000, "8,000 Hz"}, {11025, "11,025 Hz"}, {7, "0,007 Hz"}};
    for (const auto& [rate, text] : rates) EXPECT_EQ(RateText(rate), text);
    EXPECT_EQ(BitsText(16), "16-bit");
    EXPECT_EQ(ChannelsText(1), "Mono");
    EXPECT_EQ(ChannelsText(2), "Stereo");
    EXPECT_EQ(ByteCountText(2147483647), "2147483647 Bytes");
    EXPECT_EQ(FrameCountText(12), "12 Counts");
}

TEST(SoundTextsTest, NamesFormatTags) {
    const std::pair<std::uint16_t, const char*> cases[] = {
        {0, "** RESERVED INVALID TAG **"},
        {1, "PCM"},
        {4, "[4] (unknown)"},
        {7, "u-Law"},
        {17, "IMA/DVI ADPCM"},
        {57, "Crystal Semiconductor IMA ADPCM"},
        {515, "Creative Labs FastSpeech10"},
        {65534, "[65534] (unknown)"},
        {65535, "** RESERVED DEVELOPMENT ONLY TAG **"}};
    for (const auto& [tag, name] : cases) EXPECT_EQ(FormatTagName(tag), name);
}

}  // namespace
}  // namespace sonavel
