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
    } else {
        ++work_.edits;
    }
}

std::optional<LeftWork> LookAtLeftWork(const fs::path& documentFolder) {
    const fs::path journal = documentFolder / kJournalName;
    JournalReader reader;
    if (!reader.Open(journal)) return std::nullopt;
    LeftWorkCounter counter;
    while (const auto record = reader.Next(JournalReader::Samples::kCheckOnly)) {
        if (reader.RecordCount() == 1 && !std::holds_alternative<BaseRecord>(*record))
            return std::nullopt;
        counter.Take(*record);
    }
    if (reader.RecordCount() == 0) return std::nullopt;
    LeftWork work = counter.Counted();
    work.folder = documentFolder;
    work.bytes = reader.GoodBytes();
    work.isWhole = reader.IsWhole();
    if (const auto take = LookAtTake(documentFolder / kTakeName)) {
        work.frames += take->Frames();
        work.bytes += take->soundBytes;
        ++work.edits;
    }
    if (const auto identity = IdentityOfFile(journal))
        work.lastChangeSeconds = identity->changedNs / kNanosecondsPerSecond;
    return work;
}

std::vector<LeftWork> ListLeftWork(const fs::path& folder) {
    std::vector<LeftWork> all;
    for (const fs::path& one : FoldersIn(folder)) {
        if (!FolderLock(one, kNoWait).IsHeld()) continue;
        if (auto work = LookAtLeftWork(one)) all.push_back(std::move(*work));
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
