#include "exchange/vorbis_comments.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "exchange/chunk_map.h"
#include "exchange/foreign_text.h"
#include "exchange/id3_tags.h"
#include "exchange/ogg_pages.h"
#include "exchange/tag_names.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kMostComments = 65536;
constexpr std::string_view kCut = "The list of tags is cut short.";
constexpr std::string_view kPicture = "metadata_block_picture";
constexpr std::string_view kChapter = "chapter";

std::string_view AsText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::optional<std::uint64_t> Number(std::string_view digits) {
    std::uint64_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value);
    if (digits.empty() || digits.size() > 9 || error != std::errc() || rest != end)
        return std::nullopt;
    return value;
}

// "01:02:03.5" in nanoseconds.
std::optional<std::uint64_t> TimeOf(std::string_view text) {
    if (text.size() < 8 || text[2] != ':' || text[5] != ':') return std::nullopt;
    const auto hours = Number(text.substr(0, 2)), minutes = Number(text.substr(3, 2)),
               seconds = Number(text.substr(6, 2));
    std::string fraction(text.size() > 9 && text[8] == '.' ? text.substr(9, 9) : "0");
    fraction.resize(9, '0');
    const auto part = Number(fraction);
    if (!hours || !minutes || !seconds || !part) return std::nullopt;
    return ((*hours * 60 + *minutes) * 60 + *seconds) * 1'000'000'000 + *part;
}

class CommentReading {
  public:
    CommentReading(std::uint32_t rate, ExtrasKeeper& keeper) : rate_(rate), keeper_(keeper) {}

    void Take(std::string_view comment);
    void HandOver();

  private:
    struct Chapter {
        std::optional<std::uint64_t> time;
        std::string name;
    };

    bool TakeChapter(std::string_view key, std::string_view value);

    std::uint32_t rate_;
    ExtrasKeeper& keeper_;
    std::map<std::uint64_t, Chapter> chapters_;  // by their numbers
};

bool CommentReading::TakeChapter(std::string_view key, std::string_view value) {
    if (!key.starts_with(kChapter)) return false;
    key.remove_prefix(kChapter.size());
    const bool isName = key.ends_with("name");
    if (isName) key.remove_suffix(4);
    const bool isUrl = key.ends_with("url");
    const std::optional<std::uint64_t> number = Number(key);
    if (!number) return isUrl;
    if (isName)
        chapters_[*number].name = Utf8FromUnknown(value.substr(0, kMostMarkerNameBytes));
    else
        chapters_[*number].time = TimeOf(value);
    return true;
}

void CommentReading::Take(std::string_view comment) {
    const std::size_t equals = comment.find('=');
    if (equals == std::string_view::npos || equals == 0 || equals > 256) return;
    const std::string key = KeyOfComment(Utf8FromUnknown(comment.substr(0, equals)));
    const std::string_view value = comment.substr(equals + 1);
    if (key == kPicture) return keeper_.PassOverPicture();
    if (TakeChapter(key, value)) return;
    if (keeper_.HasTag(key)) return keeper_.Remark("Further values of a tag are left out.");
    keeper_.AddTag(key, Utf8FromUnknown(value));
}

void CommentReading::HandOver() {
    for (auto& [number, chapter] : chapters_)
        if (chapter.time && rate_ != 0)
            keeper_.AddMarker({ChapterFrame(*chapter.time, rate_), 0, std::move(chapter.name)});
}

std::span<const std::uint8_t> CommentBlockOf(std::span<const std::uint8_t> packet) {
    constexpr std::string_view kHeads[] = {"\x03vorbis", "OpusTags"};
    for (const std::string_view head : kHeads)
        if (AsText(packet).starts_with(head)) return packet.subspan(head.size());
    // A metadata block of FLAC with its head of 4 bytes.
    const bool isFlac = packet.size() > 4 && (packet[0] & 0x7F) == 4;
    return isFlac ? packet.subspan(4) : std::span<const std::uint8_t>{};
}

}  // namespace

// 99 hours at the highest rate do not fit 64 bits in nanoseconds, so whole seconds go apart.
std::uint64_t ChapterFrame(std::uint64_t nanoseconds, std::uint32_t rate) {
    constexpr std::uint64_t kSecond = 1'000'000'000;
    return nanoseconds / kSecond * rate + (nanoseconds % kSecond * rate + kSecond / 2) / kSecond;
}

void AddVorbisComments(std::span<const std::uint8_t> block, std::uint32_t rate,
                       ExtrasKeeper& keeper) {
    const ChunkFields fields(block, ByteOrder::kLittle);
    CommentReading reading(rate, keeper);
    std::uint64_t at = std::uint64_t{4} + fields.U32(0);
    if (at + 4 > block.size()) return keeper.Remark(kCut);
    const std::uint32_t count = fields.U32(static_cast<std::size_t>(at));
    at += 4;
    for (std::uint32_t i = 0; i < std::min(count, kMostComments); ++i) {
        if (at + 4 > block.size()) {
            keeper.Remark(kCut);
            break;
        }
        const std::uint32_t size = fields.U32(static_cast<std::size_t>(at));
        const auto comment = fields.Bytes(static_cast<std::size_t>(at) + 4, size);
        if (comment.size() < size) keeper.Remark(kCut);
        reading.Take(AsText(comment));
        at += 4 + std::uint64_t{size};
    }
    reading.HandOver();
}

void ReadFlacExtras(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper) {
    constexpr int kMostBlocks = 1000, kCommentBlock = 4, kPictureBlock = 6;
    constexpr int kProgramBlock = 2, kTracksBlock = 5;
    std::uint64_t at = BytesOfId3(bytes.Part(0, 10));
    if (AsText(bytes.Part(at, 4)) != "fLaC") return;
    at += 4;
    for (int i = 0; i < kMostBlocks; ++i) {
        const std::vector<std::uint8_t> head = bytes.Part(at, 4);
        const ChunkFields fields(head, ByteOrder::kBig);
        const std::uint32_t size = fields.U32(0) & 0xFFFFFF;
        const int type = head.size() == 4 ? head[0] & 0x7F : 0;
        if (type == kCommentBlock) AddVorbisComments(bytes.Part(at + 4, size), rate, keeper);
        if (type == kPictureBlock) keeper.PassOverPicture();
        if (type == kProgramBlock || type == kTracksBlock)
            keeper.Remark("Blocks of unknown kinds are left out.");
        if (head.size() < 4 || (head[0] & 0x80) != 0) return;
        at += 4 + std::uint64_t{size};
    }
}

void ReadOggExtras(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper) {
    OggPackets packets(bytes);
    if (!packets.Next()) return;
    const auto packet = packets.Next();
    if (!packet) return keeper.Remark(kCut);
    const std::span<const std::uint8_t> block = CommentBlockOf(*packet);
    if (!block.empty()) AddVorbisComments(block, rate, keeper);
}

}  // namespace sonavel
