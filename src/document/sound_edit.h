// One edit of a document's sound, from before its first change until it has come about.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "document/stored_record.h"

namespace sonavel {

class CSoundDoc;

// Counts for as long as it lives, or until End(), as a change of a sound that is under way.
class ChangeUnderWay {
  public:
    explicit ChangeUnderWay(int& count) : count_(&count) { ++count; }
    ~ChangeUnderWay() { End(); }
    ChangeUnderWay(ChangeUnderWay&& other) noexcept
        : count_(std::exchange(other.count_, nullptr)) {}
    ChangeUnderWay& operator=(ChangeUnderWay&& other) noexcept {
        std::swap(count_, other.count_);
        return *this;
    }
    void End() {
        if (int* count = std::exchange(count_, nullptr)) --*count;
    }

  private:
    int* count_;
};

// CSoundDoc::BeginEdit() and its like make it. An edit that is dropped without Commit() has not
// come about: its maker has left the sound as it was, and so the history, what can be redone and
// the modified mark are left.
class SoundEdit {
  public:
    enum class Storing {
        kStep,           // becomes an undo step
        kNoStep,         // keeps the steps before it exact
        kEndsTheHistory  // no step, and those before it could not be taken back exactly
    };
    // What was before is kept in the record as far as the history needs it.
    SoundEdit(CSoundDoc& document, Storing storing, std::string stepName, StoredRecord record);

    // Puts another sound in the place of the document's, without taking memory; of an edit that
    // replaces everything the samples move into the record. Elsewhere than planned both are alike.
    void ReplaceSound(Sound&& result);
    // Of an edit that has changed nothing yet: it is about to replace this, and markers that
    // changed since it began belong to steps of their own.
    void PlanAnew(const EditPlan& plan);
    // Gives the sound back as it was before the edit, as far as its samples were kept.
    void TakeBack();
    // The sound has changed from this frame on, within what was planned: stores the step, discards
    // what could be redone, marks the sound modified and tells the document's observers. Once.
    void Commit(std::uint32_t firstChangedFrame);
    // Likewise, of an edit that is part of something that has to come about as a whole: without
    // memory for the step the document forgets its history.
    void CommitSurely(std::uint32_t firstChangedFrame);

  private:
    CSoundDoc* document_;
    ChangeUnderWay underWay_;
    Storing storing_;
    std::string stepName_;
    StoredRecord stored_;
    std::uint64_t bytesBefore_;
};

}  // namespace sonavel
