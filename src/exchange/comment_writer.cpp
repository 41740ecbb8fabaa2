#include "exchange/comment_writer.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "exchange/chunk_map.h"
#include "exchange/tag_names.h"
#include "exchange/vorbis_comments.h"
#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kSecond = 1'000'000'000, kMillisecond = 1'000'000;

// "00:01:02.500", and with nine digits behind the point where three miss the frame.
std::string TimeText(std::uint64_t frame, std::uint32_t rate) {
    const std::uint64_t seconds = frame / rate;
    const std::uint64_t part = (frame % rate * kSecond + rate / 2) / rate;
    const std::uint64_t ms = (part + kMillisecond / 2) / kMillisecond;
    const bool isWholeMs =
        ms < 1000 && ChapterFrame(seconds * kSecond + ms * kMillisecond, rate) == frame;
    const std::uint64_t digits = isWholeMs ? ms : std::min(part, kSecond - 1);
    char text[64];
    std::snprintf(text, sizeof text, "%02llu:%02llu:%02llu.%0*llu",
                  static_cast<unsigned long long>(seconds / 3600),
                  static_cast<unsigned long long>(seconds / 60 % 60),
                  static_cast<unsigned long long>(seconds % 60), isWholeMs ? 3 : 9,
                  static_cast<unsigned long long>(digits));
    return text;
}

std::string ChapterName(std::size_t number) {
    char name[32];
    std::snprintf(name, sizeof name, "CHAPTER%03zu", number);
    return name;
}

std::vector<std::string> CommentsOf(const SoundExtras& extras, std::uint32_t rate) {
    std::vector<std::string> comments;
    for (const SoundTag& tag : extras.tags)
        if (const auto name = CommentOfKey(tag.key)) comments.push_back(*name + '=' + tag.value);
    if (rate == 0) return comments;
    std::size_t number = 0;
    for (const SoundChapter& marker : extras.markers) {
        const std::string chapter = ChapterName(++number);
        comments.push_back(chapter + '=' + TimeText(marker.startFrame, rate));
        if (!marker.name.empty()) comments.push_back(chapter + "NAME=" + marker.name);
    }
    return comments;
}

}  // namespace

std::vector<std::uint8_t> BuildCommentBlock(std::string_view vendor, const SoundExtras& extras,
                                            std::uint32_t rate) {
    const std::vector<std::string> comments = CommentsOf(extras, rate);
    ByteBuilder block;
    const auto add = [&](std::string_view text) {
        block.Little32(static_cast<std::uint32_t>(text.size())).Text(text);
    };
    add(vendor);
    block.Little32(static_cast<std::uint32_t>(comments.size()));
    for (const std::string& comment : comments) add(comment);
    return block.Bytes();
}

std::string_view VendorOf(std::span<const std::uint8_t> block) {
    const ChunkFields fields(block, ByteOrder::kLittle);
    const auto vendor = fields.Bytes(4, fields.U32(0));
    return {reinterpret_cast<const char*>(vendor.data()), vendor.size()};
}

}  // namespace sonavel
