#include "view/draw/spectrogram_workers.h"

#include <memory>
#include <new>
#include <system_error>
#include <utility>

namespace sonavel {
namespace {

// Keeps the tables of the last look.
class LaneMaker {
  public:
    SpectrogramLanes Make(const TileTask& task) try {
        if (!maker_ || !maker_->Suits(task.frames, task.height))
            maker_ = std::make_unique<SpectrogramMaker>(
                task.frames.look, task.frames.sound.GetSamplesPerSecond(), task.height);
        return maker_->Lanes(task.frames);
    } catch (const std::bad_alloc&) {
        return {};
    }

  private:
    std::unique_ptr<SpectrogramMaker> maker_;
};

}  // namespace

SpectrogramWorkers::SpectrogramWorkers(unsigned threads, std::function<void()> finished)
    : finished_(std::move(finished)) {
    try {
        for (unsigned i = 0; i < threads; ++i) threads_.emplace_back([this] { Work(); });
    } catch (const std::bad_alloc&) {
    } catch (const std::system_error&) {
    }
}

SpectrogramWorkers::~SpectrogramWorkers() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    wake_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

bool SpectrogramWorkers::NextTask(TileTask& task) {
    std::unique_lock lock(mutex_);
    wake_.wait(lock, [this] { return stopped_ || !waiting_.empty(); });
    if (stopped_) return false;
    task = std::move(waiting_.front());
    waiting_.pop_front();
    return true;
}

void SpectrogramWorkers::Work() {
    LaneMaker maker;
    for (TileTask task; NextTask(task);) Finish({task.id, maker.Make(task)});
}

void SpectrogramWorkers::Finish(TileResult result) {
    bool tells = false;
    {
        const std::lock_guard lock(mutex_);
        // Room was made when the task came.
        done_.push_back(std::move(result));
        tells = !std::exchange(isAnnounced_, true);
    }
    if (tells) finished_();
}

void SpectrogramWorkers::Post(TileTask task) {
    bool tells = false;
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(task));
        done_.reserve(done_.size() + waiting_.size() + threads_.size());
        tells = threads_.empty() && !std::exchange(isAnnounced_, true);
    }
    wake_.notify_one();
    if (tells) finished_();
}

std::vector<TileResult> SpectrogramWorkers::Take() {
    if (threads_.empty()) return TakeAsOnlyThread();
    const std::lock_guard lock(mutex_);
    isAnnounced_ = false;
    std::vector<TileResult> taken;
    taken.reserve(done_.size());
    for (TileResult& result : done_) taken.push_back(std::move(result));
    done_.clear();
    return taken;
}

std::vector<TileResult> SpectrogramWorkers::TakeAsOnlyThread() {
    std::vector<TileResult> taken;
    if (!waiting_.empty()) {
        const TileTask task = std::move(waiting_.front());
        waiting_.pop_front();
        taken.push_back({task.id, LaneMaker().Make(task)});
    }
    isAnnounced_ = !waiting_.empty();
    if (isAnnounced_) finished_();
    return taken;
}

std::vector<std::uint64_t> SpectrogramWorkers::DropWaiting(
    const std::function<bool(std::uint64_t id)>& isUseless) {
    const std::lock_guard lock(mutex_);
    std::vector<std::uint64_t> ids;
    ids.reserve(waiting_.size());
    std::erase_if(waiting_, [&](const TileTask& task) {
        const bool goes = isUseless(task.id);
        if (goes) ids.push_back(task.id);
        return goes;
    });
    return ids;
}

}  // namespace sonavel
