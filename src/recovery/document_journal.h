// Keeps one document's unsaved work: hears of each change and hands its record to the journal's
// thread. The folder comes with the first change and goes when the document is saved or closed.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "document/sound_doc.h"
#include "recovery/file_claims.h"
#include "recovery/journal_thread.h"
#include "recovery/save_log.h"

namespace sonavel::recovery {

// A journal that was read back into a document, to go on with.
struct ReplayedJournal {
    std::shared_ptr<JournalFile> file;
    std::uint32_t undoable = 0;  // steps that the records hold behind the base
    std::uint32_t redoable = 0;
};

struct JournalHost {
    JournalThread& thread;
    std::shared_ptr<DiskBudget> budget;
    // A new folder's path each time.
    std::function<std::filesystem::path()> newFolder;
    std::shared_ptr<FileClaims> claims;
    std::shared_ptr<SaveLog> saves;
};

// Of a change: few as a copy, many still to be copied.
struct SamplesToKeep {
    SoundBuffer copy = {};
    std::shared_ptr<LentSamples> lent = {};
};

class DocumentJournal : public HistoryListener, public DocumentObserver, public RecordingTap {
  public:
    // kHeldOnly: what is there goes with the document, and nothing is added.
    enum class Keeping { kChanges, kHeldOnly };

    // Of a document as it was opened or made. One that is modified already is kept as it is.
    DocumentJournal(CSoundDoc& document, const JournalHost& host);
    DocumentJournal(CSoundDoc& document, const JournalHost& host, ReplayedJournal replayed,
                    Keeping keeping);
    ~DocumentJournal() override;
    DocumentJournal(const DocumentJournal&) = delete;
    DocumentJournal& operator=(const DocumentJournal&) = delete;

    const CSoundDoc& Document() const { return document_; }
    bool HasFolder() const { return file_ != nullptr; }
    // kNone also while there is nothing to keep.
    JournalFault Fault() const { return file_ ? file_->Fault() : JournalFault::kNone; }
    // A take that lies in the folder is in the records, or in nobody's way.
    void EndReplay();
    // Whether another editor shows the document's file, too.
    bool SharesFile() const { return sharesFile_; }
    // The document was closed: its folder goes.
    void Discard();
    // Says in the status bar, once, why nothing is kept any more.
    void TellFault();

    void OnHistoryChange(const HistoryChange& change, const Sound& now) override;
    void OnSaving(const std::filesystem::path& path) override;
    void OnRecorded(std::span<const std::uint8_t> wholeFrames) override;
    void OnTagsChanged(std::span<const SoundTag> tags) override;
    void OnSoundChanged(std::uint32_t) override {}
    void OnTitleOrModifiedChanged() override;

  private:
    bool Keeps() const { return keeping_ == Keeping::kChanges; }
    bool CanBeginWithFile() const;
    NameRecord PresentName() const;
    void Begin(const BaseRecord& base, SamplesToKeep samples);
    bool BeginBefore(const HistoryChange& change, const Sound& now);
    void BeginWith(const Sound& now);
    void Restart(const Sound& now);
    bool CanRestart(const Sound& now) const;
    void NoteChange(const HistoryChange& change, const Sound& now);
    void NoteStep(const HistoryChange& change, const Sound& now);
    void NoteName();
    void Listen();
    void ClaimFile();
    void RemoveTake();
    void Append(const JournalRecord& record, SamplesToKeep samples = {});

    CSoundDoc& document_;
    JournalHost host_;
    Keeping keeping_ = Keeping::kChanges;
    std::shared_ptr<JournalFile> file_;
    bool faultTold_ = false;
    int restartsForRoom_ = 0;
    std::uint32_t undoable_ = 0;
    std::uint32_t redoable_ = 0;
    std::filesystem::path claimed_;
    bool sharesFile_ = false;
    bool hasTake_ = false;
    NameRecord name_;  // as it was noted last
};

}  // namespace sonavel::recovery
