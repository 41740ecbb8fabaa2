// The thread that writes journals: jobs in the order in which they were posted, long ones piece by
// piece whenever nothing else waits, and once a second what they wrote is brought to the disk.
// Whoever posts never waits for it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "recovery/journal_file.h"
#include "recovery/sample_copier.h"

namespace sonavel::recovery {

class JournalThread {
  public:
    using Job = std::function<void()>;

    JournalThread();
    // Waits as Finish() does, and leaves a thread that still hangs to itself.
    ~JournalThread();
    JournalThread(const JournalThread&) = delete;
    JournalThread& operator=(const JournalThread&) = delete;

    // Jobs do not throw.
    void Post(Job job);
    // Done again and again, in pieces of some milliseconds, until it returns kDone. What is left of
    // it at the program's end is given up.
    enum class Piece { kDone, kMoreToDo };
    using LongJob = std::function<Piece()>;
    void PostLong(LongJob job);
    // Posts what appends the record to the file; gives the file up when too much waits already.
    void PostAppend(const std::shared_ptr<JournalFile>& file, PackedRecord record);
    // Syncs this file, too, from now on as long as it lives.
    void Watch(const std::shared_ptr<JournalFile>& file);

    static constexpr std::chrono::milliseconds kLongestWait{5000};
    // Waits until all that was posted is on the disk. False when that takes longer.
    bool Finish(std::chrono::milliseconds longestWait = kLongestWait);

  private:
    struct Shared;

    std::shared_ptr<Shared> shared_;
    SampleCopier copier_;
};

}  // namespace sonavel::recovery
