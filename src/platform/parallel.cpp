#include "platform/parallel.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace sonavel {
namespace {

constexpr long kMostThreads = 64;

class Crew {
  public:
    explicit Crew(const UnitsOfWork& work) : work_(work) {}
    ~Crew() {
        stopped_ = true;
        for (std::thread& thread : threads_) thread.join();
    }

    void Start(unsigned helpers);
    WorkDone Lead();

  private:
    bool EachAlone() const { return work_.lanes == UnitsOfWork::kEachAlone; }
    void Compute(std::size_t unit);
    bool ComputeNext();
    void ComputeLane(std::size_t lane);
    void Finish(std::size_t unit);

    const UnitsOfWork& work_;
    std::unique_ptr<std::atomic<int>[]> done_;  // of each unit; null where one thread does all
    std::atomic<std::size_t> next_ = 0;
    std::atomic<bool> stopped_ = false;
    std::atomic<bool> outOfMemory_ = false;
    std::vector<std::thread> threads_;
    std::size_t ledLanes_ = 0;  // lanes that threads of their own compute: the last ones
};

// Without a thread the others do its work.
void Crew::Start(unsigned helpers) try {
    done_ = std::make_unique<std::atomic<int>[]>(work_.count);
    threads_.reserve(helpers);
    for (; ledLanes_ < helpers; ++ledLanes_) {
        if (EachAlone())
            threads_.emplace_back([this] {
                while (ComputeNext()) continue;
            });
        else
            threads_.emplace_back(
                [this, lane = work_.lanes - 1 - ledLanes_] { ComputeLane(lane); });
    }
} catch (const std::bad_alloc&) {
} catch (const std::system_error&) {
}

void Crew::Compute(std::size_t unit) {
    try {
        work_.compute(unit);
    } catch (const std::bad_alloc&) {
        outOfMemory_ = true;
    }
    if (!done_) return;
    done_[unit].store(1, std::memory_order_release);
    done_[unit].notify_one();
}

bool Crew::ComputeNext() {
    const std::size_t unit = next_++;
    if (unit >= work_.count || stopped_) return false;
    Compute(unit);
    return true;
}

void Crew::ComputeLane(std::size_t lane) {
    for (std::size_t unit = lane; unit < work_.count && !stopped_; unit += work_.lanes)
        Compute(unit);
}

// Computes it, or other units while another thread does.
void Crew::Finish(std::size_t unit) {
    if (!done_) return Compute(unit);
    if (!EachAlone()) {
        if (unit % work_.lanes < work_.lanes - ledLanes_) Compute(unit);
    } else {
        while (!done_[unit].load(std::memory_order_acquire) && ComputeNext()) continue;
    }
    done_[unit].wait(0, std::memory_order_acquire);
}

WorkDone Crew::Lead() {
    for (std::size_t unit = 0; unit < work_.count; ++unit) {
        if (work_.before(unit) == Onward::kStop) return {WorkEnd::kStopped, unit};
        Finish(unit);
        if (outOfMemory_) return {WorkEnd::kOutOfMemory, unit};
    }
    return {WorkEnd::kFinished, work_.count};
}

}  // namespace

unsigned ThreadsToUse() {
    const char* said = std::getenv("SONAVEL_THREADS");
    const long wanted = said ? std::strtol(said, nullptr, 10) : 0;
    const long threads = wanted > 0 ? wanted : std::thread::hardware_concurrency();
    return static_cast<unsigned>(std::clamp(threads, 1L, kMostThreads));
}

WorkDone ComputeUnits(const UnitsOfWork& work, unsigned threads) {
    const std::size_t most = work.lanes == UnitsOfWork::kEachAlone ? work.count : work.lanes;
    const std::size_t used = std::min<std::size_t>(threads, most);
    Crew crew(work);
    if (used > 1) crew.Start(static_cast<unsigned>(used - 1));
    return crew.Lead();
}

WorkEnd ComputeParts(std::size_t count, std::function<void(std::size_t part)> compute) {
    const UnitsOfWork work{.count = count,
                           .compute = std::move(compute),
                           .before = [](std::size_t) { return Onward::kGoOn; }};
    return ComputeUnits(work, ThreadsToUse()).end;
}

}  // namespace sonavel
