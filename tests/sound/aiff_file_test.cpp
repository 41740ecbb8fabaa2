#include "sound/aiff_file.h"

#include <unistd.h>

#include <fstream>

#include "sound/extended_float.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

using AiffFileTest = WaveTest;

FileBytes SoundHeader(std::uint32_t size, std::uint32_t offset, std::uint32_t blockSize) {
    return ByteBuilder().Text("SSND").Big32(size).Big32(offset).Big32(blockSize).Bytes();
}

TEST(ExtendedFloatTest, HoldsEveryKindOfRate) {
    const std::pair<std::uint32_t, ExtendedFloat> cases[] = {
        {0, {}},
        {1, {0x3F, 0xFF, 0x80}},
        {8000, {0x40, 0x0B, 0xFA}},
        {44100, {0x40, 0x0E, 0xAC, 0x44}},
        {0xFFFFFFFF, {0x40, 0x1E, 0xFF, 0xFF, 0xFF, 0xFF}}};
    for (const auto& [value, bytes] : cases) {
        EXPECT_EQ(ExtendedFromInteger(value), bytes) << value;
        EXPECT_EQ(DoubleFromExtended(bytes), value);
    }
    EXPECT_EQ(DoubleFromExtended({0xC0, 0x00, 0xC0}), -3);
    EXPECT_EQ(DoubleFromExtended({0x3F, 0xFE, 0x80}), 0.5);
}

TEST_F(AiffFileTest, WritesItsHeaderAndSamples) {
    Fill(2, 8, 8000, {0, 1, 128, 255});
    wave.SetModified(true);
    AiffParts parts;
    parts.channels = 2;
    parts.frames = 2;
    parts.bits = 8;
    parts.data = {128, 129, 0, 127};
    EXPECT_EQ(WrittenBy(SaveAiff), AiffBytes(parts));
    EXPECT_EQ(LoadBig32(&AiffBytes(parts)[4]), 2u * 2 + 46);
    EXPECT_TRUE(wave.GetModified());
}

TEST_F(AiffFileTest, EightBitSoundsComeBackTurnedRound) {
    FileBytes turned = EveryByte();
    for (std::uint8_t& byte : turned) byte = static_cast<std::uint8_t>(256 - byte);
    Fill(1, 8, 22050, EveryByte());
    ASSERT_TRUE(Reads(OpenAiff, WrittenBy(SaveAiff)));
    EXPECT_EQ(SoundBytes(wave), turned);
    EXPECT_EQ(wave.GetFormat(), MakePcmFormat(1, 8, 22050));
}

TEST_F(AiffFileTest, SixteenBitSoundsAreWrittenAsOneSecond) {
    for (const unsigned channels : {1u, 2u}) {
        const std::size_t second = 8000 * 2 * channels;
        for (const std::size_t size : {2 * second, second, second / 4}) {
            Fill(channels, 16, 8000, Pattern(size));
            const FileBytes file = WrittenBy(SaveAiff);
            ASSERT_EQ(file.size(), 54 + second);
            EXPECT_EQ(LoadBig32(&file[22]), size / (2 * channels));
            EXPECT_EQ(LoadBig32(&file[42]), size + 8);
            FileBytes swapped = Pattern(size);
            swapped.resize(second);
            for (std::size_t i = 0; i < second; i += 2) std::swap(swapped[i], swapped[i + 1]);
            EXPECT_EQ(FileBytes(file.begin() + 54, file.end()), swapped);
        }
    }
}

TEST_F(AiffFileTest, ReadsBothWidthsBehindUnknownChunksAndOffsets) {
    for (const unsigned bits : {8u, 16u}) {
        AiffParts parts;
        parts.channels = 2;
        parts.frames = 3;
        parts.bits = bits;
        const FileBytes data = Pattern(6 * bits / 8);
        const FileBytes unknown = ByteBuilder().Text("NAME").Big32(3).Text("abc").Bytes();
        const FileBytes file =
            AiffFormBytes(unknown + AiffCommonBytes(parts) + unknown + SoundHeader(0, 5, 0) +
                          FileBytes(5, 99) + data + BytesOf("behind"));
        ASSERT_TRUE(Reads(OpenAiff, file));
        FileBytes expected = data;
        for (std::size_t i = 0; i < expected.size(); ++i)
            expected[i] = bits == 16 ? data[i ^ 1] : static_cast<std::uint8_t>(128 - data[i]);
        EXPECT_EQ(SoundBytes(wave), expected);
        EXPECT_EQ(wave.GetFormat(), MakePcmFormat(2, bits, 8000));
        EXPECT_FALSE(wave.GetModified());
        EXPECT_TRUE(prompts.messages.empty());
    }
}

TEST_F(AiffFileTest, WarnsAndReadsOn) {
    AiffParts parts;
    parts.frames = 4;
    const FileBytes common = AiffCommonBytes(parts);
    FileBytes badSize = common;
    badSize[7] = 17;
    const FileBytes data = Pattern(8);
    const std::string missing = "Missing SSND chunk in AIFF file";
    const std::string cut = "unexpected EOF in AIFF chunk";
    const struct {
        FileBytes chunks;
        std::vector<std::string> messages;
        std::size_t soundBytes;  // the rest of the four frames is silence
    } cases[] = {
        {badSize + SoundHeader(16, 0, 0) + data, {"AIFF COMM chunk has bad size"}, 8},
        {common + SoundHeader(16, 0, 9) + data, {"AIFF header specifies nonzero blocksize?"}, 8},
        {common, {missing}, 0},
        {common + BytesOf("SS"), {missing}, 0},
        {common + ByteBuilder().Text("NAME").Big32(99).Text("abc").Bytes(), {cut, missing}, 0},
        {common + BytesOf("NAME12"), {cut, missing}, 0},
        {common + SoundHeader(16, 0x7FFFFFFF, 0) + data,
         {"unexpected EOF while skipping AIFF offset"},
         0},
        // The file ends before the block size, and the offset points behind that.
        {common + ByteBuilder().Text("SSND").Big32(16).Big32(1).Bytes(),
         {"unexpected EOF while skipping AIFF offset"},
         0},
        {common + SoundHeader(16, 0, 0) + FileBytes(data.begin(), data.begin() + 5), {cut}, 5},
        // Zeros are no chunks.
        {common + FileBytes(8) + SoundHeader(16, 0, 0) + data, {missing}, 0},
    };
    for (const auto& row : cases) {
        prompts.messages.clear();
        ASSERT_TRUE(Reads(OpenAiff, AiffFormBytes(row.chunks)));
        EXPECT_EQ(prompts.messages, row.messages);
        FileBytes expected = data;
        expected.resize(row.soundBytes);
        expected.resize(8);
        for (std::size_t i = 0; i < 8; i += 2) std::swap(expected[i], expected[i + 1]);
        EXPECT_EQ(SoundBytes(wave), expected);
    }
}

TEST_F(AiffFileTest, RatesAreTakenAsFarAsTheirBytesPerSecondFit) {
    for (const auto& [rate, taken] :
         {std::pair{0x3FFFFFFFu, 0x3FFFFFFFu}, {0x40000000u, 0u}, {1u, 1u}}) {
        AiffParts parts;
        const ExtendedFloat bytes = ExtendedFromInteger(rate);
        parts.rate.assign(bytes.begin(), bytes.end());
        parts.data = Pattern(2);
        parts.frames = 1;
        const auto info =
            (WriteFileBytes(folder / "in", AiffBytes(parts)), ProbeAiff(folder / "in"));
        ASSERT_TRUE(info) << rate;
        EXPECT_EQ(info->format.samplesPerSecond, taken);
    }
}

TEST_F(AiffFileTest, LackingEightBitSoundIsSilence) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    for (const std::size_t present : {std::size_t{1}, std::size_t{2}, kPiece + 1}) {
        AiffParts parts;
        parts.frames = 3 * kPiece;
        parts.bits = 8;
        parts.data = FileBytes(present, 1);
        ASSERT_TRUE(Reads(OpenAiff, AiffBytes(parts)));
        FileBytes expected(present, 127);
        expected.resize(3 * kPiece, 128);
        EXPECT_EQ(SoundBytes(wave), expected);
    }
}

TEST_F(AiffFileTest, OwnFilesOfLongSoundsOpenAgain) {
    const FileBytes sound = Pattern(8000 * 2 * 100);
    Fill(1, 16, 8000, sound);
    ASSERT_TRUE(Reads(OpenAiff, WrittenBy(SaveAiff)));
    FileBytes expected(sound.begin(), sound.begin() + 8000 * 2);
    expected.resize(sound.size());
    EXPECT_EQ(SoundBytes(wave), expected);
    EXPECT_EQ(prompts.messages, std::vector<std::string>{"unexpected EOF in AIFF chunk"});
}

std::size_t ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0, resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST_F(AiffFileTest, SilenceThatNobodyTouchesCostsNoMemory) {
    AiffParts parts;
    parts.frames = kMaxSoundBytes / 2;
    parts.data = Pattern(3000);
    const std::size_t before = ResidentBytes();
    ASSERT_TRUE(Reads(OpenAiff, AiffBytes(parts)));
    EXPECT_EQ(wave.GetFrameCount(), kMaxSoundBytes / 2);
    EXPECT_LT(ResidentBytes(), before + (std::size_t{64} << 20));
    EXPECT_NE(wave.GetSample(0, 1499), 0);
    for (const std::uint32_t frame : {1500u, 1u << 20, 0x3FFFFFFEu})
        EXPECT_EQ(wave.GetSample(0, frame), 0);
}

TEST_F(AiffFileTest, ReadingIsShownAndCanBeCancelled) {
    for (const unsigned bits : {8u, 16u}) {
        AiffParts parts;
        parts.bits = bits;
        parts.frames = bits == 8 ? kMaxSoundBytes : 3 << 20;  // silence, or sound
        if (bits == 16) parts.data = Pattern(6 << 20);
        Fill(1, 16, 8000, Pattern(64));
        progress.positions.clear();
        progress.cancelAtPoll = progress.polls + 2;
        EXPECT_FALSE(Reads(OpenAiff, AiffBytes(parts)));
        EXPECT_EQ(progress.titles.back(), "Read sound file");
        EXPECT_EQ(progress.positions.size(), 3u);
        EXPECT_EQ(progress.openWindows, 0);
        EXPECT_EQ(wave.LastError(), "Cancelled.");
        EXPECT_EQ(SoundBytes(wave), Pattern(64));
    }
}

TEST_F(AiffFileTest, ASoundWithoutAFormatIsRefused) {
    EXPECT_FALSE(SaveAiff(folder / "out.aiff", wave));
    EXPECT_EQ(prompts.messages,
              std::vector<std::string>{"unsupported output style/size for AIFF header"});
    EXPECT_EQ(folder.FileCount(), 0u);
}

}  // namespace
}  // namespace sonavel
