#include <algorithm>
#include <new>

#include "exchange/file_frame.h"
#include "exchange/riff_building.h"
#include "exchange/tag_names.h"
#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::uint16_t kPcmTag = 1;
constexpr std::uint16_t kFloatTag = 3;
constexpr std::uint16_t kExtensibleTag = 0xFFFE;
constexpr std::uint32_t kMost32Bit = 0xFFFFFFFF;
constexpr std::size_t kLongSizesBytes = 28;
constexpr std::string_view kSubFormatTail(
    "\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14);

using Bytes = std::vector<std::uint8_t>;

void AppendPlainFormat(const EncodeRequest& request, std::uint16_t tag, unsigned bytes,
                       ByteBuilder& chunk) {
    const std::uint32_t align = bytes * request.channels;
    chunk.Little16(tag).Little16(request.channels);
    chunk.Little32(request.rate).Little32(request.rate * align);
    chunk.Little16(align).Little16(bytes * 8);
}

// The old form is what all programs read; it has no room for more than two channels.
Bytes FormatContent(const EncodeRequest& request, unsigned bytes) {
    const bool isFloat = request.depth == EncodedDepth::kFloat32;
    const std::uint16_t tag = isFloat ? kFloatTag : kPcmTag;
    ByteBuilder chunk;
    if (request.channels > 2) {
        AppendPlainFormat(request, kExtensibleTag, bytes, chunk);
        chunk.Little16(22).Little16(bytes * 8).Little32(0).Little16(tag).Text(kSubFormatTail);
        return chunk.Bytes();
    }
    AppendPlainFormat(request, tag, bytes, chunk);
    if (isFloat) chunk.Little16(0);
    return chunk.Bytes();
}

Bytes LongSizes(std::uint64_t riffBytes, std::uint64_t dataBytes, std::uint64_t frames) {
    ByteBuilder chunk;
    for (const std::uint64_t number : {riffBytes, dataBytes, frames})
        chunk.Little32(static_cast<std::uint32_t>(number))
            .Little32(static_cast<std::uint32_t>(number >> 32));
    return chunk.Little32(0).Bytes();
}

void AppendChunks(const SoundExtras& extras, ChunkSide side, Bytes& to) {
    for (const ForeignChunk& chunk : extras.chunks)
        if (chunk.family == ChunkFamily::kRiff && chunk.side == side)
            AppendRiffChunk(chunk.id,
                            chunk.id == kSamplerChunk
                                ? SamplerWithLoops(chunk.bytes, extras.markers)
                                : chunk.bytes,
                            to);
}

Bytes InfoContent(const SoundExtras& extras) {
    Bytes list;
    for (const SoundTag& tag : extras.tags) {
        const std::optional<FourCc> id = InfoOfKey(tag.key);
        if (!id) continue;
        Bytes text(tag.value.begin(), tag.value.end());
        text.push_back(0);
        AppendRiffChunk(*id, text, list);
    }
    return list;
}

Bytes BehindSound(const EncodeRequest& request, const SoundExtras& extras,
                  std::uint64_t dataBytes) {
    Bytes bytes(dataBytes % 2, 0);
    AppendMarkers(MarkersBesideLoops(extras), request.frames, bytes);
    if (const Bytes info = InfoContent(extras); !info.empty()) AppendRiffList("INFO", info, bytes);
    AppendChunks(extras, ChunkSide::kBehindSound, bytes);
    return bytes;
}

// All that stands before the content of "data", but for the form's own head.
Bytes BeforeSound(const EncodeRequest& request, const SoundExtras& extras, unsigned sampleBytes) {
    Bytes bytes;
    AppendRiffChunk(kFormatChunk, FormatContent(request, sampleBytes), bytes);
    if (request.depth == EncodedDepth::kFloat32) {
        const auto frames =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(request.frames, kMost32Bit));
        AppendRiffChunk(MakeFourCc("fact"), ByteBuilder().Little32(frames).Bytes(), bytes);
    }
    AppendChunks(extras, ChunkSide::kBeforeSound, bytes);
    return bytes;
}

Bytes Head(const EncodeRequest& request, const Bytes& chunks, std::uint64_t dataBytes,
           std::uint64_t behindBytes) {
    // The form type, and the head of "data".
    const std::uint64_t riffBytes = 4 + chunks.size() + 8 + dataBytes + behindBytes;
    const bool isLong = request.kind == SoundFileKind::kRf64 || riffBytes > kMost32Bit;
    const auto narrow = [&](std::uint64_t bytes) {
        return isLong ? kMost32Bit : static_cast<std::uint32_t>(bytes);
    };
    ByteBuilder form;
    form.Text(isLong ? "RF64" : "RIFF").Little32(narrow(riffBytes)).Text("WAVE");
    Bytes head = form.Bytes();
    if (isLong)
        AppendRiffChunk(MakeFourCc("ds64"),
                        LongSizes(riffBytes + 8 + kLongSizesBytes, dataBytes, request.frames),
                        head);
    head.insert(head.end(), chunks.begin(), chunks.end());
    const Bytes data = ByteBuilder().Text("data").Little32(narrow(dataBytes)).Bytes();
    head.insert(head.end(), data.begin(), data.end());
    return head;
}

}  // namespace

Result<FileFrame> FrameWav(const EncodeRequest& request, const SoundExtras& extras) try {
    FileFrame frame;
    frame.samples = {request.depth, ByteOrder::kLittle, EightBitZero::kAt128};
    const auto sampleBytes = static_cast<unsigned>(frame.samples.Bytes());
    const std::uint64_t dataBytes = request.frames * request.channels * sampleBytes;
    frame.behind = BehindSound(request, extras, dataBytes);
    frame.before =
        Head(request, BeforeSound(request, extras, sampleBytes), dataBytes, frame.behind.size());
    return frame;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
