#include "exchange/wave_extras.h"

#include <algorithm>
#include <string>

#include "exchange/cue_points.h"
#include "exchange/foreign_text.h"
#include "exchange/id3_tags.h"
#include "exchange/tag_names.h"

namespace sonavel {
namespace {

constexpr FourCc kFactChunk = MakeFourCc("fact");
constexpr FourCc kSizesChunk = MakeFourCc("ds64");
constexpr FourCc kPeakChunk = MakeFourCc("PEAK");
constexpr FourCc kSamplerChunk = MakeFourCc("smpl");
constexpr FourCc kBroadcastChunk = MakeFourCc("bext");
constexpr FourCc kInfoForm = MakeFourCc("INFO");
constexpr FourCc kWaveListForm = MakeFourCc("wavl");

constexpr std::size_t kLoopsOffset = 36;
constexpr std::size_t kLoopBytes = 24;
constexpr std::uint32_t kMostLoops = 1024;

bool DescribesSamples(FourCc id) {
    // The last three hold nothing but room; peaks hold only until the next edit.
    constexpr FourCc kIds[] = {kFormatChunk,       kDataChunk,         kFactChunk,
                               kSizesChunk,        kPeakChunk,         kCueChunk,
                               MakeFourCc("JUNK"), MakeFourCc("junk"), MakeFourCc("PAD "),
                               MakeFourCc("FLLR"), MakeFourCc("slnt")};
    return std::ranges::find(kIds, id) != std::end(kIds);
}

bool IsId3(FourCc id) {
    return id == MakeFourCc("id3 ") || id == MakeFourCc("ID3 ");
}

void AddInfo(std::span<const std::uint8_t> list, ByteOrder order, ExtrasKeeper& keeper) {
    FileRemarks remarks;
    for (const ChunkPlace& place : MapInnerChunks(list, 4, order, remarks)) {
        const auto text = list.subspan(static_cast<std::size_t>(place.dataOffset),
                                       static_cast<std::size_t>(place.sizeBytes));
        keeper.AddTag(KeyOfInfo(place.id), Utf8FromUnknown(text));
    }
    keeper.Remark(remarks);
}

// Its texts stand in for tags that the file lacks; the chunk itself is kept, too.
void AddBroadcast(const ChunkFields& bext, ExtrasKeeper& keeper) {
    const auto add = [&](const char* key, std::size_t at, std::size_t bytes) {
        keeper.AddTag(key, Utf8FromUnknown(bext.Bytes(at, bytes)));
    };
    add("comment", 0, 256);
    add("artist", 256, 32);
    add("date", 320, 10);
}

class WaveReading {
  public:
    WaveReading(RandomBytes& bytes, const ChunkMap& map, std::uint32_t rate, ExtrasKeeper& keeper)
        : bytes_(bytes), map_(map), rate_(rate), keeper_(keeper) {}

    void Read();

  private:
    void Take(const ChunkPlace& place);
    void TakeList(const ChunkPlace& place);
    void TakeKnown(const ChunkPlace& place, const std::vector<std::uint8_t>& content);
    void Keep(const ChunkPlace& place, std::vector<std::uint8_t> content);
    std::vector<std::uint8_t> Content(const ChunkPlace& place) {
        return bytes_.Part(place.dataOffset, place.sizeBytes);
    }

    RandomBytes& bytes_;
    const ChunkMap& map_;
    std::uint32_t rate_;
    ExtrasKeeper& keeper_;
    CuePoints points_;
    std::vector<std::uint8_t> broadcast_;
    ChunkSide side_ = ChunkSide::kBeforeSound;
};

void WaveReading::Keep(const ChunkPlace& place, std::vector<std::uint8_t> content) {
    keeper_.AddChunk({ChunkFamily::kRiff, place.id, side_, std::move(content)});
}

// Lists of labels may be longer than what is kept as it is: their texts are bounded one by one.
void WaveReading::TakeList(const ChunkPlace& place) {
    if (place.sizeBytes > kMostTagBytesOfFile)
        return keeper_.Remark("A list of more than 16 MiB is left out.");
    std::vector<std::uint8_t> content = Content(place);
    const FourCc form = ChunkFields(content, map_.Order()).Id(0);
    if (form == kAssociatedDataForm)
        points_.AddTexts(content, map_.Order(), keeper_);
    else if (form == kInfoForm)
        AddInfo(content, map_.Order(), keeper_);
    else if (form != kWaveListForm && keeper_.HasRoomFor(place.sizeBytes))
        Keep(place, std::move(content));
}

void WaveReading::TakeKnown(const ChunkPlace& place, const std::vector<std::uint8_t>& content) {
    if (place.id == kSamplerChunk) AddSamplerLoops({content, map_.Order()}, keeper_);
    if (place.id == kBroadcastChunk) broadcast_ = content;
    if (IsId3(place.id)) AddId3Tags(content, rate_, keeper_);
}

void WaveReading::Take(const ChunkPlace& place) {
    if (place.id == kDataChunk) side_ = ChunkSide::kBehindSound;
    if (place.id == kCueChunk) {
        constexpr std::uint64_t kMostCueBytes = 4 + 24 * std::uint64_t{kMostMarkers};
        const auto cue = bytes_.Part(place.dataOffset, std::min(place.sizeBytes, kMostCueBytes));
        return points_.AddPoints(ChunkFields(cue, map_.Order()), keeper_);
    }
    if (DescribesSamples(place.id)) return;
    if (place.id == kListChunk) return TakeList(place);
    if (!keeper_.HasRoomFor(place.sizeBytes)) return;
    std::vector<std::uint8_t> content = Content(place);
    TakeKnown(place, content);
    Keep(place, std::move(content));
}

void WaveReading::Read() {
    keeper_.Remark(map_.remarks);
    for (const ChunkPlace& place : map_.chunks) Take(place);
    points_.HandOver(keeper_);
    AddBroadcast({broadcast_, map_.Order()}, keeper_);
}

}  // namespace

void AddSamplerLoops(const ChunkFields& smpl, ExtrasKeeper& keeper) {
    const std::uint32_t stated = smpl.U32(28);
    const std::size_t there = smpl.Size() > kLoopsOffset ? smpl.Size() - kLoopsOffset : 0;
    const auto count = static_cast<std::uint32_t>(
        std::min<std::uint64_t>({stated, there / kLoopBytes, kMostLoops}));
    if (count < stated) keeper.Remark("The list of loops is cut short.");
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t at = kLoopsOffset + kLoopBytes * i;
        const std::uint64_t start = smpl.U32(at + 8), last = smpl.U32(at + 12);
        const std::uint64_t frames = last >= start ? last - start + 1 : 0;
        keeper.AddMarker({start, frames, "Loop " + std::to_string(i + 1)});
    }
}

void ReadWaveExtras(RandomBytes& bytes, const ChunkMap& map, std::uint32_t rate,
                    ExtrasKeeper& keeper) {
    WaveReading(bytes, map, rate, keeper).Read();
}

}  // namespace sonavel
