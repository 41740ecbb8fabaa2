// Threads that compute the tiles of a spectrogram from frames that were copied for them. They know
// neither a sound nor a view, so that those may change meanwhile.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "view/draw/spectrogram.h"

namespace sonavel {

// One picture for each channel.
using SpectrogramLanes = std::vector<SpectrogramPicture>;

struct TileTask {
    std::uint64_t id = 0;
    unsigned height = 0;
    SpectrogramFrames frames;
};

struct TileResult {
    std::uint64_t id = 0;
    SpectrogramLanes lanes;  // none where the memory could not be had
};

class SpectrogramWorkers {
  public:
    // `finished` is called on one of the threads when there is something to take; once, until it
    // is taken.
    SpectrogramWorkers(unsigned threads, std::function<void()> finished);
    // Waits for the columns that are being computed just now, and drops the rest.
    ~SpectrogramWorkers();
    SpectrogramWorkers(const SpectrogramWorkers&) = delete;
    SpectrogramWorkers& operator=(const SpectrogramWorkers&) = delete;

    // Throws std::bad_alloc. Where no thread could be started, Take() computes a task itself.
    void Post(TileTask task);
    std::vector<TileResult> Take();
    // Forgets the tasks that nobody has begun and that are of no more use; their ids.
    std::vector<std::uint64_t> DropWaiting(const std::function<bool(std::uint64_t id)>& isUseless);

  private:
    void Work();
    void Finish(TileResult result);
    bool NextTask(TileTask& task);
    std::vector<TileResult> TakeAsOnlyThread();

    std::function<void()> finished_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopped_ = false;
    bool isAnnounced_ = false;
    std::deque<TileTask> waiting_;
    std::vector<TileResult> done_;
    std::vector<std::thread> threads_;
};

}  // namespace sonavel
