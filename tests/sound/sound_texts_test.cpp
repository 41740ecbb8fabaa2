#include "sound/sound_texts.h"

#include <gtest/gtest.h>

namespace sonavel {
namespace {

TEST(SoundTextsTest, ShowsTimes) {
    struct Case {
        double seconds;
        const char* text;
    };
    for (const Case& row : {Case{0, "00:00:00.000"},
                            {65.5, "00:01:05.500"},
                            {3725.25, "01:02:05.250"},
                            {9.9996, "00:00:010.000"},
                            {10, "00:00:10.000"},
                            {59.9994, "00:00:59.999"},
                            {360000.125, "100:00:00.125"}})
        EXPECT_EQ(TimeText(row.seconds), row.text);
}

TEST(SoundTextsTest, ShowsFormats) {
    EXPECT_EQ(RateText(44100), "44,100 Hz");
    EXPECT_EQ(RateText(8000), "8,000 Hz");
    EXPECT_EQ(RateText(11025), "11,025 Hz");
    EXPECT_EQ(RateText(7), "0,007 Hz");
    EXPECT_EQ(BitsText(16), "16-bit");
    EXPECT_EQ(ChannelsText(1), "Mono");
    EXPECT_EQ(ChannelsText(2), "Stereo");
    EXPECT_EQ(ByteCountText(2147483647), "2147483647 Bytes");
    EXPECT_EQ(FrameCountText(12), "12 Counts");
}

TEST(SoundTextsTest, NamesFormatTags) {
    struct Case {
        std::uint16_t tag;
        const char* name;
    };
    for (const Case& row : {Case{0, "** RESERVED INVALID TAG **"},
                            {1, "PCM"},
                            {4, "[4] (unknown)"},
                            {7, "u-Law"},
                            {17, "IMA/DVI ADPCM"},
                            {57, "Crystal Semiconductor IMA ADPCM"},
                            {80, "MPEG"},
                            {515, "Creative Labs FastSpeech10"},
                            {4100, "OLIOPR"},
                            {65534, "[65534] (unknown)"},
                            {65535, "** RESERVED DEVELOPMENT ONLY TAG **"}})
        EXPECT_EQ(FormatTagName(row.tag), row.name);
}

}  // namespace
}  // namespace sonavel
