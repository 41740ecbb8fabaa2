#include "view/draw/spectrogram_cache.h"

#include <algorithm>
#include <utility>

namespace sonavel {
namespace {

// Zooms and looks of before that are kept; older ones would rarely be seen again.
constexpr std::size_t kMostScenes = 12;

std::int64_t FloorDivided(std::int64_t a, std::int64_t b) {
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

std::size_t BytesOf(const SpectrogramLanes& lanes) {
    std::size_t bytes = 0;
    for (const SpectrogramPicture& lane : lanes) bytes += lane.levels.size();
    return bytes;
}

// Whether what one scene shows can stand in for the other.
bool Resembles(const SpectrogramScene& a, const SpectrogramScene& b) {
    return a.look.scale == b.look.scale && a.channels == b.channels &&
           a.samplesPerSecond == b.samplesPerSecond;
}

}  // namespace

SpectrogramColumns SpectrogramScene::ColumnsOfTile(std::int64_t number) const {
    const double framesPerColumn =
        static_cast<double>(frameCount) / static_cast<double>(virtualWidth);
    return {.firstFrame = static_cast<double>(number * kTileColumns) * framesPerColumn,
            .framesPerColumn = framesPerColumn,
            .columns = kTileColumns,
            .mostWindows = 2};
}

ColumnSpan TilesOf(const ColumnSpan& columns) {
    if (columns.Count() <= 0) return {};
    return {FloorDivided(columns.first, kTileColumns),
            FloorDivided(columns.last - 1, kTileColumns) + 1};
}

ColumnSpan ColumnsOf(std::int64_t tile) {
    return {tile * kTileColumns, (tile + 1) * kTileColumns};
}

const SpectrogramCache::Tile* SpectrogramCache::Tiles::At(std::int64_t number) const {
    const auto tile = byNumber.find(number);
    return tile == byNumber.end() ? nullptr : &tile->second;
}

const SpectrogramCache::Tiles* SpectrogramCache::Find(const SpectrogramScene& scene) const {
    const auto found = std::ranges::find(scenes_, scene, &Tiles::scene);
    return found == scenes_.end() ? nullptr : &*found;
}

SpectrogramCache::Tiles& SpectrogramCache::Put(const SpectrogramScene& scene) {
    const auto found = std::ranges::find(scenes_, scene, &Tiles::scene);
    if (found != scenes_.end()) return *found;
    return *scenes_.insert(scenes_.begin() + (scenes_.empty() ? 0 : 1), Tiles{scene, {}});
}

TileState SpectrogramCache::StateOf(const SpectrogramScene& scene, std::int64_t number) const {
    const Tiles* tiles = Find(scene);
    if (!tiles) return TileState::kMissing;
    const Tile* tile = tiles->At(number);
    if (!tile) return TileState::kMissing;
    return tile->isCurrent ? TileState::kCurrent : TileState::kOutdated;
}

void SpectrogramCache::Touch(const SpectrogramScene& scene, const ColumnSpan& tiles) {
    ++clock_;
    Put(scene);
    const auto place = std::ranges::find(scenes_, scene, &Tiles::scene);
    std::rotate(scenes_.begin(), place, place + 1);
    auto& byNumber = scenes_.front().byNumber;
    for (auto tile = byNumber.lower_bound(tiles.first);
         tile != byNumber.end() && tile->first < tiles.last; ++tile)
        tile->second.used = clock_;
    while (scenes_.size() > kMostScenes) {
        for (const auto& [number, tile] : scenes_.back().byNumber) bytes_ -= BytesOf(tile.lanes);
        scenes_.pop_back();
    }
}

void SpectrogramCache::Insert(const SpectrogramScene& scene, std::int64_t number,
                              SpectrogramLanes lanes) {
    Tile& tile = Put(scene).byNumber[number];
    bytes_ -= BytesOf(tile.lanes);
    bytes_ += BytesOf(lanes);
    tile.lanes = std::move(lanes);
    tile.reachEnd = ReachOf(scene.ColumnsOfTile(number), scene.look).end;
    tile.used = clock_;
    tile.isCurrent = true;
    while (bytes_ > budget_ && DropOldest()) continue;
}

// False where all were touched last.
bool SpectrogramCache::DropOldest() {
    std::uint64_t oldest = clock_;
    std::map<std::int64_t, Tile>* from = nullptr;
    std::int64_t number = 0;
    for (Tiles& tiles : scenes_)
        for (const auto& [at, tile] : tiles.byNumber)
            if (tile.used < oldest) {
                oldest = tile.used;
                from = &tiles.byNumber;
                number = at;
            }
    if (!from) return false;
    bytes_ -= BytesOf((*from)[number].lanes);
    from->erase(number);
    return true;
}

void SpectrogramCache::NoteChange(std::int64_t firstChangedFrame) {
    for (Tiles& tiles : scenes_)
        for (auto& [number, tile] : tiles.byNumber)
            if (tile.reachEnd > firstChangedFrame) tile.isCurrent = false;
}

// --- Showing

SpectrogramPicture SpectrogramCache::Show(const SpectrogramScene& scene, unsigned channel,
                                          const ColumnSpan& columns) const {
    SpectrogramPicture picture;
    picture.width = static_cast<unsigned>(std::max<std::int64_t>(columns.Count(), 0));
    picture.height = scene.height;
    picture.levels.resize(std::size_t{picture.width} * picture.height);
    const Tiles* own = Find(scene);
    const ColumnSpan tiles = TilesOf(columns);
    for (std::int64_t number = tiles.first; number < tiles.last; ++number) {
        const ColumnSpan all = ColumnsOf(number);
        const ColumnSpan part = {std::max(all.first, columns.first),
                                 std::min(all.last, columns.last)};
        const Tile* tile = own ? own->At(number) : nullptr;
        if (!tile)
            StandIn(scene, channel, part, picture, columns.first);
        else if (channel < tile->lanes.size())
            CopyColumns(*tile, channel, part, number, picture, columns.first);
    }
    return picture;
}

void SpectrogramCache::CopyColumns(const Tile& tile, unsigned channel, const ColumnSpan& columns,
                                   std::int64_t tileNumber, SpectrogramPicture& to,
                                   std::int64_t firstOfPicture) const {
    const SpectrogramPicture& lane = tile.lanes[channel];
    const auto from = static_cast<std::size_t>(columns.first - ColumnsOf(tileNumber).first);
    const auto at = static_cast<std::size_t>(columns.first - firstOfPicture);
    for (std::size_t row = 0; row < to.height; ++row)
        std::copy_n(lane.levels.data() + row * lane.width + from, columns.Count(),
                    to.levels.data() + row * to.width + at);
}

// A column of another scene that shows the same place in the sound, stretched to the height.
void SpectrogramCache::StandIn(const SpectrogramScene& scene, unsigned channel,
                               const ColumnSpan& columns, SpectrogramPicture& to,
                               std::int64_t firstOfPicture) const {
    const double frames =
        static_cast<double>(scene.frameCount) / static_cast<double>(scene.virtualWidth);
    const auto show = [&](std::int64_t column, const Tiles& other) {
        const double place = (static_cast<double>(column) + 0.5) * frames *
                             static_cast<double>(other.scene.virtualWidth) /
                             static_cast<double>(other.scene.frameCount);
        const auto shown = static_cast<std::int64_t>(place);
        const Tile* tile = other.At(shown / kTileColumns);
        if (!tile || channel >= tile->lanes.size()) return false;
        const SpectrogramPicture& lane = tile->lanes[channel];
        for (unsigned row = 0; row < to.height; ++row)
            to.levels[std::size_t{row} * to.width +
                      static_cast<std::size_t>(column - firstOfPicture)] =
                lane.At(static_cast<unsigned>(shown % kTileColumns),
                        static_cast<unsigned>(std::uint64_t{row} * lane.height / to.height));
        return true;
    };
    for (std::int64_t column = columns.first; column < columns.last; ++column)
        for (const Tiles& other : scenes_)
            if (other.scene != scene && Resembles(other.scene, scene) && column >= 0 &&
                show(column, other))
                break;
}

}  // namespace sonavel
