#include "document/undo_history.h"

#include <algorithm>
#include <utility>

namespace sonavel {

void UndoHistory::Add(UndoStep step) {
    DiscardRedo();
    if (steps_.size() >= kCapacity) steps_.pop_front();
    steps_.push_back(std::move(step));
}

void UndoHistory::DiscardRedo() {
    if (!shown_) return;
    steps_.resize(*shown_);
    shown_.reset();
}

void UndoHistory::Clear() {
    steps_.clear();
    shown_.reset();
}

bool UndoHistory::Undo(Sound& sound) {
    if (!CanUndo()) return false;
    if (!shown_) {
        Add({.name = "Copy Sample", .sound = {}});
        shown_ = steps_.size() - 1;
    }
    ExchangeWith(sound, *shown_ - 1);
    return true;
}

bool UndoHistory::Redo(Sound& sound) {
    if (!CanRedo()) return false;
    ExchangeWith(sound, *shown_ + 1);
    if (*shown_ == steps_.size() - 1) DiscardRedo();
    return true;
}

void UndoHistory::ExchangeWith(Sound& sound, std::size_t target) {
    const UndoStep& crossed = steps_[std::min(*shown_, target)];
    Sound& left = steps_[*shown_].sound;
    Sound& entered = steps_[target].sound;
    if (crossed.holds == UndoStep::Holds::kMarkers)
        left.Markers() = std::exchange(sound.Markers(), std::move(entered.Markers()));
    else
        left = std::exchange(sound, std::move(entered));
    shown_ = target;
}

bool UndoHistory::CanUndo() const {
    const std::optional<std::size_t> current = CurrentPosition();
    return current && steps_[*current].canUndo;
}

bool UndoHistory::CanRedo() const {
    return shown_.has_value();
}

std::optional<std::size_t> UndoHistory::CurrentPosition() const {
    const std::size_t next = shown_.value_or(steps_.size());
    if (next == 0) return std::nullopt;
    return next - 1;
}

std::uint64_t UndoHistory::MemoryBytes() const {
    std::uint64_t bytes = 0;
    for (const UndoStep& step : steps_) bytes += step.sound.GetDataSize();
    return bytes;
}

std::string UndoHistory::UndoMenuText(MenuPass pass) const {
    const std::optional<std::size_t> current = CurrentPosition();
    if (!current) return "&Undo";
    const UndoStep& step = steps_[*current];
    // Intended: each pass has a spelling of its own, by which a menu shows which one filled it.
    const char* cannot = pass == MenuPass::kFirst ? "Cant't &Undo" : "Can't &Undo";
    return (step.canUndo ? "&Undo" : cannot) + step.name;
}

std::string UndoHistory::RedoMenuText() const {
    // The step behind the current one bears the name of the edit that Redo brings back.
    return shown_ ? "&Redo" + steps_[*shown_].name : "&Redo";
}

}  // namespace sonavel
