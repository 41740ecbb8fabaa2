// The undo history of one document: what its sound was before each edit, a complete copy or, where
// an edit changed markers alone, the markers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "sound/sound.h"

namespace sonavel {

// How a step gives its sound back. Every step that edits make is of kind 2.
inline constexpr int kCopyingStepKind = 2;

struct UndoStep {
    enum class Holds { kSound, kMarkers };

    std::string name;
    Sound sound;  // vacant while the document itself holds this state
    bool canUndo = true;
    int kind = kCopyingStepKind;
    // kMarkers: the edit that followed left everything else of the sound as it was.
    Holds holds = Holds::kSound;
};

// With the states S0 (before the first edit) to Sn (the present), step i holds Si and bears the
// name of the edit that followed it. The first Undo of a run appends the present as a step of its
// own; while the run lasts, each Undo and Redo moves sounds between the document and the steps and
// copies nothing. Redo up to the present takes that last step off again and ends the run. The
// current position is the step that the next Undo applies.
class UndoHistory {
  public:
    static constexpr std::size_t kCapacity = 1000;  // steps, a stored present among them

    // Discards what could be redone and appends the step, which becomes the current one. At
    // capacity the oldest step goes.
    void Add(UndoStep step);
    // Discards what could be redone, as every edit does, also one that stores no step.
    void DiscardRedo();
    void Clear();

    // Exchanges the sound for the state before, and after. False, with nothing changed, when there
    // is none.
    bool Undo(Sound& sound);
    bool Redo(Sound& sound);
    bool CanUndo() const;
    bool CanRedo() const;

    std::size_t Count() const { return steps_.size(); }
    // Bytes of the samples that the steps keep, a stored present among them.
    std::uint64_t MemoryBytes() const;
    const UndoStep& StepAt(std::size_t index) const { return steps_[index]; }
    // Nothing when no step is left to undo.
    std::optional<std::size_t> CurrentPosition() const;

    // The menu is updated in two passes, which spell "can't" differently; nothing else differs.
    enum class MenuPass { kFirst, kSecond };
    std::string UndoMenuText(MenuPass pass) const;
    std::string RedoMenuText() const;

  private:
    void ExchangeWith(Sound& sound, std::size_t target);

    std::deque<UndoStep> steps_;
    // During a run of undos: the step whose state the document shows.
    std::optional<std::size_t> shown_;
};

}  // namespace sonavel
