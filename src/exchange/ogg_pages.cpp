#include "exchange/ogg_pages.h"

#include <array>
#include <cstddef>
#include <numeric>

#include "exchange/chunk_map.h"
#include "sound/byte_order.h"
#include "sound/codec_values.h"
#include "sound/four_cc.h"

namespace sonavel {
namespace {

constexpr std::size_t kHeadBytes = 27;
constexpr std::size_t kChecksumAt = 22;

// Polynomial 0x04C11DB7, highest bit first, from 0 and without an inversion.
constexpr std::array<std::uint32_t, 256> MakeTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t rest = i << 24;
        for (int bit = 0; bit < 8; ++bit)
            rest = rest << 1 ^ ((rest & 0x80000000) != 0 ? 0x04C11DB7 : 0);
        table[i] = rest;
    }
    return table;
}

std::uint32_t ChecksumOf(std::span<const std::uint8_t> bytes) {
    static constexpr std::array<std::uint32_t, 256> kTable = MakeTable();
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : bytes) sum = sum << 8 ^ kTable[sum >> 24 ^ byte];
    return sum;
}

}  // namespace

std::uint64_t OggPage::ContentBytes() const {
    return std::accumulate(lengths.begin(), lengths.end(), std::uint64_t{0});
}

std::optional<OggPage> OggPageAt(RandomBytes& bytes, std::uint64_t offset) {
    const std::vector<std::uint8_t> head = bytes.Part(offset, kHeadBytes);
    const ChunkFields fields(head, ByteOrder::kLittle);
    if (head.size() < kHeadBytes || fields.Id(0) != MakeFourCc("OggS")) return std::nullopt;
    OggPage page;
    page.flags = head[5];
    page.granule = fields.U64(6);
    page.stream = fields.U32(14);
    page.lengths = bytes.Part(offset + kHeadBytes, head.back());
    page.contentOffset = offset + kHeadBytes + page.lengths.size();
    return page.lengths.size() == head.back() ? std::optional(std::move(page)) : std::nullopt;
}

std::vector<std::uint8_t> OggPageBytes(const OggPage& page, std::uint32_t number,
                                       std::span<const std::uint8_t> content) {
    ByteBuilder head;
    head.Text("OggS").Byte(0).Byte(page.flags);
    head.Little32(static_cast<std::uint32_t>(page.granule));
    head.Little32(static_cast<std::uint32_t>(page.granule >> 32));
    head.Little32(page.stream).Little32(number).Little32(0);
    head.Byte(static_cast<unsigned>(page.lengths.size()));
    std::vector<std::uint8_t> bytes = head.Bytes();
    bytes.insert(bytes.end(), page.lengths.begin(), page.lengths.end());
    bytes.insert(bytes.end(), content.begin(), content.end());
    const std::uint32_t sum = ChecksumOf(bytes);
    for (unsigned i = 0; i < 4; ++i)
        bytes[kChecksumAt + i] = static_cast<std::uint8_t>(sum >> 8 * i);
    return bytes;
}

// Goes to the next page of the stream, past those of others.
bool OggPackets::TurnPage() {
    constexpr int kMostPagesOfOthers = 1000;
    std::uint64_t offset = page_ ? page_->End() : 0;
    for (int i = 0; i < kMostPagesOfOthers; ++i) {
        std::optional<OggPage> page = OggPageAt(bytes_, offset);
        if (!page) return false;
        if (!page_ || page_->stream == page->stream) {
            page_ = std::move(page);
            piece_ = 0;
            content_ = page_->contentOffset;
            return true;
        }
        offset = page->End();
    }
    return false;
}

std::optional<std::vector<std::uint8_t>> OggPackets::Next() {
    std::vector<std::uint8_t> packet;
    for (;;) {
        // A packet ends with a piece that is not full.
        while (page_ && piece_ < page_->lengths.size()) {
            const std::size_t size = page_->lengths[piece_++];
            std::array<std::uint8_t, 255> piece;
            const std::size_t got = bytes_.ReadAt(content_, std::span(piece).first(size));
            if (packet.size() < kMostTagBytesOfFile)
                packet.insert(packet.end(), piece.begin(),
                              piece.begin() + static_cast<std::ptrdiff_t>(got));
            content_ += size;
            if (got < size) return std::nullopt;
            if (size < 255) return packet;
        }
        if (!TurnPage()) return std::nullopt;
    }
}

std::optional<std::uint64_t> OggPackets::PageBehind() const {
    const bool isAtEnd = page_ && piece_ == page_->lengths.size();
    return isAtEnd ? std::optional(page_->End()) : std::nullopt;
}

}  // namespace sonavel
