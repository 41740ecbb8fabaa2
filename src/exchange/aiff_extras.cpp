#include "exchange/aiff_extras.h"

#include <algorithm>
#include <string>

#include "exchange/foreign_text.h"
#include "exchange/id3_tags.h"

namespace sonavel {
namespace {

constexpr FourCc kMarkChunk = MakeFourCc("MARK");
constexpr FourCc kInstrumentChunk = MakeFourCc("INST");
constexpr FourCc kId3Chunk = MakeFourCc("ID3 ");
constexpr FourCc kSoundChunk = MakeFourCc("SSND");
constexpr std::size_t kSustainLoop = 8;
constexpr std::size_t kReleaseLoop = 14;

struct TextChunk {
    FourCc id;
    const char* key;
};
constexpr TextChunk kTexts[] = {{MakeFourCc("NAME"), "title"},
                                {MakeFourCc("AUTH"), "artist"},
                                {MakeFourCc("(c) "), "copyright"},
                                {MakeFourCc("ANNO"), "comment"}};

bool DescribesSamples(FourCc id) {
    constexpr FourCc kIds[] = {MakeFourCc("COMM"), kSoundChunk, MakeFourCc("FVER"), kMarkChunk,
                               MakeFourCc("PEAK")};
    return std::ranges::find(kIds, id) != std::end(kIds);
}

struct AiffMark {
    std::uint32_t id;
    std::uint32_t frame;
    std::string name;
    bool endsLoop = false;
};

class AiffReading {
  public:
    AiffReading(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper)
        : bytes_(bytes), rate_(rate), keeper_(keeper) {}

    void Read(const ChunkMap& map);

  private:
    void Take(const ChunkPlace& place);
    void AddMarks(const ChunkFields& chunk);
    void AddLoop(std::size_t at, const char* name);
    void HandOver();

    RandomBytes& bytes_;
    std::uint32_t rate_;
    ExtrasKeeper& keeper_;
    std::vector<AiffMark> marks_;
    std::vector<std::uint8_t> instrument_;
    ChunkSide side_ = ChunkSide::kBeforeSound;
};

void AiffReading::AddMarks(const ChunkFields& chunk) {
    const std::uint32_t count = chunk.U16(0);
    std::size_t at = 2;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (at + 7 > chunk.Size()) return keeper_.Remark("The list of markers is cut short.");
        const std::size_t nameBytes = chunk.U8(at + 6);
        marks_.push_back(
            {chunk.U16(at), chunk.U32(at + 2), Utf8FromUnknown(chunk.Bytes(at + 7, nameBytes))});
        at += 6 + ((nameBytes + 2) & ~std::size_t{1});
    }
}

bool IsNameOfLoop(std::string name) {
    std::ranges::transform(name, name.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return name.empty() || name.find("loop") != std::string::npos;
}

void AiffReading::AddLoop(std::size_t at, const char* name) {
    const ChunkFields fields(instrument_, ByteOrder::kBig);
    if (fields.U16(at) == 0) return;  // it does not loop
    const auto begin = std::ranges::find(marks_, fields.U16(at + 2), &AiffMark::id);
    const auto end = std::ranges::find(marks_, fields.U16(at + 4), &AiffMark::id);
    if (begin == marks_.end() || end == marks_.end() || end->frame <= begin->frame) return;
    keeper_.AddMarker({begin->frame, end->frame - begin->frame, name});
    for (AiffMark* mark : {&*begin, &*end}) mark->endsLoop = IsNameOfLoop(mark->name);
}

void AiffReading::Take(const ChunkPlace& place) {
    if (place.id == kSoundChunk) side_ = ChunkSide::kBehindSound;
    if (place.id == kMarkChunk) {
        const auto content = bytes_.Part(
            place.dataOffset, std::min<std::uint64_t>(place.sizeBytes, kMostTagBytesOfFile));
        return AddMarks({content, ByteOrder::kBig});
    }
    if (DescribesSamples(place.id) || !keeper_.HasRoomFor(place.sizeBytes)) return;
    std::vector<std::uint8_t> content = bytes_.Part(place.dataOffset, place.sizeBytes);
    const auto* text = std::ranges::find(kTexts, place.id, &TextChunk::id);
    if (text != std::end(kTexts)) return keeper_.AddTag(text->key, Utf8FromUnknown(content));
    if (place.id == kId3Chunk) AddId3Tags(content, rate_, keeper_);
    if (place.id == kInstrumentChunk) instrument_ = content;
    keeper_.AddChunk({ChunkFamily::kAiff, place.id, side_, std::move(content)});
}

void AiffReading::HandOver() {
    AddLoop(kSustainLoop, "Loop 1");
    AddLoop(kReleaseLoop, "Loop 2");
    for (AiffMark& mark : marks_)
        if (!mark.endsLoop) keeper_.AddMarker({mark.frame, 0, std::move(mark.name)});
}

void AiffReading::Read(const ChunkMap& map) {
    keeper_.Remark(map.remarks);
    for (const ChunkPlace& place : map.chunks) Take(place);
    HandOver();
}

}  // namespace

void ReadAiffExtras(RandomBytes& bytes, const ChunkMap& map, std::uint32_t rate,
                    ExtrasKeeper& keeper) {
    AiffReading(bytes, rate, keeper).Read(map);
}

}  // namespace sonavel
