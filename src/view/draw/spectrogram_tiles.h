// The spectrogram of a view as it comes about: what is in sight is computed first and by threads of
// its own, what lies beside it next; what was computed is kept. The caller never waits: it copies a
// few frames, and is told when there is something new to show.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "view/draw/spectrogram_cache.h"
#include "view/draw/spectrogram_workers.h"

namespace sonavel {

class SpectrogramTiles {
  public:
    static constexpr std::size_t kBudgetBytes = std::size_t{96} << 20;

    explicit SpectrogramTiles(std::size_t budgetBytes = kBudgetBytes) : cache_(budgetBytes) {}

    // Called on another thread when Collect() has something to do; to be set before the first
    // Want() and again before what it calls goes.
    void SetListener(std::function<void()> listener);

    // Asks for these columns; what was asked for before and is not begun is forgotten. Cheap where
    // nothing differs from the last time.
    void Want(const Sound& sound, const SpectrogramScene& scene, const ColumnSpan& visible);
    // Takes in what was computed and has the next tiles computed; the columns that show something
    // new now, a span for each tile.
    std::vector<ColumnSpan> Collect(const Sound& sound);
    // As SpectrogramCache::Show(), of the scene that is wanted.
    SpectrogramPicture Show(unsigned channel, const ColumnSpan& columns) const {
        return cache_.Show(scene_, channel, columns);
    }
    // Whether all that is in sight is as the sound is.
    bool IsComplete() const;
    // The sound changed from this frame on.
    void NoteChange(std::int64_t firstChangedFrame);
    // Stops the threads, as when no spectrogram is shown any more.
    void Rest();

    std::size_t Bytes() const { return cache_.Bytes(); }
    // How many tiles were computed so far.
    std::uint64_t Computed() const { return computed_; }

  private:
    struct Begun {
        SpectrogramScene scene;
        std::int64_t number = 0;
        std::int64_t reachEnd = 0;
        bool isOutdated = false;
    };

    void PlanAnew();
    void DropBut(const ColumnSpan& tiles);
    void PlanTile(std::int64_t number);
    void Feed(const Sound& sound);
    // The bytes that were copied.
    std::uint64_t Begin(const Sound& sound, std::int64_t number);
    bool IsBegun(std::int64_t number) const;
    std::int64_t LastTile() const;

    SpectrogramCache cache_;
    SpectrogramScene scene_;
    ColumnSpan visible_;
    bool mustPlan_ = false;
    std::deque<std::int64_t> planned_;  // tiles of the scene, the most wanted first
    std::map<std::uint64_t, Begun> begun_;
    std::uint64_t lastId_ = 0;
    std::uint64_t computed_ = 0;
    std::function<void()> listener_;
    std::unique_ptr<SpectrogramWorkers> workers_;
};

}  // namespace sonavel
