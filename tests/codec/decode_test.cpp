// Files that the sound library writes in every format and depth: bit for bit what went in where the
// depth holds it, else what the library itself reads; with what they say of themselves.
#include "codec_fixture.h"
#include "library_writer.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

using enum FrameSamples;
using enum FileDepth;

class DecodeTest : public CodecTest {
  protected:
    std::filesystem::path path = folder / "sound";
};

std::vector<std::int32_t> LeftAligned(const std::vector<std::int32_t>& samples, int bits) {
    std::vector<std::int32_t> aligned;
    for (const std::int32_t v : samples) aligned.push_back(v * (1 << (32 - bits)));
    return aligned;
}

// What the sink must have got of integers of a depth.
FileBytes ExpectedBytes(const std::vector<std::int32_t>& samples, int bits) {
    std::vector<std::uint8_t> bytes;
    std::vector<std::int16_t> words;
    std::vector<float> floats;
    for (const std::int32_t v : samples) {
        if (bits == 8) bytes.push_back(static_cast<std::uint8_t>(v + 128));
        if (bits == 16) words.push_back(static_cast<std::int16_t>(v));
        if (bits > 16) floats.push_back(std::ldexp(static_cast<float>(v), 1 - bits));
    }
    return bits == 8 ? bytes : bits == 16 ? BytesOfSamples(words) : BytesOfSamples(floats);
}

TEST_F(DecodeTest, IntegersOfEveryContainerComeBitForBit) {
    const struct {
        int format;
        int bits;
        const char* name;
        const char* coding = "";
    } cases[] = {
        {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 8, "WAV"},
        {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16, "WAV"},
        {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 24, "WAV"},
        {SF_FORMAT_WAV | SF_FORMAT_PCM_32, 32, "WAV"},
        {SF_FORMAT_WAV | SF_FORMAT_PCM_24 | SF_ENDIAN_BIG, 24, "WAV"},
        {SF_FORMAT_WAV | SF_FORMAT_PCM_16 | SF_ENDIAN_BIG, 16, "WAV"},
        {SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 24, "WAV"},
        {SF_FORMAT_RF64 | SF_FORMAT_PCM_24, 24, "RF64"},
        {SF_FORMAT_W64 | SF_FORMAT_PCM_U8, 8, "W64"},
        {SF_FORMAT_W64 | SF_FORMAT_PCM_24, 24, "W64"},
        {SF_FORMAT_CAF | SF_FORMAT_PCM_S8, 8, "CAF"},
        {SF_FORMAT_CAF | SF_FORMAT_PCM_24, 24, "CAF"},
        {SF_FORMAT_CAF | SF_FORMAT_ALAC_16, 16, "CAF", "Apple Lossless"},
        {SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, 8, "AIFF"},
        {SF_FORMAT_AIFF | SF_FORMAT_PCM_U8, 8, "AIFF"},
        {SF_FORMAT_AIFF | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE, 16, "AIFF"},
        {SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 24, "AIFF"},
        {SF_FORMAT_AU | SF_FORMAT_PCM_S8, 8, "AU"},
        {SF_FORMAT_AU | SF_FORMAT_PCM_24, 24, "AU"},
        {SF_FORMAT_FLAC | SF_FORMAT_PCM_S8, 8, "FLAC"},
        {SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16, "FLAC"},
        {SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 24, "FLAC"},
        {SF_FORMAT_VOC | SF_FORMAT_PCM_16, 16, "VOC"},
        {SF_FORMAT_NIST | SF_FORMAT_PCM_24, 24, "NIST Sphere"},
        {SF_FORMAT_IRCAM | SF_FORMAT_PCM_16, 16, "IRCAM"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::Message() << row.name << " " << std::hex << row.format);
        const auto samples = Ramp(2 * 40001, row.bits);
        WriteByLibrary(path, row.format, 2, 96000, LeftAligned(samples, row.bits));
        const auto decoded = Decode(path);
        ASSERT_TRUE(decoded) << decoded.Reason();
        const SoundFileDescription& of = sink.head.description;
        EXPECT_EQ(of.format, row.name);
        EXPECT_EQ(of.coding, row.coding);
        EXPECT_EQ(of.bits, static_cast<unsigned>(row.bits));
        EXPECT_EQ(of.depth, kInteger);
        EXPECT_EQ(of.samples, row.bits == 8 ? kUnsigned8 : row.bits == 16 ? kSigned16 : kFloat32);
        EXPECT_EQ(of.rate, 96000u);
        EXPECT_EQ(of.channels, 2u);
        EXPECT_EQ(decoded->frames, 40001u);
        EXPECT_EQ(decoded->condition, SoundCondition::kWhole);
        EXPECT_TRUE(sink.bytes == ExpectedBytes(samples, row.bits));
    }
}

TEST_F(DecodeTest, CodedSoundComesAsTheLibraryReadsIt) {
    const struct {
        int format;
        int rate;
        const char* name;
        const char* coding;
    } cases[] = {
        {SF_FORMAT_WAV | SF_FORMAT_ULAW, 8000, "WAV", "mu-law"},
        {SF_FORMAT_WAV | SF_FORMAT_ALAW, 8000, "WAV", "A-law"},
        {SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, 22050, "WAV", "IMA ADPCM"},
        {SF_FORMAT_WAV | SF_FORMAT_MS_ADPCM, 22050, "WAV", "Microsoft ADPCM"},
        {SF_FORMAT_WAV | SF_FORMAT_GSM610, 8000, "WAV", "GSM 6.10"},
        {SF_FORMAT_WAV | SF_FORMAT_G721_32, 8000, "WAV", "G.721"},
        {SF_FORMAT_AIFF | SF_FORMAT_ALAW, 8000, "AIFF", "A-law"},
        {SF_FORMAT_AIFF | SF_FORMAT_IMA_ADPCM, 22050, "AIFF", "IMA ADPCM"},
        {SF_FORMAT_AU | SF_FORMAT_G723_24, 8000, "AU", "G.723"},
        {SF_FORMAT_CAF | SF_FORMAT_ULAW, 8000, "CAF", "mu-law"},
        {SF_FORMAT_CAF | SF_FORMAT_ALAC_24, 44100, "CAF", "Apple Lossless"},
        {SF_FORMAT_OGG | SF_FORMAT_VORBIS, 44100, "Ogg Vorbis", ""},
        {SF_FORMAT_OGG | SF_FORMAT_OPUS, 48000, "Opus", ""},
        {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 44100, "MP3", ""},
        {SF_FORMAT_WAV | SF_FORMAT_FLOAT, 44100, "WAV", ""},
        {SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 44100, "WAV", ""},
        {SF_FORMAT_AIFF | SF_FORMAT_FLOAT, 44100, "AIFF", ""},
        {SF_FORMAT_CAF | SF_FORMAT_FLOAT, 44100, "CAF", ""},
    };
    std::vector<std::int32_t> sine;
    for (int i = 0; i < 30000; ++i)
        sine.push_back(static_cast<std::int32_t>(0x1p30 * std::sin(0.07 * i)));
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::Message() << row.name << " " << row.coding);
        WriteByLibrary(path, row.format, 1, row.rate, sine);
        const auto decoded = Decode(path);
        ASSERT_TRUE(decoded) << decoded.Reason();
        EXPECT_EQ(sink.head.description.format, row.name);
        EXPECT_EQ(sink.head.description.coding, row.coding);
        EXPECT_EQ(sink.head.description.samples, kFloat32);
        EXPECT_EQ(decoded->condition, SoundCondition::kWhole);
        EXPECT_GE(decoded->frames, 30000u);
        EXPECT_TRUE(sink.Samples<float>() == ReadByLibrary(path));
    }
}

// Long files are decoded in segments side by side; that must not show.
class LongFileTest : public DecodeTest {
  protected:
    // Compares with the library's own reading, and tells how the file ended.
    SoundCondition ConditionOfEqual() {
        const auto decoded = Decode(path);
        EXPECT_TRUE(decoded) << decoded.Reason();
        if (!decoded) return SoundCondition::kWhole;
        std::vector<float> got = sink.Samples<float>();
        if (sink.head.description.samples == kSigned16) {
            got.clear();
            for (const std::int16_t v : sink.Samples<std::int16_t>()) got.push_back(v * 0x1p-15f);
        }
        EXPECT_TRUE(got == ReadByLibrary(path)) << got.size();
        return decoded->condition;
    }
};

TEST_F(LongFileTest, AreTheSameAsInOnePiece) {
    std::vector<std::int32_t> sound;
    for (int i = 0; i < 2 * 2'500'000; ++i)
        sound.push_back((static_cast<std::int32_t>(0x1p29 * std::sin(1e-5 * i * (i % 2 + 1.0))) +
                         static_cast<std::int32_t>(i * 7919LL % 65536 << 12)) &
                        ~0xFFFF);
    const auto lowest = [](SNDFILE* file) {
        int constant = SF_BITRATE_MODE_CONSTANT;
        double level = 1.0;
        sf_command(file, SFC_SET_BITRATE_MODE, &constant, sizeof constant);
        sf_command(file, SFC_SET_COMPRESSION_LEVEL, &level, sizeof level);
    };
    const struct {
        int format;
        int channels;
        int rate;
        std::function<void(SNDFILE*)> before;
        bool tellsDamage;
    } cases[] = {
        {SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 2, 44100, {}, true},
        {SF_FORMAT_OGG | SF_FORMAT_VORBIS, 2, 44100, {}, true},
        {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 2, 44100, {}, false},
        // Its frames lean on many before them, so the segments do not fit.
        {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 1, 16000, lowest, false},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::Message() << std::hex << row.format << " of " << row.rate);
        WriteByLibrary(path, row.format, row.channels, row.rate, sound, row.before);
        EXPECT_EQ(ConditionOfEqual(), SoundCondition::kWhole);
        FileBytes bytes = ReadFileBytes(path);
        const auto middle = static_cast<std::ptrdiff_t>(bytes.size() * 2 / 3);
        std::fill_n(bytes.begin() + middle, 5000, 0x55);
        WriteFileBytes(path, bytes);
        const SoundCondition damaged = ConditionOfEqual();
        EXPECT_TRUE(damaged != SoundCondition::kWhole || !row.tellsDamage);
    }
}

TEST_F(DecodeTest, WhatIsNoNumberBecomesSilenceAndIsCounted) {
    const std::vector<float> sound = {0.5f, NAN, INFINITY, -INFINITY, 3e38f, -2.0f, 1e-40f, -NAN};
    WavParts parts{3, 2, 44100, 32, 8, {}, BytesOfSamples(sound), {}};
    WriteFileBytes(path, WavBytes(parts));
    const auto decoded = Decode(path);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->silencedSamples, 4u);
    EXPECT_EQ(sink.head.description.depth, kFloat);
    EXPECT_EQ(sink.Samples<float>(), (std::vector<float>{0.5f, 0, 0, 0, 3e38f, -2.0f, 1e-40f, 0}));
}

TEST_F(DecodeTest, TellsSpeakersTagsAndCuePoints) {
    int map[] = {SF_CHANNEL_MAP_LEFT, SF_CHANNEL_MAP_RIGHT,     SF_CHANNEL_MAP_CENTER,
                 SF_CHANNEL_MAP_LFE,  SF_CHANNEL_MAP_REAR_LEFT, SF_CHANNEL_MAP_REAR_RIGHT};
    SF_CUES cues{};
    cues.cue_count = 2;
    cues.cue_points[0] = {1, 100, 0x61746164, 0, 0, 100, "one"};
    cues.cue_points[1] = {2, 700, 0x61746164, 0, 0, 700, "two"};
    WriteByLibrary(path, SF_FORMAT_WAVEX | SF_FORMAT_PCM_16, 6, 48000,
                   std::vector<std::int32_t>(6 * 1000), [&](SNDFILE* file) {
                       sf_command(file, SFC_SET_CHANNEL_MAP_INFO, map, sizeof map);
                       sf_command(file, SFC_SET_CUE, &cues, sizeof cues);
                       sf_set_string(file, SF_STR_TITLE, "T%s");
                       sf_set_string(file, SF_STR_ARTIST, "\xC0\xC7 raw");
                   });
    const auto head = [&] {
        CollectingSink watcher;
        return codecs.Probe(path, watcher);
    }();
    ASSERT_TRUE(head) << head.Reason();
    using enum Speaker;
    EXPECT_EQ(head->description.speakers, (std::vector{kFrontLeft, kFrontRight, kFrontCentre,
                                                       kLowFrequency, kRearLeft, kRearRight}));
    EXPECT_EQ(SpeakerName(head->description.speakers[3]), "Low frequency");
    EXPECT_EQ(std::ranges::count(head->tags, SoundTag{"title", "T%s"}), 1);
    EXPECT_EQ(std::ranges::count(head->tags, SoundTag{"artist", "\xC0\xC7 raw"}), 1);
    ASSERT_EQ(head->chapters.size(), 2u);
    EXPECT_EQ(head->chapters[0].startFrame, 100u);
    EXPECT_EQ(head->chapters[1].startFrame, 700u);
    EXPECT_EQ(head->description.frames, 1000u);
}

// Data that ends early is what there is of it, and the file says how much there should be.
TEST_F(DecodeTest, WhatIsCutOffIsSalvaged) {
    const auto samples = Ramp(2 * 30000, 16);
    for (const int major : {SF_FORMAT_WAV, SF_FORMAT_RF64, SF_FORMAT_W64, SF_FORMAT_AIFF,
                            SF_FORMAT_AU, SF_FORMAT_CAF, SF_FORMAT_FLAC}) {
        SCOPED_TRACE(::testing::Message() << std::hex << major);
        WriteByLibrary(path, major | SF_FORMAT_PCM_16, 2, 44100, LeftAligned(samples, 16));
        std::filesystem::resize_file(path, std::filesystem::file_size(path) * 2 / 3 + 1);
        const auto decoded = Decode(path);
        ASSERT_TRUE(decoded) << decoded.Reason();
        EXPECT_NE(decoded->condition, SoundCondition::kWhole);
        EXPECT_GT(decoded->frames, 12000u);
        EXPECT_LT(decoded->frames, 30000u);
        EXPECT_EQ(decoded->promisedFrames, 30000u);
        auto there = samples;
        there.resize(2 * decoded->frames);
        EXPECT_TRUE(sink.bytes == ExpectedBytes(there, 16));
    }
}

TEST_F(DecodeTest, SizesThatLieByFarPromiseNothingImpossible) {
    const auto samples = Ramp(2000, 16);
    const struct {
        int format;
        std::ptrdiff_t size;  // where the file's own size stands
    } cases[] = {{SF_FORMAT_W64 | SF_FORMAT_PCM_16, 16},
                 {SF_FORMAT_W64 | SF_FORMAT_ULAW, 16},
                 {SF_FORMAT_RF64 | SF_FORMAT_PCM_16, 20}};
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::Message() << std::hex << row.format);
        WriteByLibrary(path, row.format, 1, 44100, LeftAligned(samples, 16));
        FileBytes bytes = ReadFileBytes(path);
        std::fill_n(bytes.begin() + row.size, 7, 0xFF);
        bytes[static_cast<std::size_t>(row.size) + 7] = 0x7F;
        WriteFileBytes(path, bytes);
        const auto decoded = Decode(path);
        ASSERT_TRUE(decoded) << decoded.Reason();
        EXPECT_EQ(decoded->frames, 2000u);
        EXPECT_EQ(decoded->condition, SoundCondition::kCutShort);
    }
}

// The content decides, the name only helps where the content says nothing; and any path is taken.
TEST_F(DecodeTest, TakesAnyNameForAPath) {
    const auto samples = Ramp(2000, 16);
    for (const char* name : {"no extension", "steps.v2.mp3", "-f", "$(x) 'y' \"z\"",
                             "W\xFC"
                             "rfel.wav",
                             "a\nb.flac"}) {
        WriteByLibrary(folder / name, SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1, 44100,
                       LeftAligned(samples, 16));
        const auto decoded = Decode(folder / name);
        ASSERT_TRUE(decoded) << name << decoded.Reason();
        EXPECT_EQ(sink.head.description.format, "FLAC");
        EXPECT_EQ(decoded->frames, 2000u);
    }
    WriteByLibrary(folder / "a.gsm", SF_FORMAT_RAW | SF_FORMAT_GSM610, 1, 8000,
                   LeftAligned(Ramp(1600, 16), 16));
    ASSERT_TRUE(Decode(folder / "a.gsm"));
    EXPECT_EQ(sink.head.description.coding, "GSM 6.10");
    EXPECT_EQ(sink.head.description.rate, 8000u);
}

}  // namespace
}  // namespace sonavel
