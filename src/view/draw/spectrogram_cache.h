// The tiles of a sound's spectrogram that are kept: pieces of kTileColumns columns, of several
// zooms and looks, within a bound of memory. What is not there is shown from what is: older than
// the last edit, or of another zoom.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "view/draw/spectrogram_workers.h"

namespace sonavel {

inline constexpr unsigned kTileColumns = 64;

// What tiles are of. Columns are those of the whole sound, from 0 to virtualWidth, in the pixels of
// the screen; heights are those of a channel's lane.
struct SpectrogramScene {
    SpectrogramLook look;
    unsigned height = 0;
    unsigned channels = 0;
    std::uint32_t samplesPerSecond = 0;
    std::int64_t frameCount = 0;
    std::int64_t virtualWidth = 0;

    bool IsEmpty() const {
        return height == 0 || channels == 0 || frameCount <= 0 || virtualWidth <= 0;
    }
    SpectrogramColumns ColumnsOfTile(std::int64_t number) const;
    std::size_t BytesOfTile() const { return std::size_t{kTileColumns} * height * channels; }
    bool operator==(const SpectrogramScene&) const = default;
};

// Columns [first, last).
struct ColumnSpan {
    std::int64_t first = 0;
    std::int64_t last = 0;

    std::int64_t Count() const { return last - first; }
    bool operator==(const ColumnSpan&) const = default;
};
// The tiles that these columns lie in, likewise half open.
ColumnSpan TilesOf(const ColumnSpan& columns);
ColumnSpan ColumnsOf(std::int64_t tile);

enum class TileState { kMissing, kOutdated, kCurrent };

class SpectrogramCache {
  public:
    explicit SpectrogramCache(std::size_t budgetBytes) : budget_(budgetBytes) {}

    TileState StateOf(const SpectrogramScene& scene, std::int64_t number) const;
    // Marks tiles as in use: others leave first.
    void Touch(const SpectrogramScene& scene, const ColumnSpan& tiles);
    // Takes a tile in and lets the longest unused ones go that are beyond the budget, never those
    // that were touched last.
    void Insert(const SpectrogramScene& scene, std::int64_t number, SpectrogramLanes lanes);
    // What reaches behind this frame is out of date, and shown only until there is better.
    void NoteChange(std::int64_t firstChangedFrame);

    std::size_t Bytes() const { return bytes_; }
    std::size_t Budget() const { return budget_; }
    // Levels of a channel's lane as a picture; 0 where nothing is known. Throws std::bad_alloc.
    SpectrogramPicture Show(const SpectrogramScene& scene, unsigned channel,
                            const ColumnSpan& columns) const;

  private:
    struct Tile {
        SpectrogramLanes lanes;
        std::int64_t reachEnd = 0;  // the frame behind the last one that it hangs on
        std::uint64_t used = 0;
        bool isCurrent = true;
    };
    // The last touched scene comes first.
    struct Tiles {
        SpectrogramScene scene;
        std::map<std::int64_t, Tile> byNumber;

        const Tile* At(std::int64_t number) const;  // null where there is none
    };

    const Tiles* Find(const SpectrogramScene& scene) const;
    Tiles& Put(const SpectrogramScene& scene);
    bool DropOldest();
    void CopyColumns(const Tile& tile, unsigned channel, const ColumnSpan& columns,
                     std::int64_t tileNumber, SpectrogramPicture& to,
                     std::int64_t firstOfPicture) const;
    void StandIn(const SpectrogramScene& scene, unsigned channel, const ColumnSpan& columns,
                 SpectrogramPicture& to, std::int64_t firstOfPicture) const;

    std::size_t budget_;
    std::size_t bytes_ = 0;
    std::uint64_t clock_ = 0;
    std::vector<Tiles> scenes_;
};

}  // namespace sonavel
