#include "document/clip_image.h"

#include "document_fixture.h"
#include "sound/byte_order.h"

namespace sonavel::testing {
namespace {

Bytes ImageOf(const Format& format, const Bytes& samples) {
    return *WriteClipImage(MakePcmFormat(format.channels, format.bits, format.rate), samples);
}

// Overwrites so many bytes of an image, the low one first.
void Put(Bytes& image, std::size_t offset, unsigned count, std::uint32_t value) {
    for (unsigned i = 0; i < count; ++i)
        image[offset + i] = static_cast<std::uint8_t>(value >> 8 * i);
}

TEST(ClipImage, IsACompleteRiffWaveFile) {
    ByteBuilder expected;
    expected.Text("RIFF").Little32(42).Text("WAVEfmt ").Little32(16);
    expected.Little16(1).Little16(1).Little32(22050).Little32(44100).Little16(2).Little16(16);
    expected.Text("data").Little32(6).Text("abcdef");
    EXPECT_EQ(ImageOf({1, 16, 22050}, {'a', 'b', 'c', 'd', 'e', 'f'}), expected.Bytes());
}

TEST(ClipImage, ReadsBackWhatWasWrittenInAnyCaseOfTheTags) {
    for (const Format& format : kFormats) {
        const Bytes samples = PatternBytes(24, 3);
        Bytes image = ImageOf(format, samples);
        std::copy_n("riff", 4, image.begin());
        std::copy_n("WaveFMT ", 8, image.begin() + 8);
        ClipRecord clip;
        ASSERT_TRUE(ReadClipImage(image, clip)) << NameOf(format);
        EXPECT_TRUE(clip.present);
        EXPECT_EQ(clip.GetFormat(), MakePcmFormat(format.channels, format.bits, format.rate));
        EXPECT_EQ(BytesOf(clip), samples);
    }
}

TEST(ClipImage, FloatsAreMarkedAsSuchAndCleanedWhenRead) {
    ByteBuilder samples;
    for (const std::uint32_t bits : {0x3F800000u, 0x7FC00000u, 0xFF800000u, 0xC0400000u})
        samples.Little32(bits);  // 1, not a number, minus infinity, -3
    const auto image = WriteClipImage(MakeSoundFormat(1, 32, 44100), samples.Bytes());
    ASSERT_TRUE(image);
    EXPECT_EQ((*image)[20], 3);
    ClipRecord clip;
    ASSERT_TRUE(ReadClipImage(*image, clip));
    EXPECT_EQ(clip.GetFormat(), MakeSoundFormat(1, 32, 44100));
    const double expected[] = {1, 0, 0, -3};
    for (std::uint32_t i = 0; i < 4; ++i) EXPECT_EQ(clip.GetShare(0, i), expected[i]) << i;
    Bytes whole = *image;
    whole[20] = 1;  // 32-bit whole numbers
    EXPECT_FALSE(ReadClipImage(whole, clip));
}

TEST(ClipImage, LongerFormatChunkMovesTheSamplesButNotTheSize) {
    Bytes image = ImageOf({1, 8}, PatternBytes(10, 1));
    Put(image, 16, 4, 18);
    Put(image, 40, 4, 8);
    ClipRecord clip;
    ASSERT_TRUE(ReadClipImage(image, clip));
    EXPECT_EQ(BytesOf(clip), Bytes(image.begin() + 46, image.begin() + 54));
}

TEST(ClipImage, HostileImagesFailAndLeaveTheRecordAlone) {
    const Bytes good = ImageOf({2, 16}, PatternBytes(40, 1));
    const struct {
        const char* name;
        std::size_t offset;
        unsigned count;
        std::uint32_t value;
    } cases[] = {
        {"no RIFF", 0, 1, 'X'},
        {"no WAVE", 11, 1, 'X'},
        {"no fmt", 15, 1, 'X'},
        {"a blank for a zero", 15, 1, 0},
        {"not PCM", 20, 2, 3},
        {"no channels", 22, 2, 0},
        {"65535 channels", 22, 2, 65535},
        {"rate 0", 24, 4, 0},
        {"block align 0", 32, 2, 0},
        {"block align of another format", 32, 2, 2},
        {"24 bits", 34, 2, 24},
        {"format chunk of 17", 16, 4, 17},
        {"format chunk of 4 GB", 16, 4, 0xFFFFFFFF},
        {"one byte more than there is", 40, 4, 41},
        {"two bytes too few behind 18", 16, 4, 18},
        {"2 GB announced", 40, 4, 0x7FFFFFFF},
    };
    for (const auto& c : cases) {
        Bytes image = good;
        Put(image, c.offset, c.count, c.value);
        ClipRecord clip = MakeClip({1, 8}, {1, 2, 3});
        EXPECT_FALSE(ReadClipImage(image, clip)) << c.name;
        EXPECT_EQ(clip.GetDataSize(), 3u) << c.name;
        EXPECT_EQ(clip.GetChannels(), 1u) << c.name;
    }
    for (std::size_t size = 0; size < good.size(); ++size) {
        // A block of its own, so that a read behind its end is seen.
        const Bytes cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
        ClipRecord clip;
        EXPECT_FALSE(ReadClipImage(cut, clip)) << size;
    }
}

TEST(ClipImage, AnImageWithoutSamplesKeepsTheClipBefore) {
    for (const std::uint32_t size : {0u, 0x80000000u, 0xFFFFFFFFu}) {
        Bytes image = ImageOf({2, 16}, PatternBytes(8, 1));
        Put(image, 40, 4, size);
        ClipRecord clip = MakeClip({1, 8}, {1, 2, 3});
        EXPECT_TRUE(ReadClipImage(image, clip)) << size;
        image.resize(44);
        EXPECT_TRUE(ReadClipImage(image, clip)) << size << " and nothing behind the header";
        EXPECT_EQ(clip.GetDataSize(), 3u) << size;
    }
}

TEST(ClipImage, OnlyWholeFramesAreTaken) {
    ClipRecord clip;
    ASSERT_TRUE(ReadClipImage(ImageOf({2, 16}, PatternBytes(11, 1)), clip));
    EXPECT_EQ(clip.GetDataSize(), 8u);
    EXPECT_EQ(clip.GetFrameCount(), 2u);
}

}  // namespace
}  // namespace sonavel::testing
