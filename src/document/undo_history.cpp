#include "document/undo_history.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace sonavel {
namespace {

// Fails with all records as they were; whatever lies in the file is read before anything changes.
Outcome BringIntoMemory(UndoStep& step) {
    for (StoredRecord& stored : step.records)
        if (Outcome read = stored.MoveIntoMemory(); !read) return read;
    return Done();
}

// Exchanges records in their order, or none of them.
template <class Iterator>
Outcome ExchangeAll(Iterator first, Iterator last, Sound& sound) {
    for (Iterator at = first; at != last; ++at) {
        Outcome done = Exchange(at->Record(), sound);
        if (done) continue;
        // The way back needs no more memory than was held a moment ago.
        while (at != first)
            if (!Exchange((--at)->Record(), sound)) break;
        return done;
    }
    return Done();
}

// Whether taking `older` back takes the newer edit back with it: all that it replaces was made by
// the older one.
bool Covers(const EditRecord& older, const EditRecord& newer) {
    if (older.reach == EditReach::kEverything) return true;
    return older.reach == EditReach::kFrames && newer.reach == EditReach::kFrames &&
           newer.startByte >= older.startByte &&
           newer.startByte + newer.bytesKept <= older.startByte + older.bytesThere;
}

bool HoldsSamples(const UndoStep& step) {
    return !step.records.empty() && !step.HoldsMarkersAlone();
}

}  // namespace

UndoStep MakeUndoStep(std::string_view name, StoredRecord record) {
    UndoStep step{.name = std::string(name)};
    step.records.push_back(std::move(record));
    return step;
}

// --- What is kept where

void UndoHistory::SetLimits(const Limits& limits) {
    if (!file_ || limits.folder != limits_.folder)
        file_ = std::make_shared<SpillFile>(limits.folder, limits.progress);
    limits_ = limits;
    KeepWithinBudget();
}

bool UndoHistory::Keep(StoredRecord& record, const Sound& before) {
    const bool withinBudget = record.Record().bytesKept <= limits_.budgetBytes;
    if (withinBudget && record.TakeIntoMemory(before)) return true;
    if (record.TakeIntoFile(before, file_)) return true;
    return !withinBudget && !WasCancelled() && record.TakeIntoMemory(before);
}

void UndoHistory::KeepWithinBudget() {
    std::uint64_t bytes = MemoryBytes();
    while (bytes > limits_.budgetBytes) {
        StoredRecord* farthest = FarthestInMemory();
        if (!farthest) return;
        const std::uint64_t freed = farthest->MemoryBytes();
        if (farthest->MoveIntoFile(file_)) {
            bytes -= freed;
            continue;
        }
        // What stays beyond the budget moves behind the next edit.
        if (WasCancelled() || !GiveUpOldest()) return;
        bytes = MemoryBytes();
    }
}

// The oldest, or in a run of undos what takes most presses to reach.
StoredRecord* UndoHistory::FarthestInMemory(const UndoStep* spared) {
    const auto holds = [](const StoredRecord& stored) { return stored.MemoryBytes() > 0; };
    const std::size_t place = Place();
    std::size_t farthest = 0;
    StoredRecord* found = nullptr;
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        const auto record = std::ranges::find_if(steps_[i].records, holds);
        const std::size_t distance = i < place ? place - i : i - place + 1;
        if (record == steps_[i].records.end() || distance <= farthest || &steps_[i] == spared)
            continue;
        farthest = distance;
        found = &*record;
    }
    return found;
}

bool UndoHistory::GiveUpOldest() {
    if (Place() <= 1) return false;
    steps_.pop_front();
    if (shown_) --*shown_;
    ++givenUp_;
    return true;
}

std::uint64_t UndoHistory::MemoryBytes() const {
    std::uint64_t bytes = 0;
    for (const UndoStep& step : steps_)
        for (const StoredRecord& stored : step.records) bytes += stored.MemoryBytes();
    return bytes;
}

std::uint64_t UndoHistory::SpilledBytes() const {
    std::uint64_t bytes = 0;
    for (const UndoStep& step : steps_)
        for (const StoredRecord& stored : step.records) bytes += stored.SpilledBytes();
    return bytes;
}

// --- Edits

void UndoHistory::Append(UndoStep step) {
    if (steps_.size() >= kCapacity) steps_.pop_front();
    steps_.push_back(std::move(step));
}

void UndoHistory::Add(UndoStep step) {
    DiscardRedo();
    Append(std::move(step));
    KeepWithinBudget();
}

const StoredRecord* UndoHistory::LastOfSamples() const {
    for (std::size_t i = Place(); i-- > 0;)
        if (HoldsSamples(steps_[i])) return &steps_[i].records.back();
    return nullptr;
}

bool UndoHistory::NeedsSamplesOf(const EditRecord& planned) const {
    const StoredRecord* last = LastOfSamples();
    return last && !Covers(last->Record(), planned);
}

void UndoHistory::Amend(StoredRecord record) {
    DiscardRedo();
    const auto step = std::find_if(steps_.rbegin(), steps_.rend(), HoldsSamples);
    if (step == steps_.rend() || record.Record().reach == EditReach::kMarkers) return;
    EditRecord& last = step->records.back().Record();
    const EditRecord& edit = record.Record();
    if (Covers(last, edit))
        last.bytesThere = last.bytesThere - edit.bytesKept + edit.bytesThere;
    else
        step->records.push_back(std::move(record));
    KeepWithinBudget();
}

void UndoHistory::DiscardRedo() {
    if (!shown_) return;
    steps_.erase(steps_.begin() + static_cast<std::ptrdiff_t>(*shown_), steps_.end());
    shown_.reset();
}

void UndoHistory::Clear() {
    steps_.clear();
    shown_.reset();
}

// --- Undo and Redo

// Where the memory cannot be had, the other steps make room as far as the disk takes them.
Outcome UndoHistory::Cross(UndoStep& step, Way way, Sound& sound) {
    while (true) {
        Outcome done = BringIntoMemory(step);
        if (done)
            done = way == Way::kForth
                       ? ExchangeAll(step.records.begin(), step.records.end(), sound)
                       : ExchangeAll(step.records.rbegin(), step.records.rend(), sound);
        if (done || done.IsCancelled()) return done;
        StoredRecord* other = FarthestInMemory(&step);
        if (!other || !other->MoveIntoFile(file_)) return done;
    }
}

Outcome UndoHistory::Undo(Sound& sound) {
    if (!CanUndo()) return Failed("There is nothing to undo.");
    if (Outcome crossed = Cross(steps_[Place() - 1], Way::kBack, sound); !crossed) return crossed;
    if (!shown_) {
        Append({.name = "Copy Sample"});
        shown_ = steps_.size() - 1;
    }
    --*shown_;
    KeepWithinBudget();
    return Done();
}

Outcome UndoHistory::Redo(Sound& sound) {
    if (!CanRedo()) return Failed("There is nothing to redo.");
    if (Outcome crossed = Cross(steps_[*shown_], Way::kForth, sound); !crossed) return crossed;
    if (++*shown_ == steps_.size() - 1) DiscardRedo();
    KeepWithinBudget();
    return Done();
}

bool UndoHistory::CanUndo() const {
    const std::optional<std::size_t> current = CurrentPosition();
    return current && steps_[*current].canUndo;
}

bool UndoHistory::CanRedo() const {
    return shown_.has_value();
}

std::optional<std::size_t> UndoHistory::CurrentPosition() const {
    if (Place() == 0) return std::nullopt;
    return Place() - 1;
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
