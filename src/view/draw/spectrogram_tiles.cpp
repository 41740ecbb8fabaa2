#include "view/draw/spectrogram_tiles.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/parallel.h"

namespace sonavel {
namespace {

// Tasks that wait beside those that are computed, so that no thread waits for the caller.
constexpr unsigned kTasksPerThread = 3;
// What the caller copies before it does something else again.
constexpr std::uint64_t kMostBytesAtOnce = std::uint64_t{3} << 20;

}  // namespace

void SpectrogramTiles::SetListener(std::function<void()> listener) {
    Rest();
    listener_ = std::move(listener);
}

void SpectrogramTiles::Rest() {
    workers_.reset();
    begun_.clear();
    mustPlan_ = true;
}

std::int64_t SpectrogramTiles::LastTile() const {
    return TilesOf({0, scene_.virtualWidth}).last;
}

void SpectrogramTiles::Want(const Sound& sound, const SpectrogramScene& scene,
                            const ColumnSpan& visible) {
    const ColumnSpan held = {std::clamp<std::int64_t>(visible.first, 0, scene.virtualWidth),
                             std::clamp<std::int64_t>(visible.last, 0, scene.virtualWidth)};
    if (scene != scene_ || held != visible_) mustPlan_ = true;
    scene_ = scene;
    visible_ = held;
    if (scene_.IsEmpty() || !mustPlan_) return;
    try {
        PlanAnew();
    } catch (const std::bad_alloc&) {
        planned_.clear();
    }
    Feed(sound);
}

// What is in sight from left to right, then outward from it as far as as much again fits on both
// sides.
void SpectrogramTiles::PlanAnew() {
    mustPlan_ = false;
    planned_.clear();
    const ColumnSpan seen = TilesOf(visible_);
    const auto room = static_cast<std::int64_t>(cache_.Budget() / scene_.BytesOfTile());
    const std::int64_t beside =
        std::clamp<std::int64_t>((room - seen.Count()) / 2, 0, seen.Count());
    const ColumnSpan wanted = {seen.first - beside, seen.last + beside};
    DropBut(wanted);
    cache_.Touch(scene_, wanted);
    for (std::int64_t number = seen.first; number < seen.last; ++number) PlanTile(number);
    for (std::int64_t step = 0; step < beside; ++step) {
        PlanTile(seen.last + step);
        PlanTile(seen.first - 1 - step);
    }
}

// Forgets what is begun of other scenes and other tiles, as far as nobody computes it yet.
void SpectrogramTiles::DropBut(const ColumnSpan& tiles) {
    if (!workers_) return;
    const auto isUseless = [&](std::uint64_t id) {
        const Begun& begun = begun_[id];
        return begun.isOutdated || begun.scene != scene_ || begun.number < tiles.first ||
               begun.number >= tiles.last;
    };
    for (const std::uint64_t id : workers_->DropWaiting(isUseless)) begun_.erase(id);
}

void SpectrogramTiles::PlanTile(std::int64_t number) {
    if (number < 0 || number >= LastTile() || IsBegun(number)) return;
    if (cache_.StateOf(scene_, number) != TileState::kCurrent) planned_.push_back(number);
}

bool SpectrogramTiles::IsBegun(std::int64_t number) const {
    return std::ranges::any_of(begun_, [&](const auto& entry) {
        const Begun& begun = entry.second;
        return begun.number == number && !begun.isOutdated && begun.scene == scene_;
    });
}

void SpectrogramTiles::Feed(const Sound& sound) try {
    const unsigned threads = ThreadsToUse();
    std::uint64_t copied = 0;
    while (!planned_.empty() && begun_.size() < std::size_t{threads} * kTasksPerThread) {
        if (copied >= kMostBytesAtOnce && begun_.size() >= threads) return;
        if (!workers_)
            workers_ = std::make_unique<SpectrogramWorkers>(
                threads, listener_ ? listener_ : [] {});
        const std::int64_t number = planned_.front();
        planned_.pop_front();
        copied += Begin(sound, number);
    }
} catch (const std::bad_alloc&) {
    begun_.erase(lastId_);  // its task may not have been posted
    planned_.clear();
}

std::uint64_t SpectrogramTiles::Begin(const Sound& sound, std::int64_t number) {
    const SpectrogramColumns columns = scene_.ColumnsOfTile(number);
    const std::uint64_t id = ++lastId_;
    TileTask task{id, scene_.height, ReadSpectrogramFrames(sound, columns, scene_.look)};
    const std::uint64_t bytes = task.frames.Bytes();
    begun_[id] = {scene_, number, ReachOf(columns, scene_.look).end, false};
    workers_->Post(std::move(task));
    return bytes;
}

std::vector<ColumnSpan> SpectrogramTiles::Collect(const Sound& sound) {
    std::vector<ColumnSpan> changed;
    if (!workers_) return changed;
    try {
        for (TileResult& result : workers_->Take()) {
            const auto begun = begun_.find(result.id);
            if (begun == begun_.end()) continue;
            const Begun tile = begun->second;
            begun_.erase(begun);
            ++computed_;
            if (tile.isOutdated) continue;
            cache_.Insert(tile.scene, tile.number, std::move(result.lanes));
            if (tile.scene == scene_) changed.push_back(ColumnsOf(tile.number));
        }
    } catch (const std::bad_alloc&) {
        mustPlan_ = true;
    }
    Feed(sound);
    return changed;
}

bool SpectrogramTiles::IsComplete() const {
    if (scene_.IsEmpty()) return true;
    const ColumnSpan seen = TilesOf(visible_);
    for (std::int64_t number = seen.first; number < seen.last; ++number)
        if (cache_.StateOf(scene_, number) != TileState::kCurrent) return false;
    return true;
}

void SpectrogramTiles::NoteChange(std::int64_t firstChangedFrame) {
    cache_.NoteChange(firstChangedFrame);
    for (auto& [id, begun] : begun_)
        if (begun.reachEnd > firstChangedFrame) begun.isOutdated = true;
    // Waiting ones among them count as begun no more.
    mustPlan_ = true;
}

}  // namespace sonavel
