#include "recovery/left_work.h"

#include <algorithm>
#include <chrono>
#include <system_error>

#include "platform/code_page_949.h"
#include "platform/file_identity.h"
#include "platform/folder_lock.h"
#include "recovery/journal_bytes.h"
#include "recovery/journal_file.h"

namespace sonavel::recovery {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kNoWait{0};
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

std::vector<fs::path> FoldersIn(const fs::path& folder) {
    std::vector<fs::path> folders;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->symlink_status(error).type() == fs::file_type::directory)
            folders.push_back(entry->path());
    std::ranges::sort(folders);
    return folders;
}

}  // namespace

void LeftWorkCounter::Shape(const PcmFormat& format, std::uint32_t frames) {
    work_.frames = frames;
    work_.samplesPerSecond = format.samplesPerSecond;
}

void LeftWorkCounter::Take(const JournalRecord& record) {
    if (const auto* base = std::get_if<BaseRecord>(&record)) {
        Shape(base->format, base->frames);
        if (base->file) {
            work_.path = base->file->path;
            work_.title = DisplayText(base->file->path.filename().native());
        }
    } else if (const auto* name = std::get_if<NameRecord>(&record)) {
        work_.path = name->path;
        work_.title = name->title;
    } else if (const auto* change = std::get_if<ChangeRecord>(&record)) {
        Shape(change->format, change->framesAfter);
        ++work_.edits;
    } else if (const auto* step = std::get_if<StepRecord>(&record)) {
        Shape(step->format, step->framesAfter);
        const bool undoes = step->way == StepRecord::Way::kUndo;
        if (undoes && work_.edits > 0)
            --work_.edits;
        else if (!undoes)
            ++work_.edits;
    } else if (std::holds_alternative<TagsRecord>(record)) {
        ++work_.edits;
    }
}

namespace {

// Of the records up to the first that is damaged, checked but not kept.
std::optional<LeftWork> CountedIn(JournalReader& reader, const std::atomic<bool>& cancelled) {
    LeftWorkCounter counter;
    const PieceWatch watch = [&](double) { return cancelled ? Onward::kStop : Onward::kGoOn; };
    while (!cancelled) {
        const auto record = reader.Next(JournalReader::Samples::kCheckOnly, watch);
        if (!record) break;
        if (reader.RecordCount() == 1 && !std::holds_alternative<BaseRecord>(*record))
            return std::nullopt;
        counter.Take(*record);
    }
    if (reader.RecordCount() == 0) return std::nullopt;
    LeftWork work = counter.Counted();
    work.bytes = reader.GoodBytes();
    work.isWhole = reader.IsWhole();
    return work;
}

// By the name that some later record gives it, or the folder's own.
LeftWork DamagedIn(const fs::path& journal, const fs::path& documentFolder) {
    LeftWork work;
    work.isWhole = work.isReadable = false;
    if (const auto name = FindNameRecord(journal)) {
        work.path = name->path;
        work.title = name->title;
    } else {
        work.title = DisplayText(documentFolder.filename().native());
    }
    return work;
}

void AddTake(LeftWork& work, const fs::path& documentFolder) {
    const auto take = LookAtTake(documentFolder / kTakeName);
    if (!take) return;
    work.frames += take->Frames();
    work.bytes += take->soundBytes;
    ++work.edits;
}

}  // namespace

std::optional<LeftWork> LookAtLeftWork(const fs::path& documentFolder,
                                       const std::atomic<bool>& cancelled) {
    const fs::path journal = documentFolder / kJournalName;
    const auto identity = IdentityOfFile(journal);
    JournalReader reader;
    if (!identity || identity->sizeBytes == 0 || !reader.Open(journal)) return std::nullopt;
    const std::optional<LeftWork> counted = CountedIn(reader, cancelled);
    LeftWork work = counted ? *counted : DamagedIn(journal, documentFolder);
    work.folder = documentFolder;
    work.lastChangeSeconds = identity->changedNs / kNanosecondsPerSecond;
    if (work.isReadable) AddTake(work, documentFolder);
    return work;
}

std::vector<LeftWork> ListLeftWork(const fs::path& folder, const std::atomic<bool>& cancelled) {
    std::vector<LeftWork> all;
    for (const fs::path& one : FoldersIn(folder)) {
        if (cancelled) break;
        if (!FolderLock(one, kNoWait).IsHeld()) continue;
        if (auto work = LookAtLeftWork(one, cancelled)) all.push_back(std::move(*work));
    }
    return all;
}

std::uint64_t BytesIn(const fs::path& folder) {
    std::uint64_t bytes = 0;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_symlink(ignored) || !entry->is_regular_file(ignored)) continue;
        const std::uintmax_t size = entry->file_size(ignored);
        if (!ignored) bytes += size;
    }
    return bytes;
}

bool DiscardLeftWork(const LeftWork& work) {
    const FolderLock lock(work.folder, kNoWait);
    if (!lock.IsHeld()) return false;
    std::error_code error;
    fs::remove_all(work.folder, error);
    return !error;
}

}  // namespace sonavel::recovery
