#include "sound/sample_types.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

FileBytes BytesOfWords(std::initializer_list<int> words) {
    ByteBuilder builder;
    for (const int word : words) builder.Little16(static_cast<unsigned>(word) & 0xFFFF);
    return builder.Bytes();
}

using ConversionTest = WaveTest;

TEST_F(ConversionTest, WidensEveryByteAndNarrowsItBack) {
    Fill(2, 8, 22050, EveryByte());
    wave.Markers().Add(5, "kept", 0);
    ASSERT_TRUE(wave.ConvertBits(16));
    EXPECT_EQ(wave.GetFormat(), MakePcmFormat(2, 16, 22050));
    const std::span<const std::int16_t> words = SamplesOf<WordSample>(std::as_const(wave).Bytes());
    ASSERT_EQ(words.size(), 256u);
    EXPECT_EQ(words[0], -32768);
    for (std::size_t byte = 1; byte < 256; ++byte)
        EXPECT_EQ(words[byte], (128 - static_cast<int>(byte)) * 256);
    EXPECT_TRUE(wave.GetModified());
    ASSERT_TRUE(wave.ConvertBits(8));
    EXPECT_EQ(SoundBytes(wave), EveryByte());
    EXPECT_EQ(wave.Markers().Count(), 1u);
}

TEST_F(ConversionTest, NarrowsEveryWordByItsHighByte) {
    ByteBuilder all;
    for (unsigned word = 0; word < 65536; ++word) all.Little16(word);
    Fill(1, 16, 8000, all.Bytes());
    ASSERT_TRUE(wave.ConvertBits(8));
    for (unsigned word = 0; word < 65536; ++word)
        ASSERT_EQ(wave.Bytes()[word], (128 + 256 - (word >> 8)) % 256) << word;
}

TEST_F(ConversionTest, ChangesTheChannelCount) {
    using enum ChannelChoice;
    const FileBytes bytes = {10, 201, 250, 255};
    const FileBytes frames = BytesOfWords({-3, 0, 3, 0, 32767, 32767, -32768, -32768, 100, -101});
    const struct {
        unsigned channels, bits;
        ChannelChoice choice;
        FileBytes before, after;
    } cases[] = {
        {1, 8, kLeft, bytes, {10, 0, 201, 0, 250, 0, 255, 0}},
        {1, 8, kRight, bytes, {0, 10, 0, 201, 0, 250, 0, 255}},
        {1, 8, kBothOrMix, bytes, {10, 10, 201, 201, 250, 250, 255, 255}},
        {2, 8, kLeft, bytes, {10, 250}},
        {2, 8, kRight, bytes, {201, 255}},
        {2, 8, kBothOrMix, bytes, {105, 252}},
        {1, 16, kLeft, BytesOfWords({-2, 7}), BytesOfWords({-2, 0, 7, 0})},
        {1, 16, kRight, BytesOfWords({-2, 7}), BytesOfWords({0, -2, 0, 7})},
        {1, 16, kBothOrMix, BytesOfWords({-2, 7}), BytesOfWords({-2, -2, 7, 7})},
        {2, 16, kLeft, frames, BytesOfWords({-3, 3, 32767, -32768, 100})},
        {2, 16, kRight, frames, BytesOfWords({0, 0, 32767, -32768, -101})},
        {2, 16, kBothOrMix, frames, BytesOfWords({-1, 1, 32767, -32768, 0})},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::Message() << row.channels << " channels, " << row.bits
                                          << " bits, choice " << static_cast<int>(row.choice));
        Fill(row.channels, row.bits, 8000, row.before);
        ASSERT_TRUE(wave.ConvertChannels(3 - row.channels, row.choice));
        EXPECT_EQ(SoundBytes(wave), row.after);
        EXPECT_EQ(wave.GetFormat(), MakePcmFormat(3 - row.channels, row.bits, 8000));
    }
}

TEST_F(ConversionTest, LeavesTheSoundAloneWhereNothingOrNothingPossibleIsAsked) {
    Fill(2, 16, 8000, Pattern(8));
    EXPECT_TRUE(wave.ConvertBits(16));
    EXPECT_TRUE(wave.ConvertChannels(2, ChannelChoice::kLeft));
    EXPECT_FALSE(wave.ConvertBits(24));
    EXPECT_FALSE(wave.ConvertChannels(3, ChannelChoice::kLeft));
    EXPECT_EQ(SoundBytes(wave), Pattern(8));
    EXPECT_FALSE(wave.GetModified());
}

TEST_F(ConversionTest, FillsTheCounterpartOfACutSampleWithZeros) {
    Fill(1, 16, 8000, FileBytes(5, 0x11));
    ASSERT_TRUE(wave.ConvertChannels(2, ChannelChoice::kBothOrMix));
    EXPECT_EQ(SoundBytes(wave), (FileBytes{0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0, 0}));
}

}  // namespace
}  // namespace sonavel
