// Files written around samples, read back by a walk of this test's own that expects them well
// formed.
#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <map>

#include "exchange/file_frame.h"
#include "exchange_files.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using testing::IsEmpty;
using enum EncodedDepth;

constexpr EncodedDepth kDepths[] = {k8, k16, k24, kFloat32};

EncodeRequest Request(EncodedDepth depth, std::uint32_t channels, std::uint64_t frames) {
    EncodeRequest request;
    request.depth = depth;
    request.rate = 44100;
    request.channels = channels;
    request.frames = frames;
    return request;
}

FileBytes Whole(const Result<FileFrame>& frame, const EncodeRequest& request) {
    EXPECT_TRUE(frame) << frame.Reason();
    const std::size_t samples = request.frames * request.channels;
    return frame->before + FileBytes(samples * frame->samples.Bytes(), 0x21) + frame->behind;
}

// The chunks of a list without gaps, each with its pad byte; fails where one does not fit.
std::vector<std::pair<std::string, FileBytes>> StrictChunks(const FileBytes& bytes, std::size_t at,
                                                            std::size_t end, ByteOrder order) {
    std::vector<std::pair<std::string, FileBytes>> chunks;
    while (at < end) {
        EXPECT_LE(at + 8, end);
        if (at + 8 > end) break;
        const std::uint8_t* head = &bytes[at];
        const std::size_t size =
            order == ByteOrder::kBig ? LoadBig32(head + 4) : LoadLittle32(head + 4);
        EXPECT_LE(at + 8 + size + size % 2, end);
        if (at + 8 + size > end) break;
        chunks.emplace_back(std::string(head, head + 4), FileBytes(head + 8, head + 8 + size));
        at += 8 + size + size % 2;
    }
    EXPECT_EQ(at, end);
    return chunks;
}

std::vector<std::string> Names(const std::vector<std::pair<std::string, FileBytes>>& chunks) {
    std::vector<std::string> names;
    for (const auto& [name, content] : chunks)
        names.push_back(name == "LIST" ? std::string(content.begin(), content.begin() + 4) : name);
    return names;
}

SoundExtras Everything() {
    SoundExtras extras;
    extras.markers = {{0, 0, "start"}, {2, 3, "a region"}, {4, 0, ""}, {5, 0, "end"}};
    extras.tags = {{"title", "odd"}, {"date", "2026"}, {"ISFT", "Maker"}, {"no such", "place"}};
    extras.chunks = {
        {ChunkFamily::kRiff, MakeFourCc("bext"), ChunkSide::kBeforeSound, FileBytes(603, 1)},
        {ChunkFamily::kRiff, MakeFourCc("iXML"), ChunkSide::kBehindSound, BytesOf("<x/>!")},
        {ChunkFamily::kAiff, MakeFourCc("APPL"), ChunkSide::kBehindSound, BytesOf("abc")}};
    return extras;
}

TEST(FrameWav, IsWellFormedAtEveryDepth) {
    for (const EncodedDepth depth : kDepths)
        for (const std::uint32_t channels : {1u, 2u, 6u}) {
            SCOPED_TRACE(::testing::Message() << static_cast<int>(depth) << " x " << channels);
            const EncodeRequest request = Request(depth, channels, 5);
            const FileBytes file = Whole(FrameWav(request, Everything()), request);
            ASSERT_EQ(LoadLittle32(&file[4]) + 8, file.size());
            const auto chunks = StrictChunks(file, 12, file.size(), ByteOrder::kLittle);
            std::vector<std::string> names = Names(chunks);
            EXPECT_EQ(std::erase(names, "fact"), depth == kFloat32 ? 1u : 0u);
            EXPECT_THAT(names, ElementsAre("fmt ", "bext", "data", "cue ", "adtl", "INFO", "iXML"));
            const FileBytes& format = chunks[0].second;
            const std::uint32_t bytes = static_cast<std::uint32_t>(depth) + 1;
            EXPECT_EQ(LoadLittle16(&format[channels > 2 ? 24 : 0]), depth == kFloat32 ? 3 : 1);
            EXPECT_EQ(LoadLittle32(&format[8]), 44100 * channels * bytes);
            EXPECT_EQ(LoadLittle16(&format[12]), channels * bytes);
            EXPECT_EQ(LoadLittle16(&format[14]), bytes * 8);
        }
}

TEST(FrameWav, GivesBackWhatItWasGiven) {
    SoundExtras given = Everything();
    const EncodeRequest request = Request(k24, 1, 5);
    const SoundExtras got = ExtrasOf(Whole(FrameWav(request, given), request));
    EXPECT_EQ(got.markers, given.markers);
    EXPECT_THAT(TagTexts(got), ElementsAre("title=odd", "date=2026", "ISFT=Maker",
                                           testing::StartsWith("comment="), testing::_));
    given.chunks.pop_back();
    EXPECT_EQ(got.chunks, given.chunks);
    EXPECT_THAT(got.remarks.all, IsEmpty());
}

TEST(FrameWav, LengthsPrecedeLabels) {
    const EncodeRequest request = Request(k16, 1, 5);
    const FileBytes file = Whole(FrameWav(request, Everything()), request);
    const auto chunks = StrictChunks(file, 12, file.size(), ByteOrder::kLittle);
    const FileBytes& list = chunks[4].second;
    EXPECT_THAT(Names(StrictChunks(list, 4, list.size(), ByteOrder::kLittle)),
                ElementsAre("ltxt", "labl", "labl", "labl", "labl"));
}

TEST(FrameWav, LoopsFollowTheirRegions) {
    FileBytes smpl(36 + 24);
    smpl[28] = 1;
    smpl[44] = 2, smpl[48] = 4;  // frames 2 to 4
    SoundExtras extras;
    extras.chunks = {{ChunkFamily::kRiff, MakeFourCc("smpl"), ChunkSide::kBehindSound, smpl}};
    const EncodeRequest request = Request(k16, 1, 100);
    extras.markers = {{2, 3, "Loop 1"}, {9, 0, "mark"}};
    const SoundExtras same = ExtrasOf(Whole(FrameWav(request, extras), request));
    EXPECT_EQ(same.markers, extras.markers);
    EXPECT_EQ(same.chunks, extras.chunks);
    extras.markers[0] = {7, 20, "Loop 1"};
    EXPECT_EQ(ExtrasOf(Whole(FrameWav(request, extras), request)).markers, extras.markers);
}

TEST(FrameWav, BeyondFourGibibytesSizesAre64BitsWide) {
    const std::uint64_t frames = std::uint64_t{3} << 30;
    const Result<FileFrame> frame = FrameWav(Request(k16, 1, frames), Everything());
    ASSERT_TRUE(frame);
    const FileBytes& head = frame->before;
    EXPECT_EQ(std::string(head.begin(), head.begin() + 4), "RF64");
    EXPECT_EQ(std::string(head.begin() + 12, head.begin() + 16), "ds64");
    const auto number = [&](std::size_t at) {
        return LoadLittle32(&head[at]) | std::uint64_t{LoadLittle32(&head[at + 4])} << 32;
    };
    EXPECT_EQ(number(20) + 8, head.size() + 2 * frames + frame->behind.size());
    EXPECT_EQ(number(28), 2 * frames);
    EXPECT_EQ(number(36), frames);
    EXPECT_EQ(LoadLittle32(&head[head.size() - 4]), 0xFFFFFFFF);
    // Short ones may be asked for as that, too.
    EncodeRequest request = Request(k16, 1, 5);
    request.kind = SoundFileKind::kRf64;
    const SoundExtras got = ExtrasOf(Whole(FrameWav(request, Everything()), request));
    EXPECT_EQ(got.markers, Everything().markers);
    EXPECT_THAT(got.remarks.all, IsEmpty());
}

TEST(FrameAiff, IsWellFormedAndGivesBackWhatItWasGiven) {
    SoundExtras given = Everything();
    given.markers[1].frames = 0;  // there are no regions
    given.tags = {{"title", "odd"}, {"artist", "even"}, {"comment", "x"}, {"copyright", "2026"}};
    for (const EncodedDepth depth : kDepths) {
        SCOPED_TRACE(static_cast<int>(depth));
        const EncodeRequest request = Request(depth, 1, 5);
        const FileBytes file = Whole(FrameAiff(request, given), request);
        ASSERT_EQ(LoadBig32(&file[4]) + 8, file.size());
        const auto chunks = StrictChunks(file, 12, file.size(), ByteOrder::kBig);
        std::vector<std::string> names = Names(chunks);
        EXPECT_EQ(std::erase(names, "FVER"), depth == kFloat32 ? 1u : 0u);
        EXPECT_THAT(names,
                    ElementsAre("COMM", "MARK", "NAME", "AUTH", "(c) ", "ANNO", "SSND", "APPL"));
        const SoundExtras got = ExtrasOf(file);
        EXPECT_EQ(got.markers, given.markers);
        EXPECT_THAT(TagTexts(got), testing::UnorderedElementsAre("title=odd", "artist=even",
                                                                 "comment=x", "copyright=2026"));
        EXPECT_THAT(got.chunks, ElementsAre(given.chunks[2]));
        EXPECT_THAT(got.remarks.all, IsEmpty());
    }
    EXPECT_EQ(FrameAiff(Request(k16, 2, std::uint64_t{1} << 30), {}).Reason(),
              "AIFF files hold at most 4 GiB.");
}

TEST(FrameAiff, LoopsAreTiedToTheirMarks) {
    FileBytes instrument(20);
    instrument[9] = 2, instrument[11] = 44, instrument[13] = 45;
    instrument[15] = 1, instrument[17] = 46, instrument[19] = 47;
    SoundExtras extras;
    extras.chunks = {{ChunkFamily::kAiff, MakeFourCc("INST"), ChunkSide::kBeforeSound, instrument}};
    extras.markers = {{1, 0, "mark"}, {2, 3, "Loop 1"}};
    const EncodeRequest request = Request(k16, 1, 100);
    const SoundExtras got = ExtrasOf(Whole(FrameAiff(request, extras), request));
    EXPECT_EQ(got.markers, extras.markers);
    ASSERT_EQ(got.chunks.size(), 1u);
    EXPECT_EQ(got.chunks[0].bytes[9], 2);   // still plays as it did
    EXPECT_EQ(got.chunks[0].bytes[15], 0);  // its region is gone
}

TEST(FrameAu, SaysItsFormatAndATitle) {
    SoundExtras extras;
    extras.tags = {{"title", "me"}};
    const Result<FileFrame> frame = FrameAu(Request(k24, 2, 5), extras);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->before, ByteBuilder()
                                     .Text(".snd")
                                     .Big32(40)
                                     .Big32(30)
                                     .Big32(4)
                                     .Big32(44100)
                                     .Big32(2)
                                     .Text("title=me")
                                     .Bytes() +
                                 FileBytes(8));
}

// Depth by depth, with the values at the ends and between two steps.
TEST(PackSamples, KeepsWhatTheDepthHoldsAndRoundsTheRest) {
    const auto packed = [](const auto& values, FrameSamples samples, const FileSamples& as) {
        FileBytes from(values.size() * sizeof(values[0])), to(values.size() * as.Bytes());
        std::memcpy(from.data(), values.data(), from.size());
        PackSamples(from, samples, as, to);
        return to;
    };
    const FileSamples little24{k24, ByteOrder::kLittle, EightBitZero::kAt128};
    const FileSamples big16{k16, ByteOrder::kBig, EightBitZero::kAt0};
    const FileSamples little16{k16, ByteOrder::kLittle, EightBitZero::kAt128};
    const FileSamples big8{k8, ByteOrder::kBig, EightBitZero::kAt0};
    const FileSamples plain8{k8, ByteOrder::kLittle, EightBitZero::kAt128};
    const FileSamples bigFloat{kFloat32, ByteOrder::kBig, EightBitZero::kAt0};
    const std::vector<std::uint8_t> bytes = {0, 128, 255};
    const std::vector<std::int16_t> words = {-32768, -1, 0, 0x1234, 32767};
    const std::vector<float> floats = {-2, -1, 0x1p-23f, 0.5f, 1, 1e30f, NAN, INFINITY};
    using enum FrameSamples;
    EXPECT_EQ(packed(bytes, kUnsigned8, plain8), (FileBytes{0, 128, 255}));
    EXPECT_EQ(packed(bytes, kUnsigned8, big8), (FileBytes{0x80, 0, 0x7F}));
    EXPECT_EQ(packed(bytes, kUnsigned8, big16), (FileBytes{0x80, 0, 0, 0, 0x7F, 0}));
    EXPECT_EQ(packed(words, kSigned16, little16),
              (FileBytes{0, 0x80, 0xFF, 0xFF, 0, 0, 0x34, 0x12, 0xFF, 0x7F}));
    EXPECT_EQ(packed(words, kSigned16, little24),
              (FileBytes{0, 0, 0x80, 0, 0xFF, 0xFF, 0, 0, 0, 0, 0x34, 0x12, 0, 0xFF, 0x7F}));
    EXPECT_EQ(packed(words, kSigned16, big8), (FileBytes{0x80, 0, 0, 0x12, 0x7F}));
    EXPECT_EQ(packed(floats, kFloat32, little24),
              (FileBytes{0,    0,    0x80, 0,    0,    0x80, 1, 0, 0, 0,    0,    0x40,
                         0xFF, 0xFF, 0x7F, 0xFF, 0xFF, 0x7F, 0, 0, 0, 0xFF, 0xFF, 0x7F}));
    EXPECT_EQ(packed(std::vector<float>{-0.75f, 3.5f}, kFloat32, bigFloat),
              (FileBytes{0xBF, 0x40, 0, 0, 0x40, 0x60, 0, 0}));
    EXPECT_EQ(packed(std::vector<std::int16_t>{-16384}, kSigned16, bigFloat),
              (FileBytes{0xBF, 0, 0, 0}));
}

}  // namespace
}  // namespace sonavel
