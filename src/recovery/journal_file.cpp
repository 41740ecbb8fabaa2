#include "recovery/journal_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "recovery/journal_bytes.h"

namespace sonavel::recovery {

namespace fs = std::filesystem;

bool DiskBudget::Take(std::uint64_t bytes) {
    std::uint64_t used = usedBytes;
    do {
        const std::uint64_t limit = limitBytes;
        if (used > limit || bytes > limit - used) return false;
    } while (!usedBytes.compare_exchange_weak(used, used + bytes));
    return true;
}

std::string TextOf(JournalFault fault) {
    switch (fault) {
        case JournalFault::kNone:
            break;
        case JournalFault::kFull:
            return "The disk is full: unsaved work is no longer kept for recovery.";
        case JournalFault::kDisk:
            return "The recovery folder cannot be written: unsaved work is not kept for recovery.";
        case JournalFault::kBudget:
            return "The room for recovery is used up: unsaved work is no longer kept for recovery.";
        case JournalFault::kTooSlow:
            return "The disk is too slow: unsaved work is no longer kept for recovery.";
        case JournalFault::kNoMemory:
            return "There is not enough memory to keep unsaved work for recovery.";
    }
    return {};
}

bool MakePrivateFolder(const fs::path& folder) {
    std::error_code error;
    if (folder.has_parent_path()) fs::create_directories(folder.parent_path(), error);
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) return false;
    struct stat status;
    return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && access(folder.c_str(), W_OK | X_OK) == 0;
}

JournalFile::JournalFile(fs::path folder, std::shared_ptr<DiskBudget> budget)
    : folder_(std::move(folder)), budget_(std::move(budget)) {}

JournalFile::JournalFile(fs::path folder, std::shared_ptr<DiskBudget> budget,
                         std::unique_ptr<FolderLock> lock, std::uint64_t goodBytes,
                         std::uint32_t recordCount)
    : folder_(std::move(folder)),
      budget_(std::move(budget)),
      lock_(std::move(lock)),
      goodBytes_(goodBytes),
      recordCount_(recordCount) {}

JournalFile::~JournalFile() {
    Sync();
    budget_->GiveBack(takenBytes_);
}

void JournalFile::SetFault(JournalFault fault) {
    JournalFault none = JournalFault::kNone;
    fault_.compare_exchange_strong(none, fault);
}

void JournalFile::Begin() {
    // Whoever owns the folder around it could put another one in its place.
    if (!MakePrivateFolder(folder_.parent_path()) || !MakePrivateFolder(folder_))
        return SetFault(JournalFault::kDisk);
    if (!lock_) lock_ = std::make_unique<FolderLock>(folder_);
    const fs::path path = folder_ / kJournalName;
    file_ = FileDescriptor(
        open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!lock_->IsHeld() || !file_.IsOpen()) return SetFault(JournalFault::kDisk);
    CutAt(goodBytes_);
}

void JournalFile::CutAt(std::uint64_t bytes) {
    const auto end = static_cast<off_t>(bytes);
    if (ftruncate(file_.Get(), end) != 0 || lseek(file_.Get(), end, SEEK_SET) != end)
        SetFault(JournalFault::kDisk);
}

bool JournalFile::TakeRoom(std::uint64_t bytes) {
    if (!budget_->Take(bytes)) return false;
    takenBytes_ += bytes;
    return true;
}

bool JournalFile::WriteAll(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file_.Get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            SetFault(errno == ENOSPC || errno == EDQUOT ? JournalFault::kFull
                                                        : JournalFault::kDisk);
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

void JournalFile::Append(const PackedRecord& record) {
    if (Fault() != JournalFault::kNone || removed_) return;
    const std::uint64_t bytes = kHeadBytes + record.SizeBytes();
    if (!TakeRoom(bytes)) return SetFault(JournalFault::kBudget);
    const std::span<const std::uint8_t> samples = record.Samples();
    const RecordHead head = MakeHead(recordCount_, record.type, record.bytes, samples);
    if (!WriteAll(head) || !WriteAll(record.bytes) || !WriteAll(samples))
        // What came before stays good.
        return CutAt(goodBytes_);
    goodBytes_ += bytes;
    ++recordCount_;
    unsynced_ = true;
}

void JournalFile::AppendToTake(const PcmFormat& format, std::span<const std::uint8_t> wholeFrames) {
    if (Fault() != JournalFault::kNone || removed_) return;
    if (!take_ && !take_.emplace().Open(folder_ / kTakeName, format))
        return SetFault(JournalFault::kDisk);
    if (!TakeRoom(wholeFrames.size())) return SetFault(JournalFault::kBudget);
    if (!take_->Append(wholeFrames))
        SetFault(errno == ENOSPC || errno == EDQUOT ? JournalFault::kFull : JournalFault::kDisk);
    takeUnsynced_ = true;
}

// A take that no record holds, since the journal had failed before it, stays.
void JournalFile::RemoveTake() {
    take_.reset();
    takeUnsynced_ = false;
    if (Fault() == JournalFault::kNone && !removed_) unlink((folder_ / kTakeName).c_str());
}

void JournalFile::Sync() {
    if (removed_) return;
    if (std::exchange(unsynced_, false) && fdatasync(file_.Get()) != 0)
        SetFault(JournalFault::kDisk);
    if (std::exchange(takeUnsynced_, false) && take_ && !take_->Sync())
        SetFault(JournalFault::kDisk);
}

void JournalFile::Remove() {
    if (std::exchange(removed_, true)) return;
    file_.Close();
    take_.reset();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    lock_.reset();
    budget_->GiveBack(std::exchange(takenBytes_, 0));
}

}  // namespace sonavel::recovery
