#include "recovery/journal_thread.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace sonavel::recovery {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kSyncPeriod{1};
// Of records that wait for a slow disk.
constexpr std::uint64_t kMostWaitingBytes = std::uint64_t{2} << 30;

}  // namespace

// Outlives the owner when the thread hangs in a call of the system.
struct JournalThread::Shared {
    std::mutex mutex;
    std::condition_variable posted;
    std::condition_variable finished;
    std::deque<Job> jobs;
    std::deque<LongJob> longJobs;
    std::vector<std::weak_ptr<JournalFile>> files;
    std::uint64_t postedCount = 0;
    std::uint64_t syncedCount = 0;  // of the jobs, all before which are on the disk
    bool stops = false;
    std::atomic<bool> hasEnded = false;
    std::atomic<std::uint64_t> waitingBytes{0};
    // Whether somebody waits for all that was posted.
    bool isAwaited = false;

    void Run();
    bool TakeJob(Job& job, Clock::time_point nextSync, bool isDirty);
    bool TakeLongJob(LongJob& job);
    void DoPieceOf(LongJob job);
    void SyncAll(std::uint64_t doneCount);
};

// False when it is time to sync or to end.
bool JournalThread::Shared::TakeJob(Job& job, Clock::time_point nextSync, bool isDirty) {
    std::unique_lock lock(mutex);
    const auto wakes = [this] { return !jobs.empty() || !longJobs.empty() || stops || isAwaited; };
    if (isDirty)
        posted.wait_until(lock, nextSync, wakes);
    else
        posted.wait(lock, wakes);
    if (jobs.empty() || (isDirty && Clock::now() >= nextSync)) return false;
    job = std::move(jobs.front());
    jobs.pop_front();
    return true;
}

bool JournalThread::Shared::TakeLongJob(LongJob& job) {
    const std::lock_guard lock(mutex);
    if (!jobs.empty() || longJobs.empty() || stops || isAwaited) return false;
    job = std::move(longJobs.front());
    longJobs.pop_front();
    return true;
}

void JournalThread::Shared::DoPieceOf(LongJob job) {
    if (job() == Piece::kDone) return;
    const std::lock_guard lock(mutex);
    longJobs.push_back(std::move(job));
}

void JournalThread::Shared::SyncAll(std::uint64_t doneCount) {
    std::vector<std::shared_ptr<JournalFile>> alive;
    {
        const std::lock_guard lock(mutex);
        std::erase_if(files, [](const auto& file) { return file.expired(); });
        for (const auto& file : files)
            if (auto held = file.lock()) alive.push_back(std::move(held));
    }
    for (const auto& file : alive) file->Sync();
    alive.clear();
    const std::lock_guard lock(mutex);
    syncedCount = doneCount;
    isAwaited = isAwaited && syncedCount < postedCount;
    finished.notify_all();
}

void JournalThread::Shared::Run() {
    std::uint64_t doneCount = 0;
    bool isDirty = false;
    Clock::time_point nextSync{};
    for (;;) {
        Job job;
        LongJob longJob;
        const bool isTimeToSync = isDirty && Clock::now() >= nextSync;
        if (!isTimeToSync && TakeLongJob(longJob)) {
            DoPieceOf(std::move(longJob));
            continue;
        }
        if (TakeJob(job, nextSync, isDirty)) {
            job();
            job = {};
            ++doneCount;
            if (!std::exchange(isDirty, true)) nextSync = Clock::now() + kSyncPeriod;
            continue;
        }
        SyncAll(doneCount);
        isDirty = false;
        const std::lock_guard lock(mutex);
        if (stops && jobs.empty()) break;
    }
    // Files that somebody else is to find closed.
    longJobs.clear();
    const std::lock_guard lock(mutex);
    hasEnded = true;
    finished.notify_all();
}

// Without a thread every journal fails, and nothing waits.
JournalThread::JournalThread() : shared_(std::make_shared<Shared>()) {
    try {
        std::thread([shared = shared_] { shared->Run(); }).detach();
    } catch (const std::system_error&) {
        shared_->hasEnded = true;
    }
}

JournalThread::~JournalThread() {
    std::unique_lock lock(shared_->mutex);
    shared_->stops = true;
    shared_->posted.notify_all();
    shared_->finished.wait_for(lock, kLongestWait, [this] { return shared_->hasEnded.load(); });
}

void JournalThread::Post(Job job) {
    const std::lock_guard lock(shared_->mutex);
    shared_->jobs.push_back(std::move(job));
    ++shared_->postedCount;
    shared_->posted.notify_all();
}

void JournalThread::PostLong(LongJob job) {
    const std::lock_guard lock(shared_->mutex);
    shared_->longJobs.push_back(std::move(job));
    shared_->posted.notify_all();
}

void JournalThread::PostAppend(const std::shared_ptr<JournalFile>& file, PackedRecord record) {
    const std::uint64_t bytes = record.SizeBytes();
    if (shared_->hasEnded) return file->SetFault(JournalFault::kNoMemory);
    if (shared_->waitingBytes + bytes > kMostWaitingBytes)
        return file->SetFault(JournalFault::kTooSlow);
    shared_->waitingBytes += bytes;
    if (record.lent) copier_.Add(record.lent);
    auto held = std::make_shared<PackedRecord>(std::move(record));
    Post([file, held, bytes, shared = shared_.get()] {
        file->Append(*held);
        shared->waitingBytes -= bytes;
    });
}

void JournalThread::Watch(const std::shared_ptr<JournalFile>& file) {
    const std::lock_guard lock(shared_->mutex);
    shared_->files.push_back(file);
}

bool JournalThread::Finish(std::chrono::milliseconds longestWait) {
    std::unique_lock lock(shared_->mutex);
    if (shared_->hasEnded) return false;
    const std::uint64_t wanted = shared_->postedCount;
    shared_->isAwaited = true;
    shared_->posted.notify_all();
    return shared_->finished.wait_for(lock, longestWait,
                                      [&] { return shared_->syncedCount >= wanted; });
}

}  // namespace sonavel::recovery
