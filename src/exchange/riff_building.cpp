#include "exchange/riff_building.h"

#include <algorithm>
#include <string>

#include "exchange/chunk_map.h"
#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::size_t kLoopsOffset = 36;
constexpr std::size_t kLoopBytes = 24;
constexpr std::uint64_t kMost32Bit = 0xFFFFFFFF;

using Bytes = std::vector<std::uint8_t>;

void Append(const Bytes& bytes, Bytes& to) {
    to.insert(to.end(), bytes.begin(), bytes.end());
}

Bytes CueContent(const std::vector<SoundChapter>& markers) {
    ByteBuilder cue;
    cue.Little32(static_cast<std::uint32_t>(markers.size()));
    std::uint32_t id = 0;
    for (const SoundChapter& marker : markers) {
        const auto frame = static_cast<std::uint32_t>(marker.startFrame);
        cue.Little32(++id).Little32(frame).Text("data").Little32(0).Little32(0).Little32(frame);
    }
    return cue.Bytes();
}

Bytes LengthContent(std::uint32_t id, std::uint64_t frames) {
    return ByteBuilder()
        .Little32(id)
        .Little32(static_cast<std::uint32_t>(std::min(frames, kMost32Bit)))
        .Text("rgn ")
        .Little32(0)
        .Little32(0)
        .Bytes();
}

Bytes TextContent(const std::vector<SoundChapter>& markers) {
    Bytes list;
    std::uint32_t id = 0;
    for (const SoundChapter& marker : markers) {
        ++id;
        if (marker.frames != 0) AppendRiffChunk(kTextChunk, LengthContent(id, marker.frames), list);
    }
    id = 0;
    for (const SoundChapter& marker : markers) {
        const Bytes label = ByteBuilder().Little32(++id).Text(marker.name).Byte(0).Bytes();
        AppendRiffChunk(kLabelChunk, label, list);
    }
    return list;
}

std::size_t LoopCount(std::span<const std::uint8_t> smpl) {
    if (smpl.size() < kLoopsOffset) return 0;
    const std::size_t stated = ChunkFields(smpl, ByteOrder::kLittle).U32(28);
    return std::min(stated, (smpl.size() - kLoopsOffset) / kLoopBytes);
}

const SoundChapter* FindLoop(std::size_t number, const std::vector<SoundChapter>& markers) {
    const std::string name = "Loop " + std::to_string(number);
    const auto found = std::ranges::find_if(markers, [&](const SoundChapter& marker) {
        return marker.name == name && marker.frames > 0 &&
               marker.startFrame + marker.frames - 1 <= kMost32Bit;
    });
    return found != markers.end() ? &*found : nullptr;
}

void Store32(std::uint64_t value, std::uint8_t* to) {
    for (int i = 0; i < 4; ++i) to[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

}  // namespace

void AppendRiffChunk(FourCc id, std::span<const std::uint8_t> content, Bytes& to) {
    Append(ByteBuilder().Little32(id).Little32(static_cast<std::uint32_t>(content.size())).Bytes(),
           to);
    to.insert(to.end(), content.begin(), content.end());
    if (content.size() % 2 != 0) to.push_back(0);
}

void AppendRiffList(std::string_view form, std::span<const std::uint8_t> content, Bytes& to) {
    Bytes list(form.begin(), form.end());
    list.insert(list.end(), content.begin(), content.end());
    AppendRiffChunk(kListChunk, list, to);
}

void AppendMarkers(const std::vector<SoundChapter>& markers, std::uint64_t frames, Bytes& to) {
    std::vector<SoundChapter> written;
    for (const SoundChapter& marker : markers)
        if (marker.startFrame <= std::min(frames, kMost32Bit)) written.push_back(marker);
    if (written.empty()) return;
    AppendRiffChunk(kCueChunk, CueContent(written), to);
    AppendRiffList("adtl", TextContent(written), to);
}

Bytes SamplerWithLoops(Bytes smpl, const std::vector<SoundChapter>& markers) {
    for (std::size_t i = 0; i < LoopCount(smpl); ++i) {
        const SoundChapter* loop = FindLoop(i + 1, markers);
        if (loop == nullptr) continue;
        std::uint8_t* fields = &smpl[kLoopsOffset + kLoopBytes * i];
        Store32(loop->startFrame, fields + 8);
        Store32(loop->startFrame + loop->frames - 1, fields + 12);
    }
    return smpl;
}

std::vector<SoundChapter> MarkersBesideLoops(const SoundExtras& extras) {
    std::vector<SoundChapter> markers = extras.markers;
    for (const ForeignChunk& chunk : extras.chunks) {
        if (chunk.family != ChunkFamily::kRiff || chunk.id != kSamplerChunk) continue;
        for (std::size_t i = 0; i < LoopCount(chunk.bytes); ++i)
            if (const SoundChapter* loop = FindLoop(i + 1, markers))
                markers.erase(markers.begin() + (loop - markers.data()));
    }
    return markers;
}

}  // namespace sonavel
