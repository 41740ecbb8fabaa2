// Files that lie, end too early or cannot be edited: each must fail at once, with a message, and
// leave the sound as it was.
#include <sys/stat.h>

#include <ctime>

#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "sound/byte_source.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

class HostileFilesTest : public WaveTest {
  protected:
    void SetUp() override {
        Fill(2, 16, 44100, Pattern(64));
        wave.Markers().Add(3, "kept", 0);
        wave.SetModified(true);
    }

    // The file must be refused with this last error; `text` in a box unless it is a status text.
    enum class Shown { kInBox, kInStatus };
    void ExpectRefused(FileAction read, const FileBytes& bytes, std::string_view text,
                       Shown shown = Shown::kInBox) {
        prompts.messages.clear();
        prompts.statusTexts.clear();
        EXPECT_FALSE(Reads(read, bytes));
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
    const auto sized = [&](std::size_t chunk, std::uint32_t size) {
        return Patched(good, chunk + 4, Little(size));
    };
    constexpr std::size_t kRiff = 0, kFormat = 12, kData = 36;
    const std::pair<FileBytes, const char*> inStatus[] = {
        {{}, "The file has no RIFF chunk of the form WAVE."},
        {RiffBytes({}), "The file has no fmt chunk."},
        {RiffBytes(format), "The file has no data chunk."},
        {sized(kRiff, 28), "The file has no data chunk."},    // ends before the data chunk
        {sized(kFormat, 60), "The file has no data chunk."},  // overlaps it
    };
    for (const auto& [bytes, text] : inStatus)
        ExpectRefused(OpenWav, bytes, text, Shown::kInStatus);
    const std::pair<FileBytes, const char*> inBox[] = {
        {sized(kFormat, 0), "Wave Format Read Failure."},
        {sized(kFormat, 13), "Wave Format Read Failure."},
        {sized(kFormat, 14), "Data Read Failure."},
        {sized(kFormat, 15), "Data Read Failure."},
        {sized(kData, 101), "Read Data Failure."},
        {sized(kData, 0x40000000), "Read Data Failure."},
        {sized(kData, 0x7FFFFFFF), "Read Data Failure."},
        {sized(kData, 0x80000000), "Memory Allocation Failure."},
        {sized(kData, 0xFFFFFFFE), "Memory Allocation Failure."},
    };
    for (const auto& [bytes, text] : inBox) ExpectRefused(OpenWav, bytes, text);
}

TEST_F(HostileFilesTest, WavFormatsThatCannotBeEdited) {
    const struct {
        unsigned channels;
        std::uint32_t rate;
        unsigned bits, blockAlign;
        const char* detail;
    } cases[] = {{0, 8000, 16, 2, "0 channels, 16-bit, 8,000 Hz, 2 bytes a frame"},
                 {3, 8000, 16, 6, "3 channels, 16-bit, 8,000 Hz, 6 bytes a frame"},
                 {65535, 8000, 16, 65534, "65535 channels, 16-bit, 8,000 Hz, 65534 bytes a frame"},
                 {1, 0, 16, 2, "1 channels, 16-bit, 0,000 Hz, 2 bytes a frame"},
                 {1, 8000, 0, 2, "1 channels, 0-bit, 8,000 Hz, 2 bytes a frame"},
                 {2, 96000, 24, 6, "2 channels, 24-bit, 96,000 Hz, 6 bytes a frame"},
                 {0, 8000, 16, 0, "0 channels, 16-bit, 8,000 Hz, 0 bytes a frame"},
                 {2, 8000, 16, 2, "2 channels, 16-bit, 8,000 Hz, 2 bytes a frame"}};
    for (const auto& row : cases) {
        WavParts parts{1, row.channels, row.rate, row.bits, row.blockAlign, {}, Pattern(24), {}};
        ExpectRefused(OpenWav, WavBytes(parts),
                      std::string("This format cannot be edited: ") + row.detail);
    }
}

TEST_F(HostileFilesTest, DamagedMarkersCostNoSound) {
    const FileBytes point(24, 1);
    const FileBytes twoPoints = Little(2) + point + point;
    const FileBytes cue = RiffChunkBytes("cue ", twoPoints);
    const auto list = [](const FileBytes& labels) {
        return RiffChunkBytes("LIST", BytesOf("adtl") + labels);
    };
    const auto label = [](std::uint32_t size, const FileBytes& content) {
        return BytesOf("labl") + Little(size) + content;
    };
    const FileBytes whole = label(6, Little(1) + BytesOf("ab"));
    const struct {
        FileBytes chunks;
        std::vector<std::string> names;  // of the markers that stay
    } cases[] = {
        {RiffChunkBytes("cue ", {1, 0}), {}},
        {RiffChunkBytes("cue ", Little(0xFFFFFFFF) + point), {""}},
        {RiffChunkBytes("cue ", Little(0x0AAAAAAB) + point), {""}},  // times 24 it wraps
        {RiffChunkBytes("cue ", Little(3) + point + point), {"", ""}},
        {RiffChunkBytes("cue ", Little(0x1000) + point) + BytesOf("no points"), {""}},
        {cue + list(label(0, Little(1))), {"", ""}},
        {cue + list(whole + label(3, Little(1))), {"ab", ""}},
        {cue + list(whole + label(6, {1, 0})), {"ab", ""}},
        {cue + list(whole + label(0x7FFFFFFF, Little(1))), {"ab", ""}},
        {cue + list(whole + label(0xFFFFFFFF, Little(1) + BytesOf("name"))), {"ab", ""}},
    };
    for (const auto& row : cases) {
        prompts.messages.clear();
        WavParts parts;
        parts.data = Pattern(100);
        parts.behindData = row.chunks;
        EXPECT_TRUE(Reads(OpenWav, WavBytes(parts)));
        EXPECT_EQ(prompts.messages, std::vector<std::string>{"마커 읽기 실패..."});
        EXPECT_EQ(SoundBytes(wave), Pattern(100));
        std::vector<std::string> names;
        for (const Marker& marker : wave.Markers().All()) names.push_back(marker.name);
        EXPECT_EQ(names, row.names);
        EXPECT_FALSE(wave.GetModified());
    }
}

TEST_F(HostileFilesTest, TruncatedWavsOpenWhenTheirSoundIsWhole) {
    Fill(1, 16, 8000, Pattern(64));
    wave.Markers().Add(3, "name", 0);
    const FileBytes good = WrittenBy(SaveWav);
    constexpr std::size_t kDataEnd = 108, kCueHeaderEnd = kDataEnd + 8, kEnd = 200;
    ASSERT_EQ(good.size(), kEnd);
    for (std::size_t size = 0; size <= kEnd; ++size) {
        SCOPED_TRACE(size);
        Fill(1, 16, 8000, {});
        prompts.messages.clear();
        const bool whole = size >= kDataEnd;
        EXPECT_EQ(Reads(OpenWav, Resized(good, size)), whole);
        EXPECT_EQ(SoundBytes(wave), whole ? Pattern(64) : FileBytes());
        EXPECT_EQ(progress.openWindows, 0);
        if (!whole) continue;
        EXPECT_EQ(wave.Markers().Count(), size >= kCueHeaderEnd + 28 ? 1u : 0u);
        const bool told = size >= kCueHeaderEnd && size < kEnd;
        EXPECT_EQ(prompts.messages.size(), told ? 1u : 0u);
    }
}

TEST_F(HostileFilesTest, ManyEmptyChunksAreQuick) {
    ByteBuilder many;
    for (int i = 0; i < 100'000; ++i) many.Text("none").Little32(0);
    WavParts parts;
    parts.beforeData = many.Bytes();
    parts.data = Pattern(100);
    AiffParts aiff;
    aiff.frames = 50;
    aiff.beforeCommon = many.Bytes();
    aiff.data = Pattern(100);
    const std::clock_t start = std::clock();
    EXPECT_TRUE(Reads(OpenWav, WavBytes(parts)));
    EXPECT_EQ(SoundBytes(wave), Pattern(100));
    EXPECT_TRUE(Reads(OpenAiff, AiffBytes(aiff)));
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC) << "of the processor's time";
}

// Else the search for a chunk would walk through the zeros for hours.
TEST_F(HostileFilesTest, FilesEndWhereTheirFormatsCountNoFurther) {
    const std::filesystem::path zeros = folder / "zeros";
    WriteFileBytes(zeros, {});
    std::filesystem::resize_file(zeros, std::uintmax_t{1} << 42);
    FileSource source;
    ASSERT_TRUE(source.Open(zeros));
    EXPECT_EQ(source.Size(), FileSource::kMostBytes);
    std::uint8_t byte = 0;
    EXPECT_EQ(source.ReadAt(FileSource::kMostBytes, {&byte, 1}), 0u);
    EXPECT_EQ(source.ReadAt(FileSource::kMostBytes - 1, {&byte, 1}), 1u);
}

TEST_F(HostileFilesTest, GigabytesOfZerosAreQuick) {
    AiffParts aiff;
    WavParts wav;
    const FileBytes format = RiffChunkBytes("fmt ", WavFormatBytes(wav));
    const FileBytes riff = ByteBuilder().Text("RIFF").Little32(0xFFFFFFFF).Text("WAVE").Bytes();
    const struct {
        FileAction read;
        FileBytes start;  // zeros follow
        const char* error;
    } cases[] = {
        {OpenWav, {}, "The file has no RIFF chunk of the form WAVE."},
        {OpenWav, riff, "The file has no fmt chunk."},
        {OpenWav, riff + format, "The file has no data chunk."},
        {OpenAiff, AiffFormBytes({}), "Missing COMM chunk in AIFF file"},
    };
    const std::clock_t start = std::clock();
    for (const auto& row : cases) {
        WriteFileBytes(folder / "in", row.start);
        std::filesystem::resize_file(folder / "in", FileSource::kMostBytes);
        EXPECT_FALSE(row.read(folder / "in", wave));
        EXPECT_EQ(wave.LastError(), row.error);
        ExpectUnchanged();
    }
    // Behind the sound they are no markers.
    wav.data = Pattern(100);
    WriteFileBytes(folder / "in", riff + format + RiffChunkBytes("data", wav.data));
    std::filesystem::resize_file(folder / "in", FileSource::kMostBytes);
    EXPECT_TRUE(OpenWav(folder / "in", wave));
    EXPECT_EQ(SoundBytes(wave), Pattern(100));
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC) << "of the processor's time";
}

TEST_F(HostileFilesTest, PathsThatAreNoReadableFiles) {
    const std::filesystem::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::filesystem::path& path : {folder.Path(), folder / "none", pipe}) {
        for (const FileAction read : {OpenWav, OpenAiff, OpenAu}) {
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
    const auto announcing = [&](std::uint32_t frames) {
        parts.frames = frames;
        return AiffBytes(parts);
    };
    const std::pair<FileBytes, const char*> cases[] = {
        {{}, "AIFF header does not begin with magic word FORM"},
        {Resized(good, 11), "AIFF 'FORM' chunk does specify 'AIFF' as type"},
        {Patched(good, 8, BytesOf("AIFC")), "AIFF 'FORM' chunk does specify 'AIFF' as type"},
        {Resized(good, 37), "EOF while reading IEEE extended number"},
        {AiffFormBytes(ByteBuilder().Text("SSND").Big32(8).Big32(0).Bytes()),
         "Missing COMM chunk in AIFF file"},
        {announcing(0x40000000), "Memory Allocation Failure."},
    };
    for (const auto& [bytes, text] : cases) ExpectRefused(OpenAiff, bytes, text);
}

TEST_F(HostileFilesTest, AiffFormatsThatCannotBeEdited) {
    const FileBytes eight = AiffParts{}.rate;
    const struct {
        unsigned channels, bits;
        FileBytes rate;
    } cases[] = {
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
    for (const auto& row : cases) {
        AiffParts parts{row.channels, 4, row.bits, row.rate, {}, Pattern(8)};
        EXPECT_FALSE(Reads(OpenAiff, AiffBytes(parts)));
        EXPECT_EQ(wave.LastError().find("This format cannot be edited: "), 0u);
        ExpectUnchanged();
    }
}

TEST_F(HostileFilesTest, AuHeadersThatLie) {
    AuParts parts;
    parts.behindHeader = Pattern(4 + 100);
    const FileBytes good = AuBytes(parts);
    for (const FileBytes& bytes :
         {FileBytes(), Resized(good, 23), Patched(good, 0, BytesOf("dns."))})
        ExpectRefused(OpenAu, bytes, "This is no Next/Sun audio file.");
    const struct {
        std::uint32_t AuParts::*field;
        std::vector<std::uint32_t> values;
        std::string text;  // in which # stands for the value
    } cases[] = {
        {&AuParts::offset, {0, 23, 129, 0xFFFFFFF0}, "Read Data Failure."},
        {&AuParts::size, {101, 0x40000000, 0xFFFFFFFE}, "Read Data Failure."},
        {&AuParts::encoding,
         {0, 4, 6, 23, 0xFFFFFFFF},
         "This Next/Sun encoding cannot be edited: #"},
        {&AuParts::channels, {0, 3, 0x10001}, "This format cannot be edited: # channels"},
        {&AuParts::rate,
         {0, 0xFFFFFFFF},
         "This format cannot be edited: 1 channels, 16-bit, 0,000 Hz, 2 bytes a frame"},
    };
    for (const auto& c : cases) {
        for (const std::uint32_t value : c.values) {
            AuParts lying = parts;
            lying.*c.field = value;
            std::string text = c.text;
            if (const auto at = text.find('#'); at != std::string::npos)
                text.replace(at, 1, std::to_string(value));
            ExpectRefused(OpenAu, AuBytes(lying), text);
        }
    }
}

}  // namespace
}  // namespace sonavel
