// Keeps the unsaved work of all documents of a program in one folder, and gives back what programs
// before it left there.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "recovery/document_journal.h"
#include "recovery/left_work.h"

namespace sonavel::recovery {

class WorkKeeper {
  public:
    // kHeldOnly: keeps no changes, but takes what was recovered along when it is saved or closed.
    using Keeping = DocumentJournal::Keeping;

    // `folder` is made when the first document needs it.
    WorkKeeper(std::filesystem::path folder, Keeping keeping);
    // Leaves what is unsaved, with all its changes on the disk.
    ~WorkKeeper();

    const std::filesystem::path& Folder() const { return folder_; }

    // From now on, until Discard() or Leave(), which has to come before the document ends.
    // What the person is to know of it, if anything: another editor shows its file, too.
    std::string Watch(CSoundDoc& document);
    // Reads left work into an empty document and goes on with its records. The word why not all
    // came back, if so.
    Result<std::string> Recover(const LeftWork& work, CSoundDoc& document);
    // The document was closed.
    void Discard(const CSoundDoc& document);
    // The program ends with the document open; unsaved work stays.
    void Leave(const CSoundDoc& document);

    // Of the first document that is kept no more; empty when all are.
    std::string FaultText() const;
    // For a word that only the journal's thread knows so far.
    void TellFaults();
    // Brings all changes to the disk; false when that takes too long.
    bool Finish();

    // Bytes that all records may take up on the disk together, and what they do.
    std::uint64_t LimitBytes() const { return budget_->limitBytes; }
    std::uint64_t UsedBytes() const { return budget_->usedBytes; }
    // 0 for the usual one: half of what was free at the start.
    void SetLimit(std::uint64_t bytes) { budget_->limitBytes = bytes > 0 ? bytes : usualLimit_; }
    std::uint64_t UsualLimitBytes() const { return usualLimit_; }

  private:
    using Journals = std::vector<std::unique_ptr<DocumentJournal>>;

    JournalHost Host();
    std::filesystem::path NewFolder();
    Journals::iterator Find(const CSoundDoc& document);

    std::filesystem::path folder_;
    Keeping keeping_;
    std::uint64_t usualLimit_;
    std::shared_ptr<DiskBudget> budget_;
    std::shared_ptr<FileClaims> claims_;
    std::shared_ptr<SaveLog> saves_;
    std::unique_ptr<JournalThread> thread_;
    Journals journals_;
    unsigned folderCount_ = 0;
};

// $XDG_STATE_HOME or ~/.local/state, "sonavel/recovery"; nothing where neither is known.
std::optional<std::filesystem::path> StateRecoveryFolder();

}  // namespace sonavel::recovery
