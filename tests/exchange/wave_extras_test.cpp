// What is taken out of RIFF files, wherever and however other programs write it.
#include <gmock/gmock.h>

#include "exchange_files.h"
#include "sound/marker_list.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

const FileBytes kTwoPoints = CuePointBytes(5, 40) + CuePointBytes(2, 10);
const FileBytes kLabels = LabelBytes(2, "two") + LabelBytes(5, "five!");
const Texts kTwoMarkers = {"10+0 two", "40+5 five!"};

TEST(WaveExtras, MarkersAreFoundByTheirIdsWhereverTheyStand) {
    const FileBytes cue = CueBytes(2, kTwoPoints);
    const FileBytes region = RegionTextBytes(5, 5);
    const struct {
        const char* what;
        FileBytes before, behind;
    } cases[] = {
        {"labels first", {}, cue + ListBytes("adtl", kLabels + region)},
        {"lengths first", {}, cue + ListBytes("adtl", region + kLabels)},
        {"list before the points", {}, ListBytes("adtl", region + kLabels) + cue},
        {"two lists", {}, ListBytes("adtl", region) + cue + ListBytes("adtl", kLabels)},
        {"before the sound", cue + ListBytes("adtl", kLabels + region), {}},
        {"on both sides", cue, ListBytes("adtl", kLabels + region)},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        const SoundExtras extras = ExtrasOf(WavWith(row.before, row.behind));
        EXPECT_EQ(MarkerTexts(extras), kTwoMarkers);
        EXPECT_THAT(extras.remarks.all, IsEmpty());
        EXPECT_THAT(extras.chunks, IsEmpty());
    }
}

// As the editor itself writes them: the size of the points without their count, and labels of odd
// length without a pad byte, in a list behind the end of the RIFF chunk.
TEST(WaveExtras, TheEditorsOwnFilesGiveAllTheirMarkers) {
    constexpr std::uint32_t kReadableFrame = 0x41414141;  // could be taken for a chunk's name
    const FileBytes cue = ByteBuilder().Text("cue ").Little32(48).Little32(2).Bytes() +
                          CuePointBytes(1, 10) + CuePointBytes(2, kReadableFrame);
    const FileBytes list = ByteBuilder()
                               .Text("LIST")
                               .Little32(64)
                               .Text("adtl")
                               .Text("ltxt")
                               .Little32(20)
                               .Little32(2)
                               .Little32(5)
                               .Text("rgn ")
                               .Little32(0)
                               .Little32(0)
                               .Text("labl")
                               .Little32(7)
                               .Little32(1)
                               .Text("two")
                               .Text("labl")
                               .Little32(9)
                               .Little32(2)
                               .Text("five!")
                               .Bytes();
    const SoundExtras extras = ExtrasOf(WavWith({}, {}) + cue + list);
    EXPECT_THAT(MarkerTexts(extras), ElementsAre("10+0 two", "1094795585+5 five!"));
    EXPECT_THAT(extras.remarks.all, ElementsAre("A pad byte is missing."));
}

TEST(WaveExtras, NamesStandInForLabels) {
    const FileBytes note = RiffChunkBytes("note", ByteBuilder().Little32(5).Text("a note").Bytes());
    const FileBytes text = RiffChunkBytes("ltxt", ByteBuilder()
                                                      .Little32(2)
                                                      .Little32(3)
                                                      .Text("rgn ")
                                                      .Little32(0)
                                                      .Little32(0)
                                                      .Text("spoken")
                                                      .Bytes());
    const SoundExtras extras =
        ExtrasOf(WavWith({}, CueBytes(2, kTwoPoints) + ListBytes("adtl", note + text)));
    EXPECT_THAT(MarkerTexts(extras), ElementsAre("10+3 spoken", "40+0 a note"));
}

TEST(WaveExtras, LoopsAreRegions) {
    ByteBuilder smpl;
    for (int i = 0; i < 7; ++i) smpl.Little32(0);
    smpl.Little32(3).Little32(0);
    smpl.Little32(0).Little32(0).Little32(20).Little32(29).Little32(0).Little32(0);
    smpl.Little32(0).Little32(0).Little32(5).Little32(5).Little32(0).Little32(0);
    const FileBytes chunk = RiffChunkBytes("smpl", smpl.Bytes());
    const SoundExtras extras = ExtrasOf(WavWith({}, chunk));
    EXPECT_THAT(MarkerTexts(extras), ElementsAre("5+1 Loop 2", "20+10 Loop 1"));
    EXPECT_THAT(extras.remarks.all, ElementsAre("The list of loops is cut short."));
    ASSERT_EQ(extras.chunks.size(), 1u);
    EXPECT_EQ(extras.chunks[0].bytes, smpl.Bytes());
}

TEST(WaveExtras, TagsAreTextOfAnyCoding) {
    const auto info = [](std::string_view id, std::string_view text) {
        return RiffChunkBytes(id, BytesOf(text));
    };
    const SoundExtras extras = ExtrasOf(WavWith(
        {}, ListBytes("INFO", info("INAM", "r\xC3\xA9sum\xC3\xA9") + info("IART", "Andr\xE9") +
                                  info("IPRD", "\xBC\xD2\xB8\xAE") + info("ICMT", "") +
                                  info("ISFT", "Maker "))));
    EXPECT_THAT(TagTexts(extras), ElementsAre("title=r\xC3\xA9sum\xC3\xA9", "artist=Andr\xC3\xA9",
                                              "album=\xEC\x86\x8C\xEB\xA6\xAC", "ISFT=Maker"));
}

TEST(WaveExtras, ForeignChunksStayAsTheyCameOnTheirSide) {
    FileBytes bext(602);
    std::copy_n("A field at dawn", 15, bext.begin());
    std::copy_n("2026-11-22", 10, bext.begin() + 320);
    const SoundExtras extras =
        ExtrasOf(WavWith(RiffChunkBytes("bext", bext) + RiffChunkBytes("JUNK", FileBytes(30)),
                         RiffChunkBytes("iXML", BytesOf("<x/>!")) +
                             RiffChunkBytes("PEAK", FileBytes(16)) + ListBytes("xyzw", {1, 2})));
    ASSERT_EQ(extras.chunks.size(), 3u);
    EXPECT_EQ(extras.chunks[0].id, MakeFourCc("bext"));
    EXPECT_EQ(extras.chunks[0].side, ChunkSide::kBeforeSound);
    EXPECT_EQ(extras.chunks[0].bytes, bext);
    EXPECT_EQ(extras.chunks[1].bytes, BytesOf("<x/>!"));
    EXPECT_EQ(extras.chunks[1].side, ChunkSide::kBehindSound);
    EXPECT_EQ(extras.chunks[2].bytes, BytesOf("xyzw\x01\x02"));
    EXPECT_THAT(TagTexts(extras), ElementsAre("comment=A field at dawn", "date=2026-11-22"));
}

TEST(WaveExtras, SalvagesAndSaysWhatIsWrong) {
    const FileBytes cue = CueBytes(2, kTwoPoints), list = ListBytes("adtl", kLabels);
    const Texts both = {"10+0 two", "40+0 five!"};
    FileBytes cut = WavWith({}, cue + list);
    cut.resize(cut.size() - 8);
    FileBytes longData = WavWith(cue + list, {});
    longData[longData.size() - 104] = 200;
    FileBytes openData = longData;
    std::fill_n(openData.end() - 104, 4, 0xFF);
    FileBytes noPad = RiffBytes(
        RiffChunkBytes("fmt ", WavFormatBytes({})) +
        ByteBuilder().Text("data").Little32(3).Byte(1).Byte(2).Byte(3).Bytes() + cue + list);
    FileBytes wrongSize = WavWith({}, cue + list);
    wrongSize[40] = 96;  // of the sound, which is 100 bytes
    const struct {
        const char* what;
        FileBytes bytes;
        Texts markers, remarks;
    } cases[] = {
        {"cut list",
         cut,
         {"10+0 two", "40+0 "},
         {"The file is shorter than it says.", "The chunk \"LIST\" ends early.",
          "The chunk \"labl\" ends early."}},
        {"cut points",
         WavWith({}, CueBytes(9, kTwoPoints) + list),
         both,
         {"The list of markers is cut short."}},
        {"cut sound", longData, both, {"The sound ends early."}},
        {"open sound", openData, both, {"The file does not say how long its sound is."}},
        {"no pad", noPad, both, {"A pad byte is missing."}},
        {"wrong size", wrongSize, both, {"The size of a chunk is wrong."}},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        const SoundExtras extras = ExtrasOf(row.bytes);
        EXPECT_EQ(MarkerTexts(extras), row.markers);
        EXPECT_EQ(extras.remarks.all, row.remarks);
    }
}

TEST(WaveExtras, Rf64AndW64AreWalkedByTheirLongSizes) {
    const FileBytes tail = CueBytes(2, kTwoPoints) + ListBytes("adtl", kLabels);
    const FileBytes rf64 = ByteBuilder()
                               .Text("RF64")
                               .Little32(0xFFFFFFFF)
                               .Text("WAVEds64")
                               .Little32(28)
                               .Little32(1000)
                               .Little32(0)
                               .Little32(6)
                               .Little32(0)
                               .Little32(3)
                               .Little32(0)
                               .Little32(0)
                               .Text("data")
                               .Little32(0xFFFFFFFF)
                               .Bytes() +
                           FileBytes(6) + tail;
    EXPECT_EQ(MarkerTexts(ExtrasOf(rf64)), (Texts{"10+0 two", "40+0 five!"}));

    const FileBytes suffix = {0xF3, 0xAC, 0xD3, 0x11, 0x8C, 0xD1, 0, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A};
    const FileBytes listSuffix = {0x2F, 0x91, 0xCF, 0x11, 0xA5, 0xD6, 0x28, 0xDB, 4, 0xC1, 0, 0};
    const auto chunk = [](std::string_view id, const FileBytes& guidTail,
                          const FileBytes& content) {
        FileBytes bytes = BytesOf(id) + guidTail +
                          ByteBuilder()
                              .Little32(static_cast<std::uint32_t>(24 + content.size()))
                              .Little32(0)
                              .Bytes() +
                          content;
        bytes.resize((bytes.size() + 7) / 8 * 8);
        return bytes;
    };
    FileBytes riffSuffix = listSuffix;
    riffSuffix[0] = 0x2E;
    const FileBytes points = ByteBuilder().Little32(2).Bytes() + kTwoPoints;
    const FileBytes w64 = chunk("riff", riffSuffix, BytesOf("wave") + suffix) +
                          chunk("data", suffix, FileBytes(5)) + chunk("cue ", suffix, points) +
                          chunk("list", listSuffix, BytesOf("adtl") + kLabels);
    EXPECT_EQ(MarkerTexts(ExtrasOf(w64)), (Texts{"10+0 two", "40+0 five!"}));
}

TEST(WaveExtras, HostileSizesAreBounded) {
    FileBytes lists;
    for (const char c : std::string("ABCDEFGHIJKLMNOPQRST"))
        lists = lists +
                ListBytes("INFO", RiffChunkBytes(std::string("IXX") + c, FileBytes(900'000, 'x')));
    const SoundExtras many = ExtrasOf(WavWith({}, lists));
    std::size_t kept = 0;
    for (const SoundTag& tag : many.tags) kept += tag.value.size();
    EXPECT_LE(kept, kMostTagBytesOfFile);
    EXPECT_GT(kept, kMostTagBytesOfFile / 2);

    const SoundExtras large =
        ExtrasOf(WavWith(RiffChunkBytes("huge", FileBytes(kMostTagBytes + 1)), {}));
    EXPECT_THAT(large.chunks, IsEmpty());
    EXPECT_THAT(large.remarks.all, ElementsAre("A chunk of more than 1 MiB is left out."));

    const FileBytes points(24 * (kMostMarkers + 3));
    EXPECT_LE(ExtrasOf(WavWith({}, CueBytes(kMostMarkers + 3, points))).markers.size(),
              kMostMarkers);
}

TEST(WaveExtras, MarkersFitTheSoundThatTheyAreGivenTo) {
    SoundExtras extras;
    extras.markers = {{0, 10, "all"}, {8, 5, "over"}, {10, 0, ""}, {11, 0, "gone"}};
    const MarkerList list = MarkersOf(extras, 10);
    ASSERT_EQ(list.Count(), 3u);
    EXPECT_EQ(list.All()[0].length, 10u);
    EXPECT_EQ(list.All()[1].length, 2u);
    EXPECT_EQ(list.All()[2].name, "Marker 3");
    EXPECT_THAT(extras.remarks.all,
                ElementsAre("Markers behind the end of the sound are left out."));
}

}  // namespace
}  // namespace sonavel
