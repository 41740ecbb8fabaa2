#include <algorithm>
#include <new>

#include "exchange/file_frame.h"
#include "exchange/foreign_text.h"
#include "sound/byte_order.h"
#include "sound/extended_float.h"

namespace sonavel {
namespace {

constexpr FourCc kInstrumentChunk = MakeFourCc("INST");
constexpr std::uint32_t kCompressedVersion = 0xA2805140;
constexpr std::string_view kFloatName = "32-bit floating point";
constexpr std::size_t kMostMarkName = 255;
constexpr std::size_t kMostMarks = 32767;
// Where "INST" has its loops: how they play, and the ids of the markers that they lie between.
constexpr std::size_t kLoopPlaces[] = {8, 14};
constexpr const char* kLoopNames[] = {"Loop 1", "Loop 2"};

using Bytes = std::vector<std::uint8_t>;

void AppendBigChunk(FourCc id, const Bytes& content, Bytes& to) {
    const Bytes head =
        ByteBuilder().Little32(id).Big32(static_cast<std::uint32_t>(content.size())).Bytes();
    to.insert(to.end(), head.begin(), head.end());
    to.insert(to.end(), content.begin(), content.end());
    if (content.size() % 2 != 0) to.push_back(0);
}

// A length, the text, and a pad byte where both are of odd size.
void AppendPascalText(std::string_view text, ByteBuilder& to) {
    const std::string_view name = Utf8Beginning(text, kMostMarkName);
    to.Byte(static_cast<unsigned>(name.size())).Text(name);
    if (name.size() % 2 == 0) to.Byte(0);
}

Bytes CommonContent(const EncodeRequest& request, unsigned bits) {
    ByteBuilder common;
    common.Big16(request.channels).Big32(static_cast<std::uint32_t>(request.frames)).Big16(bits);
    for (const std::uint8_t byte : ExtendedFromInteger(request.rate)) common.Byte(byte);
    if (request.depth == EncodedDepth::kFloat32) {
        common.Text("fl32");
        AppendPascalText(kFloatName, common);
    }
    return common.Bytes();
}

// Numbers the marks, and ties the loops of a kept "INST" to them.
class MarkWriting {
  public:
    void Add(std::uint64_t frame, std::string_view name) {
        if (count_ == kMostMarks || frame > 0xFFFFFFFF) return;
        marks_.Big16(++count_).Big32(static_cast<std::uint32_t>(frame));
        AppendPascalText(name, marks_);
    }
    // True when the marker is a loop of the instrument, whose ends then have marks.
    bool AddLoop(const SoundChapter& marker, Bytes& instrument);
    void AppendTo(Bytes& to) const {
        if (count_ == 0) return;
        Bytes content = ByteBuilder().Big16(count_).Bytes();
        content.insert(content.end(), marks_.Bytes().begin(), marks_.Bytes().end());
        AppendBigChunk(MakeFourCc("MARK"), content, to);
    }

  private:
    unsigned count_ = 0;
    ByteBuilder marks_;
};

bool MarkWriting::AddLoop(const SoundChapter& marker, Bytes& instrument) {
    const auto* name = std::ranges::find(kLoopNames, marker.name);
    if (name == std::end(kLoopNames) || marker.frames == 0) return false;
    const std::size_t at = kLoopPlaces[name - std::begin(kLoopNames)];
    if (instrument.size() < at + 6 || instrument[at + 3] != 0) return false;
    constexpr std::uint8_t kForward = 1;
    if (instrument[at + 1] == 0) instrument[at + 1] = kForward;
    const auto tie = [&](std::size_t to, std::uint64_t frame, const char* markName) {
        Add(frame, markName);
        instrument[to] = static_cast<std::uint8_t>(count_ >> 8);
        instrument[to + 1] = static_cast<std::uint8_t>(count_);
    };
    tie(at + 2, marker.startFrame, "beg loop");
    tie(at + 4, marker.startFrame + marker.frames, "end loop");
    return true;
}

// Ids of marks of the file that it came from mean nothing in this one.
Bytes WithoutTies(Bytes instrument) {
    for (const std::size_t at : kLoopPlaces)
        for (std::size_t i = at + 2; i < at + 6 && i < instrument.size(); ++i) instrument[i] = 0;
    return instrument;
}

Bytes Instrument(const SoundExtras& extras) {
    for (const ForeignChunk& chunk : extras.chunks)
        if (chunk.family == ChunkFamily::kAiff && chunk.id == kInstrumentChunk)
            return WithoutTies(chunk.bytes);
    return {};
}

// A loop that found no region any more does not play.
void SilenceUntied(Bytes& instrument) {
    for (const std::size_t at : kLoopPlaces)
        if (instrument.size() >= at + 6 && instrument[at + 2] == 0 && instrument[at + 3] == 0)
            instrument[at] = instrument[at + 1] = 0;
}

void AppendMarks(const SoundExtras& extras, Bytes& to) {
    Bytes instrument = Instrument(extras);
    MarkWriting marks;
    for (const SoundChapter& marker : extras.markers)
        if (!marks.AddLoop(marker, instrument)) marks.Add(marker.startFrame, marker.name);
    marks.AppendTo(to);
    if (instrument.empty()) return;
    SilenceUntied(instrument);
    AppendBigChunk(kInstrumentChunk, instrument, to);
}

void AppendTexts(const SoundExtras& extras, Bytes& to) {
    const struct {
        const char* key;
        FourCc id;
    } texts[] = {{"title", MakeFourCc("NAME")},
                 {"artist", MakeFourCc("AUTH")},
                 {"copyright", MakeFourCc("(c) ")},
                 {"comment", MakeFourCc("ANNO")}};
    for (const auto& text : texts) {
        const auto tag = std::ranges::find(extras.tags, text.key, &SoundTag::key);
        if (tag != extras.tags.end())
            AppendBigChunk(text.id, {tag->value.begin(), tag->value.end()}, to);
    }
}

void AppendForeign(const SoundExtras& extras, ChunkSide side, Bytes& to) {
    for (const ForeignChunk& chunk : extras.chunks)
        if (chunk.family == ChunkFamily::kAiff && chunk.side == side &&
            chunk.id != kInstrumentChunk)
            AppendBigChunk(chunk.id, chunk.bytes, to);
}

Bytes ChunksBefore(const EncodeRequest& request, const SoundExtras& extras, unsigned bits) {
    Bytes chunks;
    if (request.depth == EncodedDepth::kFloat32)
        AppendBigChunk(MakeFourCc("FVER"), ByteBuilder().Big32(kCompressedVersion).Bytes(), chunks);
    AppendBigChunk(MakeFourCc("COMM"), CommonContent(request, bits), chunks);
    AppendMarks(extras, chunks);
    AppendTexts(extras, chunks);
    AppendForeign(extras, ChunkSide::kBeforeSound, chunks);
    return chunks;
}

}  // namespace

Result<FileFrame> FrameAiff(const EncodeRequest& request, const SoundExtras& extras) try {
    FileFrame frame;
    frame.samples = {request.depth, ByteOrder::kBig, EightBitZero::kAt0};
    const std::size_t sampleBytes = frame.samples.Bytes();
    const std::uint64_t dataBytes = request.frames * request.channels * sampleBytes;
    const Bytes chunks = ChunksBefore(request, extras, static_cast<unsigned>(sampleBytes * 8));
    frame.behind.assign(dataBytes % 2, 0);
    AppendForeign(extras, ChunkSide::kBehindSound, frame.behind);
    // The form type, and the head of "SSND" with its two numbers.
    const std::uint64_t formBytes = 4 + chunks.size() + 16 + dataBytes + frame.behind.size();
    if (formBytes > 0xFFFFFFFF) return Failed("AIFF files hold at most 4 GiB.");
    ByteBuilder form;
    form.Text("FORM").Big32(static_cast<std::uint32_t>(formBytes));
    form.Text(request.depth == EncodedDepth::kFloat32 ? "AIFC" : "AIFF");
    frame.before = form.Bytes();
    frame.before.insert(frame.before.end(), chunks.begin(), chunks.end());
    ByteBuilder sound;
    sound.Text("SSND").Big32(static_cast<std::uint32_t>(dataBytes + 8)).Big32(0).Big32(0);
    frame.before.insert(frame.before.end(), sound.Bytes().begin(), sound.Bytes().end());
    return frame;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
