#include "exchange/tagged_file.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "exchange/chunk_map.h"
#include "exchange/comment_writer.h"
#include "exchange/id3_tags.h"
#include "exchange/id3_writer.h"
#include "exchange/ogg_pages.h"
#include "platform/failure_texts.h"
#include "sound/byte_order.h"

namespace sonavel {
namespace {

using Bytes = std::vector<std::uint8_t>;
using enum SoundFileKind;

constexpr std::string_view kUnknown = "The encoder wrote a file that cannot be tagged.";
constexpr std::string_view kVorbisHead = "\x03vorbis", kOpusHead = "OpusTags";

std::span<const std::uint8_t> AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

Outcome CopyFrom(RandomBytes& encoded, std::uint64_t offset, ReplacingFile& to) {
    constexpr std::uint64_t kPieceBytes = 1 << 20;
    while (offset < encoded.Size()) {
        const Bytes piece = encoded.Part(offset, kPieceBytes);
        if (piece.empty()) return Failed(failure::kReadData);
        if (!to.Write(piece)) return Failed(failure::kWriteData);
        offset += piece.size();
    }
    return Done();
}

Outcome WriteMp3(RandomBytes& encoded, const SoundExtras& extras, std::uint32_t rate,
                 ReplacingFile& to) {
    const auto tag = BuildId3Tag(extras, rate);
    if (!tag) return tag.Ended();
    if (!to.Write(*tag)) return Failed(failure::kWriteData);
    return CopyFrom(encoded, BytesOfId3(encoded.Part(0, 10)), to);
}

// A metadata block of FLAC: a type with a mark of the last one, a size of 24 bits, content.
Bytes FlacBlock(unsigned type, std::span<const std::uint8_t> content) {
    ByteBuilder block;
    block.Byte(type).Byte(static_cast<unsigned>(content.size() >> 16));
    block.Big16(static_cast<unsigned>(content.size() & 0xFFFF));
    Bytes bytes = block.Bytes();
    bytes.insert(bytes.end(), content.begin(), content.end());
    return bytes;
}

// The comments come last, so that they alone carry the mark.
Outcome WriteFlac(RandomBytes& encoded, const SoundExtras& extras, std::uint32_t rate,
                  ReplacingFile& to) {
    constexpr unsigned kComments = 4, kLast = 0x80;
    constexpr std::size_t kMostBlockBytes = 0xFFFFFF;
    Bytes head = encoded.Part(0, 4);
    if (!std::ranges::equal(head, AsBytes("fLaC"))) return Failed(kUnknown);
    std::string vendor = "Sonavel";
    std::uint64_t at = 4;
    for (bool isLast = false; !isLast;) {
        const Bytes start = encoded.Part(at, 4);
        if (start.size() < 4) return Failed(kUnknown);
        const unsigned type = start[0] & 0x7F;
        const Bytes content =
            encoded.Part(at + 4, ChunkFields(start, ByteOrder::kBig).U32(0) & 0xFFFFFF);
        if (type == kComments) vendor = VendorOf(content);
        const Bytes block = type == kComments ? Bytes() : FlacBlock(type, content);
        head.insert(head.end(), block.begin(), block.end());
        isLast = (start[0] & kLast) != 0;
        at += 4 + content.size();
    }
    const Bytes comments = BuildCommentBlock(vendor, extras, rate);
    if (comments.size() > kMostBlockBytes)
        return Failed("FLAC files hold at most 16 MiB of tags and chapters.");
    if (!to.Write(head) || !to.Write(FlacBlock(kComments | kLast, comments)))
        return Failed(failure::kWriteData);
    return CopyFrom(encoded, at, to);
}

// The pages of an Ogg file, numbered anew as they are written.
class OggWriting {
  public:
    OggWriting(RandomBytes& encoded, ReplacingFile& to) : encoded_(encoded), to_(to) {}

    // Packets without sound, on as many pages as they take.
    bool WritePackets(const std::vector<Bytes>& packets, std::uint32_t stream);
    // The page at that place as it is, but for its number.
    bool CopyPage(const OggPage& page) {
        return Write(page, encoded_.Part(page.contentOffset, page.ContentBytes()));
    }

  private:
    bool Write(const OggPage& page, std::span<const std::uint8_t> content) {
        return to_.Write(OggPageBytes(page, number_++, content));
    }

    RandomBytes& encoded_;
    ReplacingFile& to_;
    std::uint32_t number_ = 0;
};

bool OggWriting::WritePackets(const std::vector<Bytes>& packets, std::uint32_t stream) {
    constexpr std::uint8_t kGoesOn = 1;
    constexpr std::size_t kMostPieces = 255, kFull = 255;
    Bytes lengths, content;
    for (const Bytes& packet : packets) {
        lengths.insert(lengths.end(), packet.size() / kFull, kFull);
        lengths.push_back(static_cast<std::uint8_t>(packet.size() % kFull));
        content.insert(content.end(), packet.begin(), packet.end());
    }
    bool goesOn = false;
    std::span<const std::uint8_t> leftLengths = lengths, leftContent = content;
    while (!leftLengths.empty()) {
        const auto some = leftLengths.first(std::min(leftLengths.size(), kMostPieces));
        OggPage page;
        page.flags = goesOn ? kGoesOn : std::uint8_t{0};
        page.stream = stream;
        page.lengths.assign(some.begin(), some.end());
        // No packet ends on it, and so no time does.
        if (std::ranges::find_if(some, [](auto l) { return l < kFull; }) == some.end())
            page.granule = ~std::uint64_t{0};
        const auto bytes = static_cast<std::size_t>(page.ContentBytes());
        if (!Write(page, leftContent.first(bytes))) return false;
        goesOn = some.back() == kFull;
        leftLengths = leftLengths.subspan(some.size());
        leftContent = leftContent.subspan(bytes);
    }
    return true;
}

Bytes CommentPacket(std::string_view head, const Bytes& old, const SoundExtras& extras,
                    std::uint32_t rate) {
    const std::string_view vendor = VendorOf(std::span(old).subspan(head.size()));
    const Bytes block = BuildCommentBlock(vendor, extras, rate);
    Bytes packet(head.begin(), head.end());
    packet.insert(packet.end(), block.begin(), block.end());
    if (head == kVorbisHead) packet.push_back(1);  // the end of the list, as its format has it
    return packet;
}

// Of Vorbis, the tables of the decoder follow the comments and end on their page, too.
Outcome WriteOgg(RandomBytes& encoded, const SoundExtras& extras, std::uint32_t rate,
                 ReplacingFile& to) {
    const std::optional<OggPage> first = OggPageAt(encoded, 0);
    OggPackets packets(encoded);
    if (!first || !packets.Next()) return Failed(kUnknown);
    const auto comments = packets.Next();
    if (!comments) return Failed(kUnknown);
    const auto begins = [&](std::string_view head) {
        return comments->size() >= head.size() &&
               std::equal(head.begin(), head.end(), comments->begin());
    };
    const bool isVorbis = begins(kVorbisHead);
    if (!isVorbis && !begins(kOpusHead)) return Failed(kUnknown);
    std::vector<Bytes> heads = {
        CommentPacket(isVorbis ? kVorbisHead : kOpusHead, *comments, extras, rate)};
    if (isVorbis) {
        const auto tables = packets.Next();
        if (!tables) return Failed(kUnknown);
        heads.push_back(*tables);
    }
    const std::optional<std::uint64_t> behind = packets.PageBehind();
    if (!behind) return Failed(kUnknown);
    OggWriting writing(encoded, to);
    if (!writing.CopyPage(*first) || !writing.WritePackets(heads, first->stream))
        return Failed(failure::kWriteData);
    std::uint64_t at = *behind;
    while (const auto page = OggPageAt(encoded, at)) {
        if (!writing.CopyPage(*page)) return Failed(failure::kWriteData);
        at = page->End();
    }
    return DoneIf(at == encoded.Size(), std::string(kUnknown));
}

}  // namespace

bool IsTaggedHere(SoundFileKind kind) {
    return kind == kFlac || kind == kOggVorbis || kind == kOpus || kind == kMp3;
}

Outcome WriteTagged(RandomBytes& encoded, SoundFileKind kind, const SoundExtras& extras,
                    std::uint32_t rate, ReplacingFile& to) {
    if (kind == kMp3) return WriteMp3(encoded, extras, rate, to);
    if (kind == kFlac) return WriteFlac(encoded, extras, rate, to);
    return WriteOgg(encoded, extras, rate, to);
}

}  // namespace sonavel
