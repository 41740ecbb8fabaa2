// The undo history of one document: what each edit replaced in its sound. A step stands for the
// complete sound of before; what it shares with its neighbours is held once, in the document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "document/stored_record.h"
#include "platform/outcome.h"
#include "sound/sound.h"

namespace sonavel {

// How a step gives its sound back. Every step that edits make is of kind 2.
inline constexpr int kCopyingStepKind = 2;

struct UndoStep {
    std::string name;
    // Of the edit that followed the step's state, and of those without a step behind it, oldest
    // first. While the document shows the step's state or one before it, each keeps what its edit
    // made, otherwise what the edit replaced. None for a stored present.
    std::vector<StoredRecord> records = {};
    bool canUndo = true;
    int kind = kCopyingStepKind;

    // The edit that followed left everything but the markers as it was.
    bool HoldsMarkersAlone() const {
        return records.size() == 1 && records.front().Record().reach == EditReach::kMarkers;
    }
};
// A step of one record.
UndoStep MakeUndoStep(std::string_view name, StoredRecord record);

// With the states S0 (before the first edit) to Sn (the present), step i stands for Si, bears the
// name of the edit that followed it, and keeps the record that leads there from Si+1. The first
// Undo of a run appends the present as a step of its own; while the run lasts, each Undo and Redo
// exchanges a record with the document's sound. Redo up to the present takes that last step off
// again and ends the run. The current position is the step that the next Undo applies.
class UndoHistory {
  public:
    static constexpr std::size_t kCapacity = 1000;  // steps, a stored present among them

    // `budgetBytes` of samples are kept in memory, those of the oldest steps beyond it in a file in
    // the folder; where it takes none, the oldest steps are given up, never what can be redone nor
    // the last edit.
    struct Limits {
        std::uint64_t budgetBytes = UINT64_MAX;
        std::filesystem::path folder = {};
        ProgressFactory* progress = nullptr;  // of what goes to the file and comes from it
    };
    void SetLimits(const Limits& limits);
    // How many steps were given up for want of room since this was last asked.
    std::size_t TakeGivenUpCount() { return std::exchange(givenUp_, 0); }

    // Copies what the record needs from the sound, into memory or, where that cannot be had or is
    // beyond the budget, into the file. False when neither has room.
    bool Keep(StoredRecord& record, const Sound& before);
    // Whether it was the person who ended the last of what goes to the file and comes from it.
    bool WasCancelled() const { return file_ && file_->WasCancelled(); }
    // Whether a step stands for samples that this edit, which stores no step, is about to replace
    // and that no record keeps yet.
    bool NeedsSamplesOf(const EditRecord& planned) const;

    // Discards what could be redone and appends the step, which becomes the current one. At
    // capacity the oldest step goes.
    void Add(UndoStep step);
    // An edit that stores no step has come about: discards what could be redone. The steps before
    // it stay exact by its record, which belongs to the last step that stands for samples.
    void Amend(StoredRecord record);
    // Discards what could be redone, as every edit does.
    void DiscardRedo();
    void Clear();

    // Exchanges the sound for the state before, and after. Fails, with nothing changed, when there
    // is none or the memory for it cannot be had.
    Outcome Undo(Sound& sound);
    Outcome Redo(Sound& sound);
    bool CanUndo() const;
    bool CanRedo() const;

    std::size_t Count() const { return steps_.size(); }
    // Bytes of samples that the steps keep in memory, and in the file.
    std::uint64_t MemoryBytes() const;
    std::uint64_t SpilledBytes() const;
    const UndoStep& StepAt(std::size_t index) const { return steps_[index]; }
    // Nothing when no step is left to undo.
    std::optional<std::size_t> CurrentPosition() const;

    // The menu is updated in two passes, which spell "can't" differently; nothing else differs.
    enum class MenuPass { kFirst, kSecond };
    std::string UndoMenuText(MenuPass pass) const;
    std::string RedoMenuText() const;

  private:
    enum class Way { kBack, kForth };

    // Where the document's state stands: behind this many steps.
    std::size_t Place() const { return shown_.value_or(steps_.size()); }
    void Append(UndoStep step);
    const StoredRecord* LastOfSamples() const;
    StoredRecord* FarthestInMemory(const UndoStep* spared = nullptr);
    Outcome Cross(UndoStep& step, Way way, Sound& sound);
    void KeepWithinBudget();
    bool GiveUpOldest();

    std::deque<UndoStep> steps_;
    // During a run of undos: the step whose state the document shows.
    std::optional<std::size_t> shown_;
    Limits limits_;
    std::shared_ptr<SpillFile> file_;
    std::size_t givenUp_ = 0;
};

}  // namespace sonavel
