#include "platform/beside.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace sonavel {
namespace {

constexpr std::chrono::milliseconds kPollInterval{10};

class Beside {
  public:
    explicit Beside(const BesideWork& work) : work_(work) {}
    ~Beside() {
        if (thread_.joinable()) thread_.join();
    }

    void Start() try {
        thread_ = std::thread([this] {
            work_(cancelled_);
            const std::lock_guard lock(mutex_);
            done_ = true;
            ended_.notify_one();
        });
    } catch (const std::system_error&) {
        work_(cancelled_);
        done_ = true;
    }

    // Once before the work starts, so that what is cancelled by then has not come about meanwhile.
    void Poll(const std::function<bool()>& poll) {
        if (poll()) cancelled_ = true;
    }
    void Watch(const std::function<bool()>& poll) {
        while (!IsDoneSoon()) Poll(poll);
    }
    bool WasCancelled() const { return cancelled_; }

  private:
    bool IsDoneSoon() {
        std::unique_lock lock(mutex_);
        return ended_.wait_for(lock, kPollInterval, [this] { return done_; });
    }

    const BesideWork& work_;
    std::atomic<bool> cancelled_ = false;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool done_ = false;
    std::thread thread_;
};

}  // namespace

bool DoBeside(const std::function<bool()>& poll, const BesideWork& work) {
    Beside beside(work);
    beside.Poll(poll);
    beside.Start();
    beside.Watch(poll);
    return !beside.WasCancelled();
}

bool DoBeside(ProgressWindow& window, const BesideWork& work) {
    return DoBeside([&window] { return window.Poll(); }, work);
}

bool DoWatchedBeside(ProgressWindow& window, const WatchedWork& work) {
    constexpr int kNothingSaid = -1;
    std::atomic<int> percent = kNothingSaid;
    const auto show = [&] {
        if (const int known = percent; known != kNothingSaid) window.SetPosition(known);
    };
    const auto poll = [&] {
        show();
        return window.Poll();
    };
    const bool went = DoBeside(poll, [&](const std::atomic<bool>& cancelled) {
        work([&](double done) {
            percent = static_cast<int>(100 * done);
            return cancelled ? Onward::kStop : Onward::kGoOn;
        });
    });
    show();
    return went;
}

}  // namespace sonavel
