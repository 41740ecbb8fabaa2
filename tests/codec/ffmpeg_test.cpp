// What is decoded through ffmpeg, where that is installed; and how its answers are read.
#include "codec/client/foreign_formats.h"
#include "codec/client/probe_report.h"
#include "codec/client/wav_stream.h"
#include "codec_fixture.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

TEST(ProbeReport, TakesWhatMakesSense) {
    const auto report = ParseProbeReport(
        "streams.stream.0.codec_name=\"alac\"\nstreams.stream.0.sample_fmt=\"s16p\"\n"
        "streams.stream.0.sample_rate=\"48000\"\nstreams.stream.0.channels=2\n"
        "streams.stream.0.bits_per_raw_sample=\"16\"\nstreams.stream.0.duration=\"1.5\"\n"
        "streams.stream.0.tags.handler_name=\"x\"\nformat.duration=\"9\"\n"
        "format.tags.TITLE=\"a \\\"b\\\" \\$x \\\\ =\\nl\"\n"
        "chapters.chapter.1.start_time=\"0.5\"\nchapters.chapter.1.end_time=\"1.0\"\n"
        "chapters.chapter.1.tags.title=\"Two\"\nchapters.chapter.0.start_time=\"0.0\"\n"
        "noise\n=\nformat.tags.x\nchapters.chapter.=1\nchapters.chapter.99999999.start_time=\"1\"\n"
        "streams.stream.1.channels=9\nstreams.stream.0.channels=-1x");
    ASSERT_TRUE(report);
    EXPECT_EQ(report->coding, "alac");
    EXPECT_EQ(report->rate, 48000u);
    EXPECT_EQ(report->bits, 16u);
    EXPECT_EQ(report->seconds, 1.5);
    EXPECT_EQ(report->tags, (std::vector<SoundTag>{{"title", "a \"b\" $x \\ =\nl"}}));
    EXPECT_EQ(report->chapters, (std::vector<SoundChapter>{{0, 0, ""}, {24000, 24000, "Two"}}));
    EXPECT_FALSE(ParseProbeReport(""));
    EXPECT_FALSE(ParseProbeReport("format.duration=\"9\"\n"));
    const auto wild = ParseProbeReport(
        "streams.stream.0.codec_name=\"x\"\nstreams.stream.0.duration=\"-inf\"\n"
        "streams.stream.0.sample_rate=\"99999999999\"\nchapters.chapter.0.start_time=\"1e300\"\n");
    ASSERT_TRUE(wild);
    EXPECT_EQ(wild->seconds, 0.0);
    EXPECT_EQ(wild->rate, 0u);
}

std::optional<WavStreamHead> HeadOf(const FileBytes& bytes) {
    std::size_t at = 0;
    return ReadWavStreamHead([&](std::span<std::uint8_t> to) {
        if (to.size() > bytes.size() - at) return false;
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), to.size(), to.begin());
        at += to.size();
        return true;
    });
}

TEST(WavStream, ReadsTheHeadOfAStreamOfUnknownLength) {
    const auto stream = [](const WavParts& parts, const FileBytes& before = {}) {
        return BytesOf("RIFF") + FileBytes(4, 0xFF) + BytesOf("WAVE") +
               RiffChunkBytes("fmt ", WavFormatBytes(parts)) + before + BytesOf("data") +
               FileBytes(4, 0xFF) + FileBytes(8);
    };
    const auto head =
        HeadOf(stream({3, 6, 48000, 32, 24, {}, {}, {}}, RiffChunkBytes("LIST", FileBytes(5))));
    ASSERT_TRUE(head);
    EXPECT_EQ(head->channels, 6u);
    EXPECT_EQ(head->rate, 48000u);
    EXPECT_EQ(head->samples, FrameSamples::kFloat32);
    EXPECT_EQ(HeadOf(stream({1, 1, 8000, 8, 1, {}, {}, {}}))->samples, FrameSamples::kUnsigned8);
    EXPECT_EQ(HeadOf(stream({1, 1, 8000, 16, 2, {}, {}, {}}))->samples, FrameSamples::kSigned16);
    const FileBytes refused[] = {stream({1, 1, 8000, 24, 3, {}, {}, {}}),
                                 stream({1, 0, 8000, 16, 2, {}, {}, {}}),
                                 stream({1, 1, 0, 16, 2, {}, {}, {}}),
                                 stream({1, 2000, 8000, 16, 2, {}, {}, {}}),
                                 stream({}, BytesOf("LIST") + FileBytes(4, 0xFF)),
                                 BytesOf("RIFX"),
                                 {}};
    for (const FileBytes& bytes : refused) EXPECT_FALSE(HeadOf(bytes));
}

TEST(ForeignFormats, GoByContentThenByName) {
    TemporaryFolder folder;
    const auto nameOf = [&](const char* name, const FileBytes& bytes) {
        WriteFileBytes(folder / name, bytes);
        return std::string(ForeignFormatName(folder / name));
    };
    EXPECT_EQ(nameOf("a.wav", BytesOf("wvpk")), "WavPack");
    EXPECT_EQ(nameOf("a.mp3", FileBytes(4) + BytesOf("ftypM4A ")), "M4A");
    EXPECT_EQ(nameOf("film", FileBytes(4) + BytesOf("ftypisom")), "MP4");
    EXPECT_EQ(nameOf("a.G722", FileBytes(4)), "G.722");
    EXPECT_EQ(nameOf("a.txt", BytesOf("text")), "");
    EXPECT_EQ(nameOf("empty", {}), "");
}

class FfmpegTest : public CodecTest {
  protected:
    void SetUp() override {
        CodecTest::SetUp();
        if (!codecs.CanDecodeWithFfmpeg() || !HasProgram("ffmpeg"))
            GTEST_SKIP() << "ffmpeg is not installed";
        for (int i = 0; i < 2 * 48000; ++i)
            sound_.push_back(static_cast<std::int16_t>(12000 * std::sin(0.03 * i * (1 + i % 2))));
        WavParts parts{1, 2, 48000, 16, 4, {}, BytesOfSamples(sound_), {}};
        WriteFileBytes(folder / "in.wav", WavBytes(parts));
    }
    std::filesystem::path Make(const std::string& words, const char* name) {
        const std::filesystem::path path = folder / name;
        const std::string command = "ffmpeg -v error -y -i '" + (folder / "in.wav").string() +
                                    "' " + words + " '" + path.string() + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        return path;
    }

    std::vector<std::int16_t> sound_;
};

TEST_F(FfmpegTest, LosslessSoundIsBitForBit) {
    for (const auto& [words, name, format] : {std::tuple{"-c:a alac", "a.m4a", "M4A"},
                                              {"-c:a wavpack", "a.wv", "WavPack"},
                                              {"-c:a pcm_s16le", "a.mkv", "Matroska"}}) {
        SCOPED_TRACE(name);
        const auto decoded = Decode(Make(words, name));
        ASSERT_TRUE(decoded) << decoded.Reason();
        EXPECT_EQ(sink.head.description.format, format);
        EXPECT_EQ(sink.head.description.bits, 16u);
        EXPECT_EQ(decoded->frames, 48000u);
        EXPECT_EQ(decoded->condition, SoundCondition::kWhole);
        EXPECT_TRUE(sink.bytes == BytesOfSamples(sound_));
    }
}

TEST_F(FfmpegTest, LossySoundComesAsFloatsWithItsTags) {
    const struct {
        const char* words;
        const char* name;
        const char* format;
        const char* coding;
        bool hasTags;
    } cases[] = {{"-c:a aac -metadata title='A %s' ", "a.m4a", "M4A", "AAC", true},
                 {"-c:a aac", "a.aac", "AAC", "", false},
                 {"-c:a wmav2 -metadata title='A %s'", "a.wma", "WMA", "WMA 2", true},
                 {"-c:a aac -metadata title='A %s'", "film.mp4", "MP4", "AAC", true}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const auto path = Make(row.words, row.name);
        CollectingSink watcher;
        const auto probed = codecs.Probe(path, watcher);
        ASSERT_TRUE(probed) << probed.Reason();
        const auto decoded = Decode(path);
        ASSERT_TRUE(decoded) << decoded.Reason();
        for (const SoundFileHead& of : {*probed, sink.head}) {
            EXPECT_EQ(of.description.format, row.format);
            EXPECT_EQ(of.description.coding, row.coding);
            EXPECT_EQ(of.description.rate, 48000u);
            EXPECT_EQ(of.description.channels, 2u);
            EXPECT_EQ(of.description.samples, FrameSamples::kFloat32);
            EXPECT_EQ(std::ranges::count(of.tags, SoundTag{"title", "A %s"}), row.hasTags);
        }
        EXPECT_NEAR(static_cast<double>(decoded->frames), 48000.0, 4096.0);
        // The middle: a coder overshoots where the sound begins and ends.
        const auto samples = sink.Samples<float>();
        const auto middle = std::span(samples).subspan(20000, 40000);
        EXPECT_NEAR(*std::ranges::max_element(middle), 12000 * 0x1p-15f, 0.05);
    }
    const auto g722 = Decode(Make("-ar 16000 -ac 1 -c:a g722", "a.g722"));
    ASSERT_TRUE(g722) << g722.Reason();
    EXPECT_EQ(sink.head.description.format, "G.722");
    EXPECT_EQ(g722->frames, 16000u);
}

// No file leads ffmpeg to another file or into the network.
TEST_F(FfmpegTest, FollowsNoReferences) {
    const std::string other = (folder / "in.wav").string();
    const std::pair<const char*, std::string> cases[] = {
        {"list.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + other + "\n"},
        {"list.txt", "ffconcat version 1.0\nfile in.wav\n"},
        {"list.sdp", "v=0\no=- 0 0 IN IP4 127.0.0.1\nm=audio 9 RTP/AVP 0\n"},
    };
    for (const auto& [name, text] : cases) {
        WriteFileBytes(folder / name, BytesOf(text));
        EXPECT_EQ(Decode(folder / name).Reason(), "The format of the file is not known.") << name;
    }
}

TEST_F(FfmpegTest, DamageIsSaidOrSalvaged) {
    FileBytes bytes = ReadFileBytes(Make("-c:a aac", "a.aac"));
    bytes.resize(bytes.size() / 2);
    WriteFileBytes(folder / "cut.aac", bytes);
    const auto decoded = Decode(folder / "cut.aac");
    ASSERT_TRUE(decoded) << decoded.Reason();
    EXPECT_LT(decoded->frames, 48000u);
    EXPECT_GT(decoded->frames, 10000u);
    WriteFileBytes(folder / "cut.m4a", FileBytes(4) + BytesOf("ftypM4A ") + FileBytes(100));
    EXPECT_EQ(Decode(folder / "cut.m4a").Reason(),
              "The file is so damaged that nothing of it can be read.");
}

}  // namespace
}  // namespace sonavel
