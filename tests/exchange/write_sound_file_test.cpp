// Whole files, also as other programs read them.
#include "exchange/write_sound_file.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>

#include "exchange/export_losses.h"
#include "exchange_files.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using testing::IsEmpty;
using enum SoundFileKind;

class RampSource : public FrameSource {
  public:
    Outcome Give(std::span<std::uint8_t> to) override {
        if (fails) return Failed("There is no more.");
        for (std::uint8_t& byte : to) byte = static_cast<std::uint8_t>(next_++ * 7);
        return Done();
    }
    GoOn Watch() override { return stops ? GoOn::kNo : GoOn::kYes; }

    bool fails = false;
    bool stops = false;

  private:
    unsigned next_ = 0;
};

class WriteSoundFileTest : public ::testing::Test {
  protected:
    static EncodeRequest Request(SoundFileKind kind, EncodedDepth depth) {
        EncodeRequest request;
        request.kind = kind;
        request.depth = depth;
        request.rate = 22050;
        request.channels = 1;
        request.frames = 1'000'001;
        return request;
    }
    static SoundExtras Extras() {
        SoundExtras extras;
        extras.markers = {{10, 0, "one"}, {20, 5, "two!"}};
        extras.tags = {{"title", "T"}, {"album", "A"}};
        extras.chunks = {{ChunkFamily::kRiff, MakeFourCc("iXML"), ChunkSide::kBehindSound, {1}}};
        return extras;
    }

    // The program says nothing, and what it puts out passes.
    void Expect(const std::string& program, const std::string& check) {
        const std::string said = (folder / "said").string();
        EXPECT_EQ(std::system((program + " 2>" + said + check).c_str()), 0) << program;
        const FileBytes text = ReadFileBytes(said);
        EXPECT_EQ(std::string(text.begin(), text.end()), "");
    }

    TemporaryFolder folder;
    RampSource source;
};

TEST_F(WriteSoundFileTest, OtherProgramsReadThemWithoutAWarning) {
    if (std::system("command -v sox ffmpeg >/dev/null") != 0) GTEST_SKIP() << "no sox or ffmpeg";
    FileBytes expected(2'000'002);
    ASSERT_TRUE(source.Give(expected));
    WriteFileBytes(folder / "expected", expected);
    for (const SoundFileKind kind : {kWav, kAiff, kAu, kRf64})
        for (const EncodedDepth depth :
             {EncodedDepth::k8, EncodedDepth::k16, EncodedDepth::k24, EncodedDepth::kFloat32}) {
            const char* name = kind == kWav    ? "a.wav"
                               : kind == kRf64 ? "b.wav"
                               : kind == kAiff ? "a.aiff"
                                               : "a.au";
            SCOPED_TRACE(::testing::Message() << name << " " << static_cast<int>(depth));
            const std::string path = (folder / name).string();
            RampSource ramp;
            ASSERT_TRUE(WriteSoundFile(path, Request(kind, depth), Extras(), ramp));
            // Eight bits do not hold what is compared with; there all frames must come.
            const std::string compare = depth == EncodedDepth::k8
                                            ? " | wc -c | grep -qx 2000002"
                                            : " | cmp - " + (folder / "expected").string();
            // sox knows no RF64.
            if (kind != kRf64) Expect("sox " + path + " -D -t raw -e signed -b 16 -", compare);
            // It warns of every file that names no speakers, unless it is told not to guess them.
            Expect("ffmpeg -v warning -guess_layout_max 0 -i " + path + " -f s16le -", compare);
        }
}

TEST_F(WriteSoundFileTest, FailureAndCancelLeaveTheOldFile) {
    WriteFileBytes(folder / "old", BytesOf("old"));
    const EncodeRequest request = Request(kWav, EncodedDepth::k16);
    source.stops = true;
    EXPECT_TRUE(WriteSoundFile(folder / "old", request, {}, source).IsCancelled());
    source.stops = false, source.fails = true;
    EXPECT_EQ(WriteSoundFile(folder / "old", request, {}, source).Reason(), "There is no more.");
    EXPECT_TRUE(WriteSoundFile(folder / "none" / "x", request, {}, source).IsFailed());
    EXPECT_TRUE(
        WriteSoundFile(folder / "old", Request(kMp3, EncodedDepth::k16), {}, source).IsFailed());
    EXPECT_EQ(ReadFileBytes(folder / "old"), BytesOf("old"));
    EXPECT_EQ(folder.FileCount(), 1u);
}

TEST_F(WriteSoundFileTest, AFileOfAnySizeIsReadFromTheDisk) {
    const EncodeRequest request = Request(kWav, EncodedDepth::k24);
    ASSERT_TRUE(WriteSoundFile(folder / "x", request, Extras(), source));
    BytesOfFile file;
    ASSERT_TRUE(file.Open(folder / "x"));
    const Result<SoundExtras> got = ReadExtras(file, request.rate);
    ASSERT_TRUE(got);
    EXPECT_EQ(*got, Extras());
    EXPECT_FALSE(BytesOfFile().Open(folder.Path()));
    EXPECT_FALSE(BytesOfFile().Open(folder / "none"));
}

// The other way round: tags and chapters as another program writes them.
TEST_F(WriteSoundFileTest, OtherProgramsFilesGiveTheirTagsAndChapters) {
    if (std::system("command -v ffmpeg >/dev/null") != 0) GTEST_SKIP() << "no ffmpeg";
    const std::string meta = (folder / "meta").string();
    WriteFileBytes(meta, BytesOf(";FFMETADATA1\ntitle=W\xC3\xBCrfel\nartist=Us\n"
                                 "[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=1000\ntitle=First\n"
                                 "[CHAPTER]\nTIMEBASE=1/1000\nSTART=1000\nEND=2000\ntitle=Two\n"));
    const struct {
        const char* name;
        std::vector<std::string> markers;
    } cases[] = {{"a.mp3", {"0+48000 First", "48000+48000 Two"}},
                 {"a.ogg", {}},
                 {"a.opus", {"0+0 First", "48000+0 Two"}},
                 {"a.flac", {}},
                 {"a.wav", {}}};
    for (const auto& row : cases) {
        const std::string path = (folder / row.name).string();
        ASSERT_EQ(std::system(("ffmpeg -v error -f lavfi -i sine=d=2:r=48000 -i " + meta +
                               " -map_metadata 1 -map_chapters 1 " + path)
                                  .c_str()),
                  0);
        const SoundExtras extras = ExtrasOf(ReadFileBytes(path), 48000);
        EXPECT_EQ(MarkerTexts(extras), row.markers) << row.name;
        const std::vector<std::string> tags = TagTexts(extras);
        for (const char* tag : {"title=W\xC3\xBCrfel", "artist=Us"})
            EXPECT_EQ(std::ranges::count(tags, tag), 1) << row.name;
        EXPECT_THAT(extras.remarks.all, IsEmpty()) << row.name;
    }
}

TEST(ExportLosses, AreNamed) {
    SoundExtras extras;
    EXPECT_THAT(LossesOf(kAu, 8000, extras), IsEmpty());
    extras.markers = {{1, 2, "x"}};
    extras.tags = {{"title", "x"}, {"album", "x"}, {"mood", "x"}};
    extras.chunks = {{ChunkFamily::kAiff, MakeFourCc("APPL"), ChunkSide::kBehindSound, {}}};
    EXPECT_THAT(LossesOf(kWav, 8000, extras),
                ElementsAre("The tags mood cannot be written to a WAV file",
                            "Chunks of another format cannot be written to a WAV file"));
    EXPECT_THAT(LossesOf(kAiff, 8000, extras),
                ElementsAre("The lengths of regions cannot be written to an AIFF file",
                            "The tags album, mood cannot be written to an AIFF file"));
    EXPECT_THAT(LossesOf(kAu, 8000, extras),
                ElementsAre("Markers cannot be written to an AU file",
                            "Chunks of another format cannot be written to an AU file"));
    EXPECT_THAT(LossesOf(kMp3, 96000, extras),
                ElementsAre("Chunks of another format cannot be written to an MP3 file",
                            "The sound is resampled to 48,000 Hz"));
    EXPECT_THAT(LossesOf(kOpus, 11025, extras),
                ElementsAre("The lengths of regions cannot be written to an Opus file",
                            "Chunks of another format cannot be written to an Opus file",
                            "The sound is resampled to 12,000 Hz"));
}

}  // namespace
}  // namespace sonavel
