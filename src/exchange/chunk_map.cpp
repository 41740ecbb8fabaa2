#include "exchange/chunk_map.h"

#include <algorithm>
#include <array>

namespace sonavel {
namespace {

constexpr FourCc kRf64Chunk = MakeFourCc("RF64");
constexpr FourCc kBw64Chunk = MakeFourCc("BW64");
constexpr FourCc kRifxChunk = MakeFourCc("RIFX");
constexpr FourCc kFormChunk = MakeFourCc("FORM");
constexpr FourCc kAiffForm = MakeFourCc("AIFF");
constexpr FourCc kAifcForm = MakeFourCc("AIFC");
constexpr FourCc kSizesChunk = MakeFourCc("ds64");
constexpr FourCc kSoundDataChunk = MakeFourCc("SSND");
constexpr std::size_t kHeaderBytes = 8;
constexpr std::size_t kFormBytes = 12;
constexpr std::uint32_t kUnknown32 = 0xFFFFFFFF;
constexpr std::uint64_t kMostSalvageScan = 16;  // bytes beside where a chunk should begin

using Guid = std::array<std::uint8_t, 16>;
constexpr Guid kW64Riff = {'r',  'i',  'f',  'f',  0x2E, 0x91, 0xCF, 0x11,
                           0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0x00, 0x00};
constexpr Guid kW64Wave = {'w',  'a',  'v',  'e',  0xF3, 0xAC, 0xD3, 0x11,
                           0x8C, 0xD1, 0x00, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A};
constexpr Guid kW64List = {'l',  'i',  's',  't',  0x2F, 0x91, 0xCF, 0x11,
                           0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0x00, 0x00};
constexpr std::size_t kW64HeaderBytes = 24;

bool IsPlausibleId(FourCc id) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        const unsigned c = id >> shift & 0xFF;
        if (c < 0x20 || c > 0x7E) return false;
    }
    return true;
}

// What programs write that do not know the size while they write the head.
bool IsPlaceholder(std::uint64_t bytes) {
    return bytes == 0 || (bytes >= 0x7FFFF000 && bytes <= kUnknown32);
}

std::string NameOf(FourCc id) {
    std::string name;
    for (unsigned shift = 0; shift < 32; shift += 8) name += static_cast<char>(id >> shift & 0xFF);
    return name;
}

// Walks over chunks of a four-letter id and a 32-bit size.
class ChunkWalk {
  public:
    ChunkWalk(RandomBytes& bytes, ByteOrder order, FileRemarks& remarks)
        : bytes_(bytes), order_(order), remarks_(remarks) {}

    // Sizes of chunks whose own field says that it is too narrow for them.
    void SetLongSizes(std::vector<ChunkPlace> sizes) { longSizes_ = std::move(sizes); }
    std::vector<ChunkPlace> Walk(std::uint64_t from);

  private:
    std::optional<ChunkPlace> HeaderAt(std::uint64_t offset);
    bool HasHeaderAt(std::uint64_t offset);
    std::uint64_t LongSize(FourCc id, std::uint32_t stated);
    void SettleSize(ChunkPlace& chunk);
    void SettleData(ChunkPlace& chunk);
    void SettleCue(ChunkPlace& chunk);
    std::optional<std::uint64_t> Next(const ChunkPlace& chunk);
    std::optional<std::uint64_t> FindNear(std::uint64_t offset);
    std::uint64_t Ahead(std::uint64_t offset) const {
        return offset < bytes_.Size() ? bytes_.Size() - offset : 0;
    }

    RandomBytes& bytes_;
    ByteOrder order_;
    FileRemarks& remarks_;
    std::vector<ChunkPlace> longSizes_;
};

std::optional<ChunkPlace> ChunkWalk::HeaderAt(std::uint64_t offset) {
    std::array<std::uint8_t, kHeaderBytes> header;
    if (bytes_.ReadAt(offset, header) < header.size()) return std::nullopt;
    const ChunkFields fields(header, order_);
    if (!IsPlausibleId(fields.Id(0))) return std::nullopt;
    return ChunkPlace{fields.Id(0), offset + kHeaderBytes, fields.U32(4), fields.U32(4)};
}

bool ChunkWalk::HasHeaderAt(std::uint64_t offset) {
    return HeaderAt(offset).has_value();
}

std::uint64_t ChunkWalk::LongSize(FourCc id, std::uint32_t stated) {
    if (stated != kUnknown32) return stated;
    const auto found = std::ranges::find(longSizes_, id, &ChunkPlace::id);
    return found != longSizes_.end() ? found->statedBytes : stated;
}

// A stream's writer leaves the size of the sound open, which then goes on to the end.
void ChunkWalk::SettleData(ChunkPlace& chunk) {
    const std::uint64_t ahead = Ahead(chunk.dataOffset);
    const bool isOpen = IsPlaceholder(chunk.statedBytes) &&
                        (chunk.statedBytes > ahead ||
                         (chunk.statedBytes == 0 && ahead > 0 && !HasHeaderAt(chunk.dataOffset)));
    if (isOpen) {
        chunk.sizeBytes = ahead;
        remarks_.AddOfForm("The file does not say how long its sound is.");
    } else if (chunk.statedBytes > ahead) {
        chunk.sizeBytes = ahead;
        remarks_.AddMissing("The sound ends early.");
    }
}

// Some programs, this one among them, leave the count out of the size of the points.
void ChunkWalk::SettleCue(ChunkPlace& chunk) {
    std::array<std::uint8_t, 4> count{};
    bytes_.ReadAt(chunk.dataOffset, count);
    const std::uint64_t points = std::uint64_t{24} * ChunkFields(count, order_).U32(0);
    const bool fits = points > 0 && chunk.statedBytes == points && Ahead(chunk.End()) >= 4;
    const bool goesOn = Ahead(chunk.End()) == 4 || HasHeaderAt(chunk.End() + 4);
    if (fits && goesOn) chunk.sizeBytes += 4;
}

void ChunkWalk::SettleSize(ChunkPlace& chunk) {
    chunk.statedBytes = LongSize(chunk.id, static_cast<std::uint32_t>(chunk.statedBytes));
    chunk.sizeBytes = std::min(chunk.statedBytes, Ahead(chunk.dataOffset));
    if (chunk.id == kDataChunk || chunk.id == kSoundDataChunk)
        SettleData(chunk);
    else if (chunk.sizeBytes < chunk.statedBytes)
        remarks_.AddMissing("The chunk \"" + NameOf(chunk.id) + "\" ends early.");
    if (chunk.id == kCueChunk) SettleCue(chunk);
}

// The chunk that begins nearest to where one should; nothing where there is none.
std::optional<std::uint64_t> ChunkWalk::FindNear(std::uint64_t offset) {
    const std::uint64_t most = std::min(kMostSalvageScan, Ahead(offset));
    for (std::uint64_t step = 0; step < most; ++step) {
        const std::optional<ChunkPlace> header = HeaderAt(offset + step);
        if (!header || header->statedBytes > Ahead(header->dataOffset)) continue;
        remarks_.AddOfForm("The size of a chunk is wrong.");
        return offset + step;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> ChunkWalk::Next(const ChunkPlace& chunk) {
    const std::uint64_t end = chunk.End();
    if (Ahead(end) < kHeaderBytes) return std::nullopt;
    const bool isOdd = chunk.sizeBytes % 2 != 0;
    if (isOdd && HasHeaderAt(end)) {
        remarks_.AddOfForm("A pad byte is missing.");
        return end;
    }
    const std::uint64_t next = end + (isOdd ? 1 : 0);
    return HasHeaderAt(next) ? next : FindNear(end);
}

std::vector<ChunkPlace> ChunkWalk::Walk(std::uint64_t from) {
    std::vector<ChunkPlace> chunks;
    std::optional<std::uint64_t> at = from;
    while (at && chunks.size() < kMostChunks) {
        std::optional<ChunkPlace> chunk = HeaderAt(*at);
        if (!chunk) break;
        SettleSize(*chunk);
        chunks.push_back(*chunk);
        at = Next(*chunk);
    }
    if (chunks.size() == kMostChunks)
        remarks_.AddMissing("Chunks beyond the first 65,536 are left out.");
    return chunks;
}

// The chunk "ds64": sizes of the file, of the sound and of further chunks.
std::vector<ChunkPlace> LongSizes(RandomBytes& bytes) {
    constexpr std::uint64_t kTableOffset = 28;
    const std::vector<std::uint8_t> chunk = bytes.Part(kFormBytes, 65536);
    const ChunkFields fields(chunk, ByteOrder::kLittle);
    if (fields.Id(0) != kSizesChunk) return {};
    std::vector<ChunkPlace> sizes = {{kDataChunk, 0, 0, fields.U64(kHeaderBytes + 8)}};
    const std::uint32_t count = std::min<std::uint32_t>(fields.U32(kHeaderBytes + 24), 1000);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t at = kHeaderBytes + kTableOffset + std::size_t{12} * i;
        sizes.push_back({fields.Id(at), 0, 0, fields.U64(at + 4)});
    }
    return sizes;
}

ChunkContainer ContainerOf(const ChunkFields& head) {
    const bool isWave = head.Id(8) == kWaveForm;
    switch (head.Id(0)) {
        case kRiffChunk:
            return isWave ? ChunkContainer::kRiff : ChunkContainer::kNone;
        case kRifxChunk:
            return isWave ? ChunkContainer::kRifx : ChunkContainer::kNone;
        case kRf64Chunk:
        case kBw64Chunk:
            return isWave ? ChunkContainer::kRf64 : ChunkContainer::kNone;
        case kFormChunk:
            return head.Id(8) == kAiffForm || head.Id(8) == kAifcForm ? ChunkContainer::kAiff
                                                                      : ChunkContainer::kNone;
        default:
            break;
    }
    const bool isW64 = std::ranges::equal(head.Bytes(0, 16), kW64Riff) &&
                       std::ranges::equal(head.Bytes(24, 16), kW64Wave);
    return isW64 ? ChunkContainer::kW64 : ChunkContainer::kNone;
}

// The id that a chunk of a W64 file has in a WAV file; nothing where there is none.
std::optional<FourCc> IdOfGuid(const ChunkFields& fields) {
    const auto tail = fields.Bytes(4, 12);
    if (std::ranges::equal(tail, std::span(kW64Wave).subspan(4))) return fields.Id(0);
    if (std::ranges::equal(fields.Bytes(0, 16), kW64List)) return kListChunk;
    return std::nullopt;
}

// Sizes of W64 files are 64 bits wide and count the header; chunks begin at multiples of 8.
void WalkW64(RandomBytes& bytes, ChunkMap& map) {
    std::uint64_t at = 40;
    while (map.chunks.size() < kMostChunks) {
        std::array<std::uint8_t, kW64HeaderBytes> header;
        if (at > bytes.Size() || bytes.ReadAt(at, header) < header.size()) return;
        const ChunkFields fields(header, ByteOrder::kLittle);
        const std::uint64_t stated = std::max<std::uint64_t>(fields.U64(16), kW64HeaderBytes);
        const std::uint64_t size = std::min(stated, bytes.Size() - at);
        const std::optional<FourCc> id = IdOfGuid(fields);
        if (size < stated)
            map.remarks.AddMissing(id == kDataChunk ? "The sound ends early."
                                                    : "A chunk ends early.");
        if (id)
            map.chunks.push_back(
                {*id, at + kW64HeaderBytes, size - kW64HeaderBytes, stated - kW64HeaderBytes});
        else
            map.remarks.AddMissing("Chunks of unknown kinds are left out.");
        at += (size + 7) & ~std::uint64_t{7};
    }
}

void CheckWholeSize(const ChunkFields& head, std::uint64_t fileBytes, ChunkMap& map) {
    const std::uint32_t stated = head.U32(4);
    // A file that goes on behind its stated end is read on; nothing is missing from it.
    const bool isShort = std::uint64_t{stated} + kHeaderBytes > fileBytes + 1;
    if (isShort && !IsPlaceholder(stated))
        map.remarks.AddMissing("The file is shorter than it says.");
}

}  // namespace

ByteOrder ChunkMap::Order() const {
    const bool isBig = container == ChunkContainer::kAiff || container == ChunkContainer::kRifx;
    return isBig ? ByteOrder::kBig : ByteOrder::kLittle;
}

const ChunkPlace* ChunkMap::Find(FourCc id) const {
    const auto found = std::ranges::find(chunks, id, &ChunkPlace::id);
    return found != chunks.end() ? &*found : nullptr;
}

ChunkMap MapChunks(RandomBytes& bytes) {
    const std::vector<std::uint8_t> head = bytes.Part(0, 40);
    ChunkMap map;
    map.container = ContainerOf(ChunkFields(head, ByteOrder::kLittle));
    if (map.container == ChunkContainer::kNone) return map;
    if (map.container == ChunkContainer::kW64) {
        WalkW64(bytes, map);
        return map;
    }
    CheckWholeSize(ChunkFields(head, map.Order()), bytes.Size(), map);
    ChunkWalk walk(bytes, map.Order(), map.remarks);
    if (map.container == ChunkContainer::kRf64) walk.SetLongSizes(LongSizes(bytes));
    map.chunks = walk.Walk(kFormBytes);
    return map;
}

std::vector<ChunkPlace> MapInnerChunks(std::span<const std::uint8_t> bytes, std::size_t at,
                                       ByteOrder order, FileRemarks& remarks) {
    BytesInMemory memory(bytes);
    return ChunkWalk(memory, order, remarks).Walk(at);
}

}  // namespace sonavel
