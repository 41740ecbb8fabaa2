#include "recovery/work_keeper.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <system_error>

#include "recovery/replay.h"

namespace sonavel::recovery {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kLeastLimitBytes = std::uint64_t{256} << 20;

// Half of what is free on the disk; what the folders hold already counts as free.
std::uint64_t UsualLimit(const fs::path& folder) {
    fs::path there = folder;
    std::error_code error;
    while (!fs::exists(there, error) && there.has_relative_path()) there = there.parent_path();
    const fs::space_info space = fs::space(there, error);
    return error ? kLeastLimitBytes : std::max(space.available / 2, kLeastLimitBytes);
}

std::string TimeName() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &parts);
    return text;
}

}  // namespace

std::optional<fs::path> StateRecoveryFolder() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && fs::path(state).is_absolute())
        return fs::path(state) / "sonavel" / "recovery";
    const char* home = std::getenv("HOME");
    if (home == nullptr || !fs::path(home).is_absolute()) return std::nullopt;
    return fs::path(home) / ".local" / "state" / "sonavel" / "recovery";
}

WorkKeeper::WorkKeeper(fs::path folder, Keeping keeping)
    : folder_(std::move(folder)),
      keeping_(keeping),
      usualLimit_(UsualLimit(folder_)),
      budget_(std::make_shared<DiskBudget>()),
      claims_(std::make_shared<FileClaims>(folder_ / "open")),
      saves_(std::make_shared<SaveLog>(folder_)),
      thread_(std::make_unique<JournalThread>()) {
    SetLimit(0);
    if (keeping_ == Keeping::kChanges)
        thread_->Post([folder = folder_] { RemoveLeftTemporaryFiles(folder); });
}

WorkKeeper::~WorkKeeper() = default;

// Sorted by name, folders lie in the order in which their work began.
fs::path WorkKeeper::NewFolder() {
    MakePrivateFolder(folder_);
    char number[16];
    std::snprintf(number, sizeof number, "%04u", folderCount_++ % 10000);
    return folder_ / (TimeName() + "-" + std::to_string(getpid()) + "-" + number);
}

JournalHost WorkKeeper::Host() {
    return {*thread_, budget_, [this] { return NewFolder(); }, claims_, saves_};
}

WorkKeeper::Journals::iterator WorkKeeper::Find(const CSoundDoc& document) {
    return std::ranges::find_if(
        journals_, [&](const auto& journal) { return &journal->Document() == &document; });
}

std::string WorkKeeper::Watch(CSoundDoc& document) {
    if (keeping_ != Keeping::kChanges || Find(document) != journals_.end()) return {};
    journals_.push_back(std::make_unique<DocumentJournal>(document, Host()));
    if (!journals_.back()->SharesFile()) return {};
    return '"' + document.Title() + "\" is open in another editor, too.";
}

Result<std::string> WorkKeeper::Recover(const LeftWork& work, CSoundDoc& document) {
    auto lock = std::make_unique<FolderLock>(work.folder, std::chrono::milliseconds(0));
    if (!lock->IsHeld()) return Failed("Another program has opened this work.");
    Result<Replay> replay = ReplayInto(document, work.folder);
    if (!replay) return replay.Ended();
    auto file = std::make_shared<JournalFile>(work.folder, budget_, std::move(lock),
                                              replay->goodBytes, replay->recordCount);
    journals_.push_back(std::make_unique<DocumentJournal>(
        document, Host(), ReplayedJournal{std::move(file), replay->undoable, replay->redoable},
        keeping_));
    // Now that what it changes is kept.
    const Outcome take = ReplayTake(document, work.folder);
    journals_.back()->EndReplay();
    return take ? replay->word : take.Reason();
}

void WorkKeeper::Discard(const CSoundDoc& document) {
    const auto journal = Find(document);
    if (journal == journals_.end()) return;
    (*journal)->Discard();
    journals_.erase(journal);
}

void WorkKeeper::Leave(const CSoundDoc& document) {
    if (const auto journal = Find(document); journal != journals_.end()) journals_.erase(journal);
}

std::string WorkKeeper::FaultText() const {
    for (const auto& journal : journals_)
        if (journal->Fault() != JournalFault::kNone) return TextOf(journal->Fault());
    return {};
}

void WorkKeeper::TellFaults() {
    for (const auto& journal : journals_) journal->TellFault();
}

bool WorkKeeper::Finish() {
    return thread_->Finish();
}

}  // namespace sonavel::recovery
