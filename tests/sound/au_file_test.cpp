#include "sound/au_file.h"

#include "sound/companded_samples.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

using AuFileTest = WaveTest;

TEST(CompandedSamplesTest, MatchTheStandard) {
    // Ends, middle and a value from inside a segment, in both signs.
    const std::pair<std::uint8_t, int> mu[] = {{0x00, -32124}, {0x80, 32124}, {0xFF, 0},
                                               {0x7F, 0},      {0xFE, 8},     {0x6F, -132},
                                               {0x01, -31100}, {0x10, -15996}};
    for (const auto& [code, value] : mu) EXPECT_EQ(MuLawTable()[code], value) << int{code};
    const std::pair<std::uint8_t, int> a[] = {{0xD5, 8},      {0x55, -8},  {0xAA, 32256},
                                              {0x2A, -32256}, {0xC5, 264}, {0x00, -5504},
                                              {0x01, -5248}};
    for (const auto& [code, value] : a) EXPECT_EQ(ALawTable()[code], value) << int{code};
}

TEST(CompandedSamplesTest, GrowStrictlyWithinEachSign) {
    for (unsigned code = 1; code < 128; ++code) {
        EXPECT_GT(MuLawTable()[code], MuLawTable()[code - 1]);
        EXPECT_LT(MuLawTable()[code + 128], MuLawTable()[code + 127]);
        EXPECT_GT(ALawTable()[(code ^ 0x55) | 0x80], ALawTable()[((code - 1) ^ 0x55) | 0x80]);
        EXPECT_EQ(ALawTable()[code], -ALawTable()[code | 0x80]);
    }
}

TEST_F(AuFileTest, WritesItsHeaderAnnotationAndSamples) {
    const FileBytes annotation = {'S', 'o', 'n', 'a', 'v', 'e', 'l', 0};
    Fill(2, 16, 44100, {1, 2, 3, 4});
    EXPECT_EQ(WrittenBy(SaveAu), AuBytes({32, 4, 3, 44100, 2, annotation + FileBytes{2, 1, 4, 3}}));
    Fill(1, 8, 8000, {0, 128, 255});
    EXPECT_EQ(WrittenBy(SaveAu), AuBytes({32, 3, 2, 8000, 1, annotation + FileBytes{128, 0, 127}}));
}

TEST_F(AuFileTest, EveryWidthComesBackAsItWas) {
    for (const auto& [channels, bits] : {std::pair{1u, 8u}, {2u, 8u}, {1u, 16u}, {2u, 16u}}) {
        Fill(channels, bits, 16000, Pattern(300000));
        const FileBytes file = WrittenBy(SaveAu);
        Fill(1, 8, 8000, {});
        ASSERT_TRUE(Reads(OpenAu, file));
        EXPECT_EQ(SoundBytes(wave), Pattern(300000));
        EXPECT_EQ(wave.GetFormat(), MakePcmFormat(channels, bits, 16000));
    }
}

TEST_F(AuFileTest, ExpandsCompandedSamples) {
    // More codes than are expanded at once.
    const FileBytes codes = Pattern(200001);
    for (const std::uint32_t encoding : {1u, 27u}) {
        const ExpansionTable& table = encoding == 1 ? MuLawTable() : ALawTable();
        ASSERT_TRUE(Reads(OpenAu, AuBytes({24, 200001, encoding, 8000, 1, codes})));
        ASSERT_EQ(wave.GetFormat(), MakePcmFormat(1, 16, 8000));
        ASSERT_EQ(wave.GetFrameCount(), codes.size());
        for (std::uint32_t frame = 0; frame < codes.size(); ++frame)
            ASSERT_EQ(wave.GetSample(0, frame), table[codes[frame]]);
    }
}

TEST_F(AuFileTest, ReadsUpToTheEndOrToTheSizeAndOnlyWholeFrames) {
    const FileBytes behind = FileBytes(4) + Pattern(11);
    for (const auto& [size, frames] :
         {std::pair{0xFFFFFFFFu, 2u}, {11u, 2u}, {8u, 2u}, {7u, 1u}, {0u, 0u}}) {
        ASSERT_TRUE(Reads(OpenAu, AuBytes({28, size, 3, 8000, 2, behind})));
        EXPECT_EQ(wave.GetFrameCount(), frames) << size;
        EXPECT_EQ(wave.GetDataSize(), frames * 4);
    }
    // A header and nothing behind it.
    ASSERT_TRUE(Reads(OpenAu, AuBytes({24, 0xFFFFFFFF, 3, 8000, 2, {}})));
    EXPECT_FALSE(wave.HasData());
    EXPECT_FALSE(Reads(OpenAu, AuBytes({25, 0xFFFFFFFF, 3, 8000, 2, {}})));
}

}  // namespace
}  // namespace sonavel
