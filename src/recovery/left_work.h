// What lies in a recovery folder: the unsaved work of programs that ended without saving it.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "recovery/journal_record.h"

namespace sonavel::recovery {

struct LeftWork {
    std::filesystem::path folder;
    std::filesystem::path path;  // of the document; empty while it was untitled
    std::string title;
    std::uint32_t frames = 0;
    std::uint32_t samplesPerSecond = 0;
    // Changes that stand, those that were undone left out.
    std::uint32_t edits = 0;
    std::int64_t lastChangeSeconds = 0;  // since 1970
    std::uint64_t bytes = 0;             // of its records on the disk
    bool isWhole = true;                 // no torn or false record ends it early
    bool isReadable = true;              // else its beginning is damaged, and nothing comes back
};

// By the time at which the work began. What a running program holds, and what is no such work, is
// left out. On any thread; ends early, with what it has, once `cancelled` is true.
std::vector<LeftWork> ListLeftWork(const std::filesystem::path& folder,
                                   const std::atomic<bool>& cancelled = false);
// Nothing where no record was ever begun.
std::optional<LeftWork> LookAtLeftWork(const std::filesystem::path& documentFolder,
                                       const std::atomic<bool>& cancelled = false);

// That all files below the folder take up, as far as they can be looked at.
std::uint64_t BytesIn(const std::filesystem::path& folder);

// Removes it for good; false when a running program holds it.
bool DiscardLeftWork(const LeftWork& work);

// Counts what a listing shows, record by record.
class LeftWorkCounter {
  public:
    void Take(const JournalRecord& record);
    const LeftWork& Counted() const { return work_; }

  private:
    void Shape(const PcmFormat& format, std::uint32_t frames);

    LeftWork work_;
};

}  // namespace sonavel::recovery
