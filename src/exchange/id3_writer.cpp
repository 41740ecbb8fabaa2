#include "exchange/id3_writer.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "exchange/tag_names.h"
#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::size_t kMostTagSize = (std::size_t{1} << 28) - 1;
constexpr std::size_t kMostContents = 255;
constexpr unsigned kUtf8 = 3;
constexpr unsigned kTopLevelInOrder = 3;

// Seven bits a byte.
void AddSyncSafe(std::size_t number, ByteBuilder& to) {
    for (unsigned shift = 28; shift > 0;) {
        shift -= 7;
        to.Byte(static_cast<unsigned>(number >> shift & 0x7F));
    }
}

std::string_view TextOf(const ByteBuilder& builder) {
    return {reinterpret_cast<const char*>(builder.Bytes().data()), builder.Bytes().size()};
}

void AddFrame(std::string_view name, const ByteBuilder& content, ByteBuilder& to) {
    to.Text(name);
    AddSyncSafe(content.Bytes().size(), to);
    to.Big16(0).Text(TextOf(content));
}

void AddTextFrame(std::string_view name, std::string_view text, ByteBuilder& to) {
    ByteBuilder content;
    content.Byte(kUtf8);
    // Of a comment, an undetermined language and an empty description.
    if (name == "COMM") content.Text("und").Byte(0);
    AddFrame(name, content.Text(text), to);
}

void AddTag(const SoundTag& tag, ByteBuilder& to) {
    if (const auto name = Id3OfKey(tag.key)) return AddTextFrame(*name, tag.value, to);
    ByteBuilder content;
    AddFrame("TXXX", content.Byte(kUtf8).Text(tag.key).Byte(0).Text(tag.value), to);
}

std::string ChapterId(std::size_t number) {
    return "chp" + std::to_string(number);
}

std::uint32_t MillisecondsAt(std::uint64_t frame, std::uint32_t rate) {
    const std::uint64_t ms = frame / rate * 1000 + (frame % rate * 1000 + rate / 2) / rate;
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(ms, 0xFFFFFFFE));
}

void AddContents(std::size_t chapters, ByteBuilder& to) {
    const std::size_t count = std::min(chapters, kMostContents);
    ByteBuilder content;
    content.Text("toc").Byte(0).Byte(kTopLevelInOrder).Byte(static_cast<unsigned>(count));
    for (std::size_t i = 0; i < count; ++i) content.Text(ChapterId(i)).Byte(0);
    AddFrame("CTOC", content, to);
}

void AddChapter(std::size_t number, const SoundChapter& marker, std::uint32_t rate,
                ByteBuilder& to) {
    constexpr std::uint32_t kNoByteOffset = 0xFFFFFFFF;
    ByteBuilder content;
    content.Text(ChapterId(number)).Byte(0);
    content.Big32(MillisecondsAt(marker.startFrame, rate));
    content.Big32(MillisecondsAt(marker.startFrame + marker.frames, rate));
    content.Big32(kNoByteOffset).Big32(kNoByteOffset);
    if (!marker.name.empty()) AddTextFrame("TIT2", marker.name, content);
    AddFrame("CHAP", content, to);
}

}  // namespace

Result<std::vector<std::uint8_t>> BuildId3Tag(const SoundExtras& extras, std::uint32_t rate) {
    ByteBuilder frames;
    for (const SoundTag& tag : extras.tags) AddTag(tag, frames);
    if (!extras.markers.empty() && rate != 0) {
        AddContents(extras.markers.size(), frames);
        std::size_t number = 0;
        for (const SoundChapter& marker : extras.markers)
            AddChapter(number++, marker, rate, frames);
    }
    if (frames.Bytes().size() > kMostTagSize)
        return Failed("MP3 files hold at most 256 MiB of tags and chapters.");
    ByteBuilder tag;
    tag.Text("ID3").Byte(4).Byte(0).Byte(0);
    AddSyncSafe(frames.Bytes().size(), tag);
    return tag.Text(TextOf(frames)).Bytes();
}

}  // namespace sonavel
