// The folder of one document's unsaved work while it is being written: its journal, appended record
// by record. Made on the user-interface thread; all else but the reports runs on the journal's.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/file_descriptor.h"
#include "platform/folder_lock.h"
#include "recovery/journal_record.h"
#include "recovery/take_file.h"
#include "sound/lent_samples.h"
#include "sound/sound_buffer.h"

namespace sonavel::recovery {

// Bytes that all journals of a program may take up on the disk together.
struct DiskBudget {
    std::atomic<std::uint64_t> limitBytes{0};
    std::atomic<std::uint64_t> usedBytes{0};

    // False, with nothing taken, when so much is not left.
    bool Take(std::uint64_t bytes);
    void GiveBack(std::uint64_t bytes) { usedBytes -= bytes; }
};

enum class JournalFault : std::uint8_t { kNone, kFull, kDisk, kBudget, kTooSlow, kNoMemory };
// A sentence for the person.
std::string TextOf(JournalFault fault);

struct PackedRecord {
    std::uint32_t type = 0;
    std::vector<std::uint8_t> bytes;
    // One of the two, or none.
    SoundBuffer samples = {};
    std::shared_ptr<LentSamples> lent = {};

    // Waits for samples that are still being copied.
    std::span<const std::uint8_t> Samples() const { return lent ? lent->Bytes() : samples.Bytes(); }
    std::uint64_t SizeBytes() const {
        return bytes.size() + (lent ? lent->Size() : samples.Size());
    }
};

inline constexpr const char* kJournalName = "journal";

class JournalFile {
  public:
    // Of a folder that does not exist yet.
    JournalFile(std::filesystem::path folder, std::shared_ptr<DiskBudget> budget);
    // Goes on behind the good records of a journal that was read.
    JournalFile(std::filesystem::path folder, std::shared_ptr<DiskBudget> budget,
                std::unique_ptr<FolderLock> lock, std::uint64_t goodBytes,
                std::uint32_t recordCount);
    ~JournalFile();
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }
    // The first fault; nothing is written behind it.
    JournalFault Fault() const { return fault_; }
    void SetFault(JournalFault fault);

    // Makes or opens folder and journal.
    void Begin();
    void Append(const PackedRecord& record);
    // What is being recorded, in whole frames; the first piece begins a take.
    void AppendToTake(const PcmFormat& format, std::span<const std::uint8_t> wholeFrames);
    // What was recorded is in a record now.
    void RemoveTake();
    // Brings to the disk what was appended since the last time.
    void Sync();
    // Room on the disk for more files of the folder; given back when the folder goes.
    bool TakeRoom(std::uint64_t bytes);
    // Removes the folder with all that it holds.
    void Remove();
    bool IsRemoved() const { return removed_; }

  private:
    bool WriteAll(std::span<const std::uint8_t> bytes);
    void CutAt(std::uint64_t bytes);

    std::filesystem::path folder_;
    std::shared_ptr<DiskBudget> budget_;
    std::unique_ptr<FolderLock> lock_;
    FileDescriptor file_;
    std::uint64_t goodBytes_ = 0;
    std::uint64_t takenBytes_ = 0;
    std::uint32_t recordCount_ = 0;
    bool unsynced_ = false;
    std::optional<TakeFile> take_;
    bool takeUnsynced_ = false;
    bool removed_ = false;
    std::atomic<JournalFault> fault_ = JournalFault::kNone;
};

// Whether the folder could be made, or is there and belongs to this user. Made folders are for
// their owner alone.
bool MakePrivateFolder(const std::filesystem::path& folder);

}  // namespace sonavel::recovery
