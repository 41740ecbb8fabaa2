#include <tuple>

#include "sound/four_cc.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

using MarkerRow = std::tuple<std::uint32_t, std::string, std::uint32_t>;  // with its length

std::vector<MarkerRow> MarkerRows(const CWave& sound) {
    std::vector<MarkerRow> rows;
    for (const Marker& marker : sound.Markers().All())
        rows.emplace_back(marker.position, marker.name, marker.length);
    return rows;
}

constexpr const char* kMarkerMessage = "마커 읽기 실패...";

using WavFileTest = WaveTest;

FileBytes CuePoint(std::uint32_t id, std::uint32_t position, std::uint32_t chunkStart = 0,
                   std::uint32_t blockStart = 0) {
    return ByteBuilder()
        .Little32(id)
        .Little32(position)
        .Text("data")
        .Little32(chunkStart)
        .Little32(blockStart)
        .Little32(position)
        .Bytes();
}

FileBytes CueChunk(const std::vector<FileBytes>& points) {
    FileBytes content = ByteBuilder().Little32(static_cast<std::uint32_t>(points.size())).Bytes();
    for (const FileBytes& point : points) content = content + point;
    return RiffChunkBytes("cue ", content);
}

FileBytes Label(std::uint32_t id, std::string_view text) {
    return RiffChunkBytes("labl", ByteBuilder().Little32(id).Text(text).Bytes());
}

FileBytes LabeledText(std::uint32_t id, std::uint32_t length, std::string_view purpose = "rgn ") {
    return RiffChunkBytes("ltxt", ByteBuilder()
                                      .Little32(id)
                                      .Little32(length)
                                      .Text(purpose)
                                      .Little32(82)
                                      .Little32(949)
                                      .Bytes());
}

FileBytes AssociatedData(const FileBytes& chunks) {
    return RiffChunkBytes("LIST", BytesOf("adtl") + chunks);
}

TEST_F(WavFileTest, WritesTheHeaderAndTheDataWithoutAPadByte) {
    Fill(1, 8, 11025, {1, 2, 3});
    wave.SetModified(true);
    const FileBytes expected = {'R',  'I',  'F', 'F', 39,   0,    0, 0, 'W', 'A', 'V', 'E',
                                'f',  'm',  't', ' ', 16,   0,    0, 0, 1,   0,   1,   0,
                                0x11, 0x2B, 0,   0,   0x11, 0x2B, 0, 0, 1,   0,   8,   0,
                                'd',  'a',  't', 'a', 3,    0,    0, 0, 1,   2,   3};
    EXPECT_EQ(WrittenBy(SaveWav), expected);
    EXPECT_FALSE(wave.GetModified());
    EXPECT_EQ(progress.titles, std::vector<std::string>{"Write sound file"});
    EXPECT_EQ(progress.openWindows, 0);
}

TEST_F(WavFileTest, WritesMarkersWithTheSizesThatFilesAlwaysHad) {
    Fill(2, 16, 8000, Pattern(8));
    wave.Markers().Add(1, "ab", 0);
    wave.Markers().Add(2, "xyz", 7);
    const FileBytes file = WrittenBy(SaveWav);
    const FileBytes cue = ByteBuilder().Text("cue ").Little32(48).Little32(2).Bytes() +
                          CuePoint(1, 1) + CuePoint(2, 2);
    const auto text = [](std::uint32_t id, std::uint32_t length) {
        ByteBuilder record;
        record.Text("ltxt").Little32(20).Little32(id).Little32(length).Text("rgn ");
        return record.Little32(0).Little32(0).Bytes();
    };
    const FileBytes list =
        ByteBuilder().Text("LIST").Little32(4 + 2 * 28 + 14 + 15 + 1).Text("adtl").Bytes() +
        text(1, 0) + text(2, 7) +
        ByteBuilder().Text("labl").Little32(6).Little32(1).Text("ab").Bytes() +
        ByteBuilder().Text("labl").Little32(7).Little32(2).Text("xyz").Byte(0).Bytes();
    EXPECT_EQ(FileBytes(file.begin() + 52, file.end()), cue + list);
    EXPECT_EQ(LoadLittle32(&file[4]), 44 + 8 + 12 + 2 * 24 - 8u);
}

TEST_F(WavFileTest, BringsBackTheSoundAndOfTheMarkersWhatItsFilesAlwaysKept) {
    const struct {
        const char* name;
        std::size_t dataBytes;
        std::vector<MarkerRow> written, readBack;
        std::size_t messages;
    } cases[] = {
        // The texts lie before the labels, behind which they are looked for.
        {"lengths are lost",
         20000,
         {{17, "first!", 9}, {4000, "odd", 0}},
         {{17, "first!", 0}, {4000, "odd", 0}},
         0},
        {"a label of odd length hides those behind it",
         200,
         {{5, "even", 0}, {5, "odd", 0}, {5, "lost", 0}},
         {{5, "even", 0}, {5, "odd", 0}, {5, "", 0}},
         1},
        {"an odd number of data bytes hides all markers", 7, {{5, "gone", 0}}, {}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        prompts.messages.clear();
        Fill(1, 8, 44100, Pattern(c.dataBytes));
        for (const auto& [position, name, length] : c.written)
            wave.Markers().Add(position, name, length);
        ASSERT_TRUE(SaveWav(folder / "a.wav", wave));
        CWave other(prompts, progress);
        ASSERT_TRUE(OpenWav(folder / "a.wav", other));
        EXPECT_EQ(SoundBytes(other), Pattern(c.dataBytes));
        EXPECT_EQ(other.GetFormat(), wave.GetFormat());
        EXPECT_EQ(MarkerRows(other), c.readBack);
        for (const Marker& marker : other.Markers().All()) EXPECT_EQ(marker.purpose, 0u);
        EXPECT_EQ(prompts.messages, std::vector<std::string>(c.messages, kMarkerMessage));
    }
}

TEST_F(WavFileTest, ReadsMarkersOfOtherPrograms) {
    WavParts parts;
    parts.beforeData = RiffChunkBytes("LIST", BytesOf("INFOISFT") + FileBytes{1, 0, 0, 0, 'x', 0});
    parts.data = Pattern(200);
    const std::string korean = "\xB8\xB6\xC4\xBF";  // code page 949
    parts.behindData = CueChunk({CuePoint(7, 10), CuePoint(9, 20), CuePoint(11, 30, 5, 6)}) +
                       RiffChunkBytes("junk", {1}) +
                       AssociatedData(Label(7, std::string("null\0tail", 9)) + Label(99, korean) +
                                      RiffChunkBytes("note", {1, 2, 3}) + Label(11, "") +
                                      LabeledText(1, 100) + LabeledText(3, 300, "trim"));
    ASSERT_TRUE(Reads(OpenWav, WavBytes(parts)));
    EXPECT_EQ(MarkerRows(wave),
              (std::vector<MarkerRow>{{10, "null", 100}, {20, korean, 0}, {30, "", 300}}));
    const Marker& last = wave.Markers().All()[2];
    EXPECT_EQ(last.chunkStart, 5u);
    EXPECT_EQ(last.blockStart, 6u);
    EXPECT_EQ(last.purpose, MakeFourCc("trim"));
    EXPECT_EQ(last.countryAndLanguage, 82u);
    EXPECT_EQ(last.dialectAndCodePage, 949u);
    EXPECT_EQ(wave.Markers().All()[1].labelId, 99u) << "labels go by order, not by id";
    EXPECT_EQ(wave.Markers().All()[1].textId, 2u);
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_FALSE(wave.GetModified());
    // The purpose is written as it was read; without a text it was 0.
    const FileBytes written = WrittenBy(SaveWav);
    const std::string text(written.begin(), written.end());
    for (const auto& [id, purpose] : {std::pair{1, "rgn "}, {2, "\0\0\0\0"}, {3, "trim"}}) {
        const std::string record = std::string("ltxt\x14\0\0\0", 8) + char(id);
        EXPECT_EQ(text.substr(text.find(record) + 16, 4), std::string(purpose, 4)) << id;
    }
}

TEST_F(WavFileTest, TextRecordsMustAscendWithinTheMarkers) {
    for (const std::uint32_t second : {1u, 2u, 0u, 3u, 0xFFFFFFFFu}) {
        WavParts parts;
        parts.behindData = CueChunk({CuePoint(1, 10), CuePoint(2, 20)}) +
                           AssociatedData(Label(1, "a ") + Label(2, "b ") + LabeledText(2, 12) +
                                          LabeledText(second, 99));
        ASSERT_TRUE(Reads(OpenWav, WavBytes(parts)));
        EXPECT_EQ(MarkerRows(wave), (std::vector<MarkerRow>{{10, "a ", 0}, {20, "b ", 12}}))
            << second;
    }
}

TEST_F(WavFileTest, MissingListsAndLabelsAreToldAndTheSoundOpens) {
    const FileBytes cue = CueChunk({CuePoint(1, 10), CuePoint(2, 20)});
    FileBytes lying = cue;
    lying[8] = 200;  // points are said to be there; what follows the chunk is none
    for (const FileBytes& behind :
         {cue, lying + RiffChunkBytes("LIST", FileBytes(40, 1)),
          AssociatedData(Label(1, "a")) + cue, cue + AssociatedData(Label(1, "a")),
          cue + RiffChunkBytes("LIST", BytesOf("INFO")),
          // The search for labels ends with their list.
          cue + AssociatedData({}) + Label(1, "a") + Label(2, "b")}) {
        prompts.messages.clear();
        WavParts parts;
        parts.data = Pattern(10);
        parts.behindData = behind;
        EXPECT_TRUE(Reads(OpenWav, WavBytes(parts)));
        EXPECT_EQ(prompts.messages, std::vector<std::string>{kMarkerMessage});
        EXPECT_EQ(MarkerRows(wave).size(), 2u);
        EXPECT_EQ(MarkerRows(wave).at(1), MarkerRow(20, "", 0));
        EXPECT_EQ(SoundBytes(wave), Pattern(10));
    }
}

TEST_F(WavFileTest, ProgressFollowsTheRuleOfSmallBlocks) {
    // One piece of 1 MiB at a time; the position is that before the last whole block.
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    const std::pair<std::size_t, std::vector<int>> cases[] = {{100, {}},
                                                              {2048, {0}},
                                                              {4096, {50}},
                                                              {6000, {34}},
                                                              {3 * kPiece, {33, 67, 100}},
                                                              {2 * kPiece + 100, {50, 100, 100}}};
    for (const auto& [bytes, positions] : cases) {
        SCOPED_TRACE(bytes);
        WavParts parts;
        parts.data = FileBytes(bytes);
        progress.positions.clear();
        ASSERT_TRUE(Reads(OpenWav, WavBytes(parts)));
        EXPECT_EQ(progress.positions, positions);
        EXPECT_EQ(progress.titles.back(), "Read sound file");
        progress.positions.clear();
        WrittenBy(SaveWav);
        EXPECT_EQ(progress.positions, positions);
    }
}

TEST_F(WavFileTest, CancellingLeavesSoundAndFileAsTheyWere) {
    Fill(1, 16, 8000, Pattern(5 << 20));
    ASSERT_TRUE(SaveWav(folder / "big.wav", wave));
    Fill(1, 16, 8000, Pattern(3 << 20));
    wave.SetModified(true);
    progress.cancelAtPoll = progress.polls + 1;
    EXPECT_FALSE(OpenWav(folder / "big.wav", wave));
    EXPECT_FALSE(SaveWav(folder / "big.wav", wave));
    EXPECT_EQ(wave.GetDataSize(), 3u << 20);
    EXPECT_TRUE(wave.GetModified());
    EXPECT_EQ(std::filesystem::file_size(folder / "big.wav"), 44u + (5 << 20));
    EXPECT_EQ(folder.FileCount(), 1u);
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_EQ(progress.openWindows, 0);
}

TEST_F(WavFileTest, ASaveWithoutMarkersWritesTheFileAndFails) {
    Fill(1, 8, 8000, Pattern(4));
    wave.Markers().Add(1, "m", 0);
    wave.SetModified(true);
    EXPECT_FALSE(wave.Save(folder / "out.wav", MarkerSaving::kOff));
    EXPECT_TRUE(wave.GetModified());
    EXPECT_TRUE(prompts.messages.empty());
    const FileBytes file = ReadFileBytes(folder / "out.wav");
    EXPECT_EQ(file.size(), 48u);
    EXPECT_EQ(LoadLittle32(&file[4]), 40u);
}

TEST_F(WavFileTest, AnEmptySoundIsAFileToo) {
    Fill(2, 16, 44100, {});
    const FileBytes file = WrittenBy(SaveWav);
    EXPECT_EQ(file.size(), 44u);
    EXPECT_TRUE(Reads(OpenWav, file));
    EXPECT_FALSE(wave.HasData());
    EXPECT_EQ(wave.GetChannels(), 2u);
}

FileBytes ExtensibleFormat(const WavParts& parts, unsigned subFormat) {
    FileBytes bytes = WavFormatBytes(parts);
    bytes[0] = 0xFE;
    bytes[1] = 0xFF;
    return bytes + ByteBuilder()
                       .Little16(22)
                       .Little16(parts.bits)
                       .Little32(3)
                       .Little32(subFormat)
                       .Little32(0x00100000)
                       .Little32(0xAA000080)
                       .Little32(0x719B3800)
                       .Bytes();
}

TEST_F(WavFileTest, PlainPcmInAnExtensibleHeaderIsPlainPcm) {
    const struct {
        unsigned channels, bits, subFormat;
        std::size_t formatBytes;
        bool pcm;
    } cases[] = {{1, 8, 1, 40, true},   {2, 8, 1, 40, true},      {1, 16, 1, 40, true},
                 {2, 16, 1, 40, true},  {2, 16, 1, 48, true},     {2, 16, 3, 40, false},
                 {2, 24, 1, 40, false}, {6, 16, 1, 40, false},    {2, 16, 1, 39, false},
                 {2, 16, 1, 18, false}, {2, 16, 0x101, 40, false}};
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::Message() << row.channels << " channels, " << row.bits << " bits, "
                                          << row.subFormat << ", " << row.formatBytes << " bytes");
        WavParts parts;
        parts.channels = row.channels;
        parts.bits = row.bits;
        parts.blockAlign = row.channels * row.bits / 8;
        FileBytes format = ExtensibleFormat(parts, row.subFormat);
        format.resize(row.formatBytes);
        WriteFileBytes(folder / "in", RiffBytes(RiffChunkBytes("fmt ", format) +
                                                RiffChunkBytes("data", Pattern(24))));
        Fill(1, 8, 11025, {});
        EXPECT_EQ(wave.IsPCM(folder / "in"), row.pcm);
        EXPECT_EQ(OpenWav(folder / "in", wave), row.pcm);
        EXPECT_EQ(SoundBytes(wave), row.pcm ? Pattern(24) : FileBytes());
        if (row.pcm) {
            EXPECT_EQ(wave.GetFormat(), MakePcmFormat(row.channels, row.bits, 8000));
        }
    }
}

TEST_F(WavFileTest, FieldsOfZeroAreDerived) {
    WavParts parts;
    parts.channels = 2;
    parts.blockAlign = 0;  // and with it the bytes per second
    parts.data = Pattern(24);
    ASSERT_TRUE(Reads(OpenWav, WavBytes(parts)));
    EXPECT_EQ(wave.GetFormat(), MakePcmFormat(2, 16, 8000));
    EXPECT_EQ(wave.GetFrameCount(), 6u);
}

TEST_F(WavFileTest, AnUnknownSizeMeansToTheEndOfTheFile) {
    WavParts parts;
    parts.data = Pattern(101);
    FileBytes piped = WavBytes(parts);
    piped.pop_back();  // the pad byte
    for (const std::size_t size : {4u, 40u})
        std::fill_n(piped.begin() + static_cast<std::ptrdiff_t>(size), 4, std::uint8_t{0xFF});
    ASSERT_TRUE(Reads(OpenWav, piped));
    EXPECT_EQ(SoundBytes(wave), Pattern(101));
    EXPECT_TRUE(prompts.messages.empty());
    piped.resize(44);
    ASSERT_TRUE(Reads(OpenWav, piped));
    EXPECT_FALSE(wave.HasData());
    // Sound that no sound may hold is refused before memory is taken.
    std::filesystem::resize_file(folder / "in", std::uintmax_t{44} + kMaxSoundBytes + 1);
    EXPECT_FALSE(OpenWav(folder / "in", wave));
    EXPECT_EQ(wave.LastError(), "Memory Allocation Failure.");
}

TEST_F(WavFileTest, ProbingTellsPcmAndLeavesTheSoundAlone) {
    Fill(1, 8, 8000, Pattern(4));
    WavParts parts;
    parts.channels = 2;
    WriteFileBytes(folder / "pcm.wav", WavBytes(parts));
    parts.tag = 65534;
    WriteFileBytes(folder / "extensible.wav", WavBytes(parts));
    EXPECT_TRUE(wave.IsPCM(folder / "pcm.wav"));
    EXPECT_TRUE(wave.Open(folder / "extensible.wav", WavOpenMode::kProbe));
    EXPECT_FALSE(wave.IsPCM(folder / "extensible.wav"));
    EXPECT_EQ(wave.LastError(), "This format cannot be edited: [65534] (unknown)");
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_EQ(wave.GetFormat(), MakePcmFormat(1, 8, 8000));
    EXPECT_EQ(SoundBytes(wave), Pattern(4));
    EXPECT_FALSE(wave.IsPCM(folder / "none.wav"));
}

}  // namespace
}  // namespace sonavel
