// What is encoded comes back: every kind and depth bit for bit where it holds the samples, the
// lossy kinds near enough, with their tags; and what a kind cannot hold is refused in words.
#include <random>

#include "codec_fixture.h"

namespace sonavel {
namespace {

using enum SoundFileKind;

class EncodeTest : public CodecTest {
  protected:
    Outcome Encode(const EncodeRequest& request, const FileBytes& bytes) {
        BytesSource source(bytes);
        return codecs.Encode(path, request, source);
    }
    static EncodeRequest Request(SoundFileKind kind, EncodedDepth depth, FrameSamples samples,
                                 std::uint64_t frames) {
        EncodeRequest request;
        request.kind = kind;
        request.depth = depth;
        request.samples = samples;
        request.rate = 44100;
        request.channels = 2;
        request.frames = frames;
        return request;
    }

    std::filesystem::path path = folder / "sound";
};

constexpr std::size_t kFrames = 70000;  // more than one piece of any kind

TEST_F(EncodeTest, KeepsEverySampleThatFits) {
    std::vector<std::uint8_t> bytes;
    std::vector<std::int16_t> words;
    std::vector<float> deep, floats;
    for (const std::int32_t v : Ramp(2 * kFrames, 8))
        bytes.push_back(static_cast<std::uint8_t>(v + 128));
    for (const std::int32_t v : Ramp(2 * kFrames, 16))
        words.push_back(static_cast<std::int16_t>(v));
    for (const std::int32_t v : Ramp(2 * kFrames, 24))
        deep.push_back(static_cast<float>(v) * 0x1p-23f);
    for (const std::int32_t v : Ramp(2 * kFrames, 32))
        floats.push_back(static_cast<float>(v) * 0x1.1p-29f);
    const struct {
        EncodedDepth depth;
        FrameSamples samples;
        FileBytes sound;
        std::uint32_t bits;
    } depths[] = {{EncodedDepth::k8, FrameSamples::kUnsigned8, bytes, 8},
                  {EncodedDepth::k16, FrameSamples::kSigned16, BytesOfSamples(words), 16},
                  {EncodedDepth::k24, FrameSamples::kFloat32, BytesOfSamples(deep), 24},
                  {EncodedDepth::kFloat32, FrameSamples::kFloat32, BytesOfSamples(floats), 32}};
    for (const SoundFileKind kind : {kWav, kRf64, kW64, kAiff, kAu, kCaf, kFlac})
        for (const auto& row : depths) {
            if (kind == kFlac && row.depth == EncodedDepth::kFloat32) continue;
            SCOPED_TRACE(::testing::Message() << static_cast<int>(kind) << " at " << row.bits);
            const Outcome encoded =
                Encode(Request(kind, row.depth, row.samples, kFrames), row.sound);
            ASSERT_TRUE(encoded) << encoded.Reason();
            const auto decoded = Decode(path);
            ASSERT_TRUE(decoded) << decoded.Reason();
            EXPECT_EQ(sink.head.description.kind, kind);
            EXPECT_EQ(sink.head.description.bits, row.bits);
            EXPECT_EQ(sink.head.description.frames, kFrames);
            EXPECT_EQ(sink.head.description.samples, row.samples);
            EXPECT_EQ(decoded->condition, SoundCondition::kWhole);
            EXPECT_TRUE(sink.bytes == row.sound);
        }
}

// The values where two neighbours of a depth meet: to the nearest, never past the ends.
TEST_F(EncodeTest, RoundsToTheNearestAndHoldsAtFullScale) {
    const std::vector<float> values = {0.0f,  1.0f,   -1.0f, 7.5f, -7.5f, 1e30f,    0.49f,
                                       0.51f, -0.51f, NAN,   2.5f, 1.4f,  INFINITY, -INFINITY};
    // In units of the depth, but for the full-scale ones.
    const struct {
        EncodedDepth depth;
        float unit;
        float most;
    } rows[] = {{EncodedDepth::k8, 0x1p-7f, 127},
                {EncodedDepth::k16, 0x1p-15f, 32767},
                {EncodedDepth::k24, 0x1p-23f, 8388607}};
    for (const auto& row : rows) {
        std::vector<float> sound, expected;
        for (const float value : values) {
            sound.push_back(value * row.unit);
            const float nearest = std::isnan(value) ? 0.0f : std::nearbyint(value);
            expected.push_back(std::clamp(nearest, -row.most - 1, row.most));
        }
        const auto request = Request(kWav, row.depth, FrameSamples::kFloat32, values.size() / 2);
        ASSERT_TRUE(Encode(request, BytesOfSamples(sound)));
        ASSERT_TRUE(Decode(path));
        std::vector<float> got;
        if (row.depth == EncodedDepth::k8)
            for (const std::uint8_t v : sink.bytes) got.push_back(static_cast<float>(v) - 128);
        else if (row.depth == EncodedDepth::k16)
            for (const std::int16_t v : sink.Samples<std::int16_t>()) got.push_back(v);
        else
            for (const float v : sink.Samples<float>()) got.push_back(v / row.unit);
        EXPECT_EQ(got, expected);
    }
}

double RootOfMeanSquares(const std::vector<float>& of) {
    double sum = 0;
    for (const float v : of) sum += static_cast<double>(v) * v;
    return std::sqrt(sum / static_cast<double>(of.size()));
}

TEST_F(EncodeTest, LossyKindsKeepTheSoundAndItsTags) {
    constexpr std::uint64_t kLong = 96000;
    std::vector<float> sound;
    for (std::uint64_t i = 0; i < kLong; ++i) {
        sound.push_back(0.5f * std::sin(0.05f * static_cast<float>(i)));
        sound.push_back(0.25f * std::sin(0.11f * static_cast<float>(i)));
    }
    const std::vector<SoundTag> tags = {
        {"title", "Würfel %s %n"}, {"artist", "A B"},         {"album", "C"},
        {"date", "2026"},          {"comment", "two\nlines"}, {"copyright", "D"}};
    std::uintmax_t sizes[2] = {};
    for (const SoundFileKind kind : {kOggVorbis, kOpus, kMp3})
        for (const std::uint32_t quality : {2u, 9u}) {
            SCOPED_TRACE(::testing::Message() << static_cast<int>(kind) << " at " << quality);
            auto request = Request(kind, EncodedDepth::k16, FrameSamples::kFloat32, kLong);
            request.rate = 48000;
            request.quality = quality;
            request.tags = tags;
            const Outcome encoded = Encode(request, BytesOfSamples(sound));
            ASSERT_TRUE(encoded) << encoded.Reason();
            sizes[quality == 9] = std::filesystem::file_size(path);
            const auto decoded = Decode(path);
            ASSERT_TRUE(decoded) << decoded.Reason();
            EXPECT_EQ(sink.head.description.kind, kind);
            EXPECT_EQ(sink.head.description.depth, FileDepth::kNone);
            EXPECT_EQ(decoded->frames, kLong);
            std::vector<float> difference = sink.Samples<float>();
            for (std::size_t i = 0; i < sound.size(); ++i) difference[i] -= sound[i];
            EXPECT_LT(RootOfMeanSquares(difference), 0.02);
            // The library writes no copyright into MP3 files.
            for (const SoundTag& tag : tags)
                EXPECT_EQ(std::ranges::count(sink.head.tags, tag),
                          kind != kMp3 || tag.key != "copyright")
                    << tag.key;
            if (quality == 9) {
                EXPECT_GT(sizes[1], sizes[0]);
            }
        }
}

TEST_F(EncodeTest, RefusesInWordsWhatAKindCannotHold) {
    const auto changed = [](SoundFileKind kind, auto change) {
        auto request = Request(kind, EncodedDepth::k16, FrameSamples::kSigned16, 1);
        change(request);
        return request;
    };
    using R = EncodeRequest;
    const std::pair<EncodeRequest, const char*> cases[] = {
        {changed(kOpus, [](R&) {}),
         "Opus files know only the rates 8,000 Hz, 12,000 Hz, 16,000 Hz, 24,000 Hz and 48,000 Hz."},
        {changed(kMp3, [](R& r) { r.channels = 3; }), "MP3 files hold at most 2 channels."},
        {changed(kFlac, [](R& r) { r.channels = 9; }), "FLAC files hold at most 8 channels."},
        {changed(kFlac, [](R& r) { r.depth = EncodedDepth::kFloat32; }),
         "FLAC files cannot hold 32-bit float samples."},
        {changed(kWav, [](R& r) { r.frames = 0xFFFFFFFF; }), "WAV files hold at most 4 GiB."},
        {changed(kOther, [](R&) {}), "There is no such kind of file."},
        {changed(kOggVorbis, [](R& r) { r.rate = 1 << 29; }),
         "This kind of file cannot hold this sound."},
    };
    WriteFileBytes(path, BytesOf("old"));
    for (const auto& [request, text] : cases) {
        const Outcome outcome = Encode(request, FileBytes(64));
        EXPECT_TRUE(outcome.IsFailed());
        EXPECT_EQ(outcome.Reason(), text);
    }
    EXPECT_EQ(ReadFileBytes(path), BytesOf("old"));
}

// Whatever stops an encoder leaves the old file and nothing beside it.
TEST_F(EncodeTest, AFailureLeavesTheOldFile) {
    class Stopping : public BytesSource {
      public:
        Stopping(Outcome give, GoOn watch)
            : BytesSource(FileBytes(4 * kFrames)), give_(give), watch_(watch) {}
        Outcome Give(std::span<std::uint8_t> to) override {
            return give_ ? BytesSource::Give(to) : give_;
        }
        GoOn Watch() override { return watch_; }

      private:
        Outcome give_;
        GoOn watch_;
    };
    WriteFileBytes(path, BytesOf("old"));
    const auto request = Request(kFlac, EncodedDepth::k16, FrameSamples::kSigned16, kFrames);
    Stopping failing(Failed("No."), GoOn::kYes), cancelling(Done(), GoOn::kNo);
    EXPECT_EQ(codecs.Encode(path, request, failing).Reason(), "No.");
    EXPECT_TRUE(codecs.Encode(path, request, cancelling).IsCancelled());
    EXPECT_EQ(ReadFileBytes(path), BytesOf("old"));
    EXPECT_EQ(folder.FileCount(), 1u);
    BytesSource good(FileBytes(4 * kFrames));
    EXPECT_EQ(codecs.Encode(folder / "none" / "sound", request, good).Reason(),
              "The file cannot be written: the disk is full or fails.");
}

}  // namespace
}  // namespace sonavel
