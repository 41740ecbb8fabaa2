#include "platform/parallel.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace sonavel {
namespace {

constexpr long kMostThreads = 64;

class Crew {
  public:
    explicit Crew(const UnitsOfWork& work) : work_(work), done_(work.count) {}
    ~Crew() {
        stopped_ = true;
        for (std::thread& thread : threads_) thread.join();
    }

    void Start(unsigned helpers);
    std::size_t Lead();

  private:
    bool EachAlone() const { return work_.lanes == UnitsOfWork::kEachAlone; }
    template <class Run>
    bool StartThread(const Run& run);
    void Compute(std::size_t unit);
    bool ComputeNext();
    void ComputeLane(std::size_t lane);
    void Finish(std::size_t unit);

    const UnitsOfWork& work_;
    std::vector<std::atomic<int>> done_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<bool> stopped_ = false;
    std::vector<std::thread> threads_;
    std::size_t ledLanes_ = 0;  // lanes that threads of their own compute: the last ones
};

// Without a thread the others do its work.
template <class Run>
bool Crew::StartThread(const Run& run) {
    try {
        threads_.emplace_back(run);
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void Crew::Start(unsigned helpers) {
    threads_.reserve(helpers);
    for (unsigned i = 0; i < helpers; ++i) {
        const std::size_t lane = work_.lanes - 1 - i;
        const bool started = EachAlone() ? StartThread([this] {
            while (ComputeNext()) continue;
        })
                                         : StartThread([this, lane] { ComputeLane(lane); });
        if (!started) return;
        ++ledLanes_;
    }
}

void Crew::Compute(std::size_t unit) {
    work_.compute(unit);
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
    if (!EachAlone()) {
        if (unit % work_.lanes < work_.lanes - ledLanes_) Compute(unit);
    } else {
        while (!done_[unit].load(std::memory_order_acquire) && ComputeNext()) continue;
    }
    done_[unit].wait(0, std::memory_order_acquire);
}

std::size_t Crew::Lead() {
    for (std::size_t unit = 0; unit < work_.count; ++unit) {
        if (work_.before(unit) == Onward::kStop) return unit;
        Finish(unit);
    }
    return work_.count;
}

}  // namespace

unsigned ThreadsToUse() {
    const char* said = std::getenv("SONAVEL_THREADS");
    const long wanted = said ? std::strtol(said, nullptr, 10) : 0;
    const long threads = wanted > 0 ? wanted : std::thread::hardware_concurrency();
    return static_cast<unsigned>(std::clamp(threads, 1L, kMostThreads));
}

std::size_t ComputeUnits(const UnitsOfWork& work, unsigned threads) {
    const std::size_t most = work.lanes == UnitsOfWork::kEachAlone ? work.count : work.lanes;
    const std::size_t used = std::min<std::size_t>(threads, most);
    Crew crew(work);
    if (used > 1) crew.Start(static_cast<unsigned>(used - 1));
    return crew.Lead();
}

void ComputeParts(std::size_t count, std::function<void(std::size_t part)> compute) {
    ComputeUnits({.count = count,
                  .compute = std::move(compute),
                  .before = [](std::size_t) { return Onward::kGoOn; }},
                 ThreadsToUse());
}

}  // namespace sonavel
