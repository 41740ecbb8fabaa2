// Exports by the codec program, with tags and chapters: read back by import and by another program.
#include <gmock/gmock.h>

#include <cstdio>
#include <memory>

#include "codec_fixture.h"
#include "exchange/sound_export.h"
#include "exchange/sound_import.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using enum SoundFileKind;

class TaggedExportTest : public CodecTest {
  protected:
    // A sine of half scale on one channel.
    static Sound Tone(std::uint32_t rate, std::uint32_t frames, double hertz) {
        Sound sound;
        EXPECT_TRUE(sound.Create(1, 32, rate, frames));
        auto floats = SamplesOf<FloatSample>(sound.MutableBytes());
        for (std::size_t i = 0; i < floats.size(); ++i)
            floats[i] = static_cast<float>(
                0.5 * std::sin(2 * 3.14159265358979 * hertz * static_cast<double>(i) / rate));
        return sound;
    }

    ImportedSound ExportAndRead(const Sound& sound, SoundFileKind kind, const SoundExtras& extras) {
        ExportChoice choice;
        choice.kind = kind;
        choice.frames = {0, sound.GetFrameCount()};
        const Outcome done = ExportSound(path, sound, extras, choice, &codecs, {});
        EXPECT_TRUE(done) << done.Reason();
        EXPECT_EQ(folder.FileCount(), 1u);
        Result<ImportedSound> read = ImportSound(path, &codecs, {}, {});
        EXPECT_TRUE(read) << read.Reason();
        return read ? std::move(*read) : ImportedSound{};
    }

    static std::vector<std::string> TextsOf(const MarkerList& markers) {
        std::vector<std::string> texts;
        for (const Marker& marker : markers.All())
            texts.push_back(std::to_string(marker.position) + "+" + std::to_string(marker.length) +
                            " " + marker.name);
        return texts;
    }

    static std::string OutputOf(const std::string& command) {
        std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
        std::string output;
        char piece[4096];
        while (const std::size_t got = std::fread(piece, 1, sizeof piece, pipe.get()))
            output.append(piece, got);
        return output;
    }

    std::filesystem::path path = folder / "sound";
};

TEST_F(TaggedExportTest, TagsAndChaptersComeBack) {
    Sound sound = Tone(48000, 96000, 440);
    sound.Markers().Add(0, "First = 1", 0);
    sound.Markers().Add(4801, "Near", 0);  // between two milliseconds
    sound.Markers().Add(48000, "Region", 24000);
    SoundExtras extras;
    extras.tags = {{"title", "W\xC3\xBCrfel"},
                   {"artist", "Us"},
                   {"comment", "two\nlines"},
                   {"copyright", "Me"},
                   {"track", "3"},
                   {"genre", "Noise"},
                   {"mood", "low"},
                   {"date", "2026"},
                   {"album", "An album"}};
    for (const SoundFileKind kind : {kFlac, kOggVorbis, kOpus, kMp3}) {
        SCOPED_TRACE(static_cast<int>(kind));
        const ImportedSound read = ExportAndRead(sound, kind, extras);
        EXPECT_EQ(read.sound.GetFrameCount(), 96000u);
        const bool isMp3 = kind == kMp3;
        EXPECT_THAT(TextsOf(read.sound.Markers()),
                    ElementsAre("0+0 First = 1", isMp3 ? "4800+0 Near" : "4801+0 Near",
                                isMp3 ? "48000+24000 Region" : "48000+0 Region"));
        for (const SoundTag& tag : extras.tags)
            EXPECT_EQ(std::ranges::count(read.extras.tags, tag), 1) << tag.key;
        EXPECT_THAT(read.extras.remarks.all, IsEmpty());
    }
}

// Of every kind, also by those that read markers: what is odd in a file makes them say something.
TEST_F(TaggedExportTest, EveryKindIsReadByOthersWithItsMarkers) {
    if (!HasProgram("ffmpeg") || !HasProgram("sox")) GTEST_SKIP() << "no ffmpeg or no sox";
    Sound sound = Tone(48000, 48001, 440);
    sound.Markers().Add(4800, "Point", 0);
    sound.Markers().Add(9600, "Region", 4800);
    SoundExtras extras;
    extras.tags = {{"title", "T"}, {"comment", "odd"}};
    const struct {
        SoundFileKind kind;
        const char* extension;
        const char* ffmpegLevel;
        const char* soxFrames;  // none where it knows no such file
        std::size_t cuePoints;  // that the sound library finds
    } rows[] = {{kWav, "wav", "warning", "48001\n", 2},
                {kRf64, "rf64", "warning", "", 0},
                {kAiff, "aiff", "warning", "48001\n", 2},
                {kAu, "au", "warning", "48001\n", 0},
                // ffmpeg warns of all files of these two kinds, its own among them.
                {kW64, "w64", "error", "48001\n", 0},
                {kCaf, "caf", "error", "48001\n", 0},
                {kFlac, "flac", "warning", "48001\n", 0},
                {kOggVorbis, "ogg", "warning", "48001\n", 0},
                {kOpus, "opus", "warning", "", 0},
                // sox counts what encoder and decoder add.
                {kMp3, "mp3", "warning", "49536\n", 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.extension);
        path = folder / (std::string("sound.") + row.extension);
        const ImportedSound read = ExportAndRead(sound, row.kind, extras);
        EXPECT_EQ(read.sound.GetFrameCount(), 48001u);
        const std::string file = path.string();
        EXPECT_EQ(OutputOf(std::string("ffmpeg -guess_layout_max 0 -xerror -v ") + row.ffmpegLevel +
                           " -i " + file + " -f null - 2>&1"),
                  "");
        if (*row.soxFrames != 0) {
            EXPECT_EQ(OutputOf("soxi -s " + file + " 2>&1"), row.soxFrames);
            EXPECT_EQ(OutputOf("sox -V2 " + file + " -t raw - 2>&1 >/dev/null"), "");
        }
        CodecWatcher watcher;
        const auto head = codecs.Probe(path, watcher);
        ASSERT_TRUE(head) << head.Reason();
        EXPECT_EQ(head->chapters.size(), row.cuePoints);
        std::filesystem::remove(path);
    }
}

// The sound behind the tags is the encoder's, page for page: other programs check the pages' sums.
TEST_F(TaggedExportTest, OtherProgramsReadThemWithoutAWarning) {
    if (!HasProgram("ffprobe")) GTEST_SKIP() << "no ffprobe";
    Sound sound = Tone(44100, 5 * 44100, 440);
    for (std::uint32_t i = 0; i < 300; ++i) sound.Markers().Add(i * 441, "Part", 0);
    SoundExtras extras;
    // More than a page of Ogg holds.
    extras.tags = {{"title", "T"}, {"comment", std::string(200'000, 'c')}};
    const std::pair<SoundFileKind, const char*> kinds[] = {
        {kFlac, "flac"}, {kOggVorbis, "ogg"}, {kOpus, "opus"}, {kMp3, "mp3"}};
    for (const auto& [kind, name] : kinds) {
        SCOPED_TRACE(name);
        path = folder / (std::string("sound.") + name);
        ExportAndRead(sound, kind, extras);
        const std::string file = path.string();
        EXPECT_EQ(OutputOf("ffmpeg -v warning -xerror -i " + file + " -f null - 2>&1"), "");
        const std::string said = OutputOf(
            "ffprobe -v warning -show_chapters -show_entries "
            "format_tags=title:stream_tags=title " +
            file + " 2>&1");
        EXPECT_TRUE(said.find("TAG:title=T\n") != said.npos ||
                    said.find("TAG:TITLE=T\n") != said.npos);
        // The chapter at a second and a tenth.
        EXPECT_THAT(said, HasSubstr("start_time=1.100000"));
        std::filesystem::remove(path);
    }
}

TEST_F(TaggedExportTest, SoundsOfOtherRatesAreResampled) {
    const struct {
        SoundFileKind kind;
        std::uint32_t rate, written;
    } rows[] = {{kOpus, 44100, 48000},
                {kOpus, 96000, 48000},
                {kOpus, 11025, 12000},
                {kOpus, 24000, 24000},
                {kMp3, 96000, 48000}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rate);
        Sound sound = Tone(row.rate, 2 * row.rate, 440);
        ASSERT_TRUE(sound.ConvertBits(16));
        sound.Markers().Add(row.rate / 2, "half a second", 0);
        const ImportedSound read = ExportAndRead(sound, row.kind, {});
        EXPECT_EQ(read.description.rate, row.written);
        EXPECT_EQ(read.sound.GetFrameCount(), 2 * row.written);
        ASSERT_EQ(read.sound.Markers().Count(), 1u);
        EXPECT_EQ(read.sound.Markers().All()[0].position,
                  std::lround(1.0 * row.written * (row.rate / 2) / row.rate));
        // The same tone at the same time, from its second tenth to its last.
        double error = 0;
        for (std::uint32_t i = row.written / 10; i < row.written * 19 / 10; ++i) {
            const double tone = 0.5 * std::sin(2 * 3.14159265358979 * 440 * i / row.written);
            error = std::max(error, std::abs(read.sound.GetShare(0, i) - tone));
        }
        EXPECT_LT(error, 0.05);
    }
}

TEST_F(TaggedExportTest, AnExportThatFailsLeavesNothing) {
    const Sound sound = Tone(8000, 8000, 440);
    SoundExtras extras;
    extras.tags = {{"title", "T"}};
    ExportChoice choice;
    choice.kind = kMp3;
    choice.frames = {0, 8000};
    CodecSetup setup = BuiltPrograms();
    setup.programs.helper = "/bin/false";
    const ChildCodecs failing{setup};
    EXPECT_TRUE(ExportSound(path, sound, extras, choice, &failing, {}).IsFailed());
    EXPECT_EQ(folder.FileCount(), 0u);
}

}  // namespace
}  // namespace sonavel
