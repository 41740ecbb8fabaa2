// What a foreign sound file holds beside its samples: markers, tags, and chunks that are kept as
// they came. All of it is bounded, whatever the file says.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/file_remarks.h"
#include "sound/codec_values.h"
#include "sound/four_cc.h"
#include "sound/marker_list.h"

namespace sonavel {

enum class ChunkFamily : std::uint8_t { kRiff, kAiff };
enum class ChunkSide : std::uint8_t { kBeforeSound, kBehindSound };

// A chunk that nothing here understands or that belongs into a file as it is.
struct ForeignChunk {
    ChunkFamily family = ChunkFamily::kRiff;
    FourCc id = 0;
    ChunkSide side = ChunkSide::kBehindSound;
    std::vector<std::uint8_t> bytes;  // of a "LIST" its form type, too

    bool operator==(const ForeignChunk&) const = default;
};

struct SoundExtras {
    std::vector<SoundChapter> markers;  // in the order of their frames; names are UTF-8
    std::vector<SoundTag> tags;         // values are UTF-8
    std::vector<ForeignChunk> chunks;
    FileRemarks remarks;

    bool operator==(const SoundExtras&) const = default;
};

inline constexpr std::size_t kMostTags = 1000;
inline constexpr std::size_t kMostMarkers = 65536;
inline constexpr std::size_t kMostMarkerNameBytes = 65536;

// Collects extras within their bounds; what goes beyond is left out or cut, with a remark.
class ExtrasKeeper {
  public:
    void AddMarker(SoundChapter marker);
    // The first value of a key is kept. Empty ones are none, and so are those without a key.
    void AddTag(std::string_view key, std::string value);
    // For keys that a file may hold under several names: only where there is none yet.
    bool HasTag(std::string_view key) const;
    // Whether a chunk of so many bytes may be kept; says so where not.
    bool HasRoomFor(std::uint64_t chunkBytes);
    void AddChunk(ForeignChunk chunk);
    // Of content that was left out or is not there.
    void Remark(std::string_view sentence);
    void Remark(const FileRemarks& remarks);
    void PassOverPicture() { Remark("A picture is left out."); }

    // Sorts the markers and hands all over.
    SoundExtras Take();

  private:
    bool Spend(std::size_t bytes);

    SoundExtras extras_;
    std::size_t left_ = kMostTagBytesOfFile;
};

// The markers as a document keeps them, for a sound of so many frames. What lies behind its end is
// left out, and a region that reaches beyond it ends with it; a remark says so.
MarkerList MarkersOf(SoundExtras& extras, std::uint32_t frames);

// The other way round.
std::vector<SoundChapter> ChaptersOf(const MarkerList& markers);

}  // namespace sonavel
