// Files that lie, end too early or cannot be edited: each must fail at once, with a message, and
// leave the sound as it was.
#include <sys/stat.h>

#include <chrono>

#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

using Reader = bool (*)(const std::filesystem::path&, CWave&);

bool OpenWav(const std::filesystem::path& path, CWave& wave) {
    return wave.Open(path, WavOpenMode::kReadAll);
}

class HostileFilesTest : public WaveTest {
  protected:
    void SetUp() override {
        Fill(2, 16, 44100, Pattern(64));
        wave.Markers().Add(3, "kept", 0);
        wave.SetModified(true);
    }

    // The file must be refused with this last error; `text` in a box unless it is a status text.
    enum class Shown { kInBox, kInStatus };
    void ExpectRefused(Reader read, const FileBytes& bytes, std::string_view text,
                       Shown shown = Shown::kInBox) {
        prompts.messages.clear();
        prompts.statusTexts.clear();
        WriteFileBytes(folder / "bad", bytes);
        EXPECT_FALSE(read(folder / "bad", wave));
        EXPECT_EQ(wave.LastError(), text);
        EXPECT_EQ(prompts.messages.empty(), shown == Shown::kInStatus);
        EXPECT_EQ(prompts.statusTexts.empty(), shown == Shown::kInBox);
        ExpectUnchanged();
    }
    void ExpectUnchanged() {
        ASSERT_EQ(SoundBytes(wave), Pattern(64));
        ASSERT_EQ(wave.GetFormat(), MakePcmFormat(2, 16, 44100));
        ASSERT_EQ(wave.Markers().Count(), 1u);
        ASSERT_TRUE(wave.GetModified());
        ASSERT_EQ(progress.openWindows, 0);
    }
};

FileBytes Patched(FileBytes bytes, std::size_t offset, const FileBytes& patch) {
    std::ranges::copy(patch, bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    return bytes;
}

FileBytes Little(std::uint32_t value) {
    return ByteBuilder().Little32(value).Bytes();
}

FileBytes Resized(FileBytes bytes, std::size_t size) {
    bytes.resize(size);
    return bytes;
}

TEST_F(HostileFilesTest, WavHeadersThatLie) {
    WavParts parts;
    parts.data = Pattern(100);
    const FileBytes good = WavBytes(parts);
    const FileBytes format = RiffChunkBytes("fmt ", WavFormatBytes(parts));
    ExpectRefused(OpenWav, {}, "The file has no RIFF chunk of the form WAVE.", Shown::kInStatus);
    ExpectRefused(OpenWav, RiffBytes({}), "The file has no fmt chunk.", Shown::kInStatus);
    ExpectRefused(OpenWav, RiffBytes(format), "The file has no data chunk.", Shown::kInStatus);
    // A RIFF size that ends before the data chunk.
    ExpectRefused(OpenWav, Patched(good, 4, Little(28)), "The file has no data chunk.",
                  Shown::kInStatus);
    for (const std::uint32_t size : {0u, 13u})
        ExpectRefused(OpenWav, Patched(good, 16, Little(size)), "Wave Format Read Failure.");
    for (const std::uint32_t size : {14u, 15u})
        ExpectRefused(OpenWav, Patched(good, 16, Little(size)), "Data Read Failure.");
    // A format chunk that overlaps the data chunk.
    ExpectRefused(OpenWav, Patched(good, 16, Little(60)), "The file has no data chunk.",
                  Shown::kInStatus);
    for (const std::uint32_t size : {101u, 0x40000000u, 0x7FFFFFFFu})
        ExpectRefused(OpenWav, Patched(good, 40, Little(size)), "Read Data Failure.");
    for (const std::uint32_t size : {0x80000000u, 0xFFFFFFFFu})
        ExpectRefused(OpenWav, Patched(good, 40, Little(size)), "Memory Allocation Failure.");
}

TEST_F(HostileFilesTest, WavFormatsThatCannotBeEdited) {
    struct Case {
        unsigned channels;
        std::uint32_t rate;
        unsigned bits, blockAlign;
        const char* detail;
    };
    for (const Case& row :
         {Case{0, 8000, 16, 2, "0 channels, 16-bit, 8,000 Hz, 2 bytes a frame"},
          {3, 8000, 16, 6, "3 channels, 16-bit, 8,000 Hz, 6 bytes a frame"},
          {65535, 8000, 16, 65534, "65535 channels, 16-bit, 8,000 Hz, 65534 bytes a frame"},
          {1, 0, 16, 2, "1 channels, 16-bit, 0,000 Hz, 2 bytes a frame"},
          {1, 8000, 0, 2, "1 channels, 0-bit, 8,000 Hz, 2 bytes a frame"},
          {2, 96000, 24, 6, "2 channels, 24-bit, 96,000 Hz, 6 bytes a frame"},
          {1, 8000, 16, 0, "1 channels, 16-bit, 8,000 Hz, 0 bytes a frame"},
          {2, 8000, 16, 2, "2 channels, 16-bit, 8,000 Hz, 2 bytes a frame"}}) {
        WavParts parts{1, row.channels, row.rate, row.bits, row.blockAlign, {}, Pattern(24), {}};
        ExpectRefused(OpenWav, WavBytes(parts),
                      std::string("This format cannot be edited: ") + row.detail);
    }
}

TEST_F(HostileFilesTest, WavMarkersThatLie) {
    const auto withMarkers = [](const FileBytes& chunks) {
        WavParts parts;
        parts.data = Pattern(100);
        parts.behindData = chunks;
        return WavBytes(parts);
    };
    const FileBytes point(24, 1);
    const FileBytes cue = RiffChunkBytes("cue ", Little(1) + point);
    const auto label = [](std::uint32_t size, const FileBytes& content) {
        return RiffChunkBytes("LIST", BytesOf("adtllabl") + Little(size) + content);
    };
    for (const FileBytes& chunks :
         {RiffChunkBytes("cue ", Little(0xFFFFFFFF) + point),
          RiffChunkBytes("cue ", Little(0x0AAAAAAB) + point),  // times 24 it wraps to a small size
          RiffChunkBytes("cue ", Little(2) + point), RiffChunkBytes("cue ", {1, 0}),
          cue + label(0, Little(1)), cue + label(3, Little(1)), cue + label(6, {1, 0}),
          cue + label(0x7FFFFFFF, Little(1)), cue + label(0xFFFFFFFF, Little(1) + BytesOf("name"))})
        ExpectRefused(OpenWav, withMarkers(chunks), "마커 읽기 실패...");
}

TEST_F(HostileFilesTest, TruncatedWavsOpenOnlyBetweenTheirChunks) {
    Fill(1, 16, 8000, Pattern(64));
    wave.Markers().Clear();
    wave.Markers().Add(3, "name", 0);
    ASSERT_TRUE(wave.Save(folder / "good.wav", MarkerSaving::kOn));
    const FileBytes good = ReadFileBytes(folder / "good.wav");
    ASSERT_EQ(good.size(), 200u);
    const auto opens = [](std::size_t size) {
        constexpr std::size_t kDataEnd = 108, kCuePoints = kDataEnd + 8, kCueEnd = kCuePoints + 28;
        constexpr std::size_t kLabel = kCueEnd + 12 + 28 + 8, kEnd = kLabel + 8;
        return (size >= kDataEnd && size < kCuePoints) || (size >= kCueEnd && size < kLabel) ||
               size == kEnd;
    };
    for (std::size_t size = 0; size <= good.size(); ++size) {
        WriteFileBytes(folder / "cut.wav", Resized(good, size));
        CWave other(prompts, progress);
        EXPECT_EQ(OpenWav(folder / "cut.wav", other), opens(size)) << size;
        EXPECT_EQ(SoundBytes(other), opens(size) ? Pattern(64) : FileBytes()) << size;
        EXPECT_EQ(progress.openWindows, 0);
    }
}

TEST_F(HostileFilesTest, ManyEmptyChunksAreQuick) {
    ByteBuilder many;
    for (int i = 0; i < 100'000; ++i) many.Text("none").Little32(0);
    WavParts parts;
    parts.beforeData = many.Bytes();
    parts.data = Pattern(100);
    WriteFileBytes(folder / "many.wav", WavBytes(parts));
    AiffParts aiff;
    aiff.frames = 50;
    aiff.beforeCommon = many.Bytes();
    aiff.data = Pattern(100);
    WriteFileBytes(folder / "many.aiff", AiffBytes(aiff));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(OpenWav(folder / "many.wav", wave));
    EXPECT_TRUE(ReadAiff(folder / "many.aiff", wave));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST_F(HostileFilesTest, PathsThatAreNoReadableFiles) {
    const std::filesystem::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::filesystem::path& path : {folder.Path(), folder / "none", pipe}) {
        for (const Reader read : {Reader{OpenWav}, Reader{ReadAiff}, Reader{ReadAu}}) {
            EXPECT_FALSE(read(path, wave));
            EXPECT_EQ(prompts.messages.back(), "File Open Failure.");
            ExpectUnchanged();
        }
    }
}

FileBytes Extended(unsigned head, std::uint32_t mantissa) {
    return ByteBuilder().Big16(head).Big32(mantissa).Big32(0).Bytes();
}

TEST_F(HostileFilesTest, AiffHeadersThatLie) {
    AiffParts parts;
    parts.frames = 50;
    parts.data = Pattern(100);
    const FileBytes good = AiffBytes(parts);
    ExpectRefused(ReadAiff, {}, "AIFF header does not begin with magic word FORM");
    ExpectRefused(ReadAiff, Resized(good, 11), "AIFF 'FORM' chunk does specify 'AIFF' as type");
    ExpectRefused(ReadAiff, Patched(good, 8, BytesOf("AIFC")),
                  "AIFF 'FORM' chunk does specify 'AIFF' as type");
    ExpectRefused(ReadAiff, Resized(good, 37), "EOF while reading IEEE extended number");
    ExpectRefused(ReadAiff, AiffFormBytes(ByteBuilder().Text("SSND").Big32(8).Big32(0).Bytes()),
                  "Missing COMM chunk in AIFF file");
    for (const std::uint32_t frames : {0x3FFFFFFFu, 0xFFFFFFu}) {
        parts.frames = frames;
        ExpectRefused(ReadAiff, AiffBytes(parts), "unexpected EOF in AIFF chunk");
    }
    parts.frames = 0x40000000;
    ExpectRefused(ReadAiff, AiffBytes(parts), "Memory Allocation Failure.");
}

TEST_F(HostileFilesTest, AiffFormatsThatCannotBeEdited) {
    const FileBytes eight = AiffParts{}.rate;
    struct Case {
        unsigned channels, bits;
        FileBytes rate;
    };
    const std::vector<Case> cases = {
        {0, 16, eight},
        {3, 16, eight},
        {65535, 16, eight},
        {1, 24, eight},
        {1, 0, eight},
        {1, 16, Extended(0, 0)},                // 0
        {1, 16, Extended(0xC00B, 0xFA000000)},  // -8000
        {1, 16, Extended(0x7FFF, 0x80000000)},  // infinity
        {1, 16, Extended(0x7FFF, 0xC0000000)},  // NaN
        {1, 16, Extended(0x3FFE, 0x80000000)},  // 0.5
        {1, 16, Extended(0x401E, 0x80000000)},  // 2^31, whose bytes per second do not fit
        {1, 16, Extended(0x7FFE, 0xFFFFFFFF)},
    };
    for (const Case& row : cases) {
        AiffParts parts{row.channels, 4, row.bits, row.rate, {}, Pattern(8)};
        WriteFileBytes(folder / "bad.aiff", AiffBytes(parts));
        EXPECT_FALSE(ReadAiff(folder / "bad.aiff", wave));
        EXPECT_EQ(wave.LastError().find("This format cannot be edited: "), 0u);
        ExpectUnchanged();
    }
}

TEST_F(HostileFilesTest, AuHeadersThatLie) {
    AuParts parts;
    parts.behindHeader = Pattern(4 + 100);
    const FileBytes good = AuBytes(parts);
    ExpectRefused(ReadAu, {}, "This is no Next/Sun audio file.");
    ExpectRefused(ReadAu, Resized(good, 23), "This is no Next/Sun audio file.");
    ExpectRefused(ReadAu, Patched(good, 0, BytesOf("dns.")), "This is no Next/Sun audio file.");
    for (const std::uint32_t offset : {0u, 23u, 129u, 0xFFFFFFF0u}) {
        AuParts lying = parts;
        lying.offset = offset;
        ExpectRefused(ReadAu, AuBytes(lying), "Read Data Failure.");
    }
    for (const std::uint32_t size : {101u, 0x40000000u, 0xFFFFFFFEu}) {
        AuParts lying = parts;
        lying.size = size;
        ExpectRefused(ReadAu, AuBytes(lying), "Read Data Failure.");
    }
    for (const std::uint32_t encoding : {0u, 4u, 6u, 23u, 0xFFFFFFFFu}) {
        AuParts lying = parts;
        lying.encoding = encoding;
        ExpectRefused(ReadAu, AuBytes(lying),
                      "This Next/Sun encoding cannot be edited: " + std::to_string(encoding));
    }
    for (const std::uint32_t channels : {0u, 3u, 0x10001u}) {
        AuParts lying = parts;
        lying.channels = channels;
        ExpectRefused(ReadAu, AuBytes(lying),
                      "This format cannot be edited: " + std::to_string(channels) + " channels");
    }
    for (const std::uint32_t rate : {0u, 0xFFFFFFFFu}) {
        AuParts lying = parts;
        lying.rate = rate;
        ExpectRefused(
            ReadAu, AuBytes(lying),
            "This format cannot be edited: 1 channels, 16-bit, 0,000 Hz, 2 bytes a frame");
    }
}

}  // namespace
}  // namespace sonavel
