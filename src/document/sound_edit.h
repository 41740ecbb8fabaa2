// One edit of a document's sound, from before its first change until it has come about.
#pragma once

#include <cstdint>
#include <optional>

#include "document/undo_history.h"

namespace sonavel {

class CSoundDoc;

// CSoundDoc::BeginEdit() and its like make it. An edit that is dropped without Commit() has not
// come about: its maker has left the sound as it was, and so the history, what can be redone and
// the modified mark are left.
class SoundEdit {
  public:
    // Without a step where undo is off and for edits that store none.
    SoundEdit(CSoundDoc& document, std::optional<UndoStep> step);

    // The sound has changed from this frame on: stores the step, discards what could be redone,
    // marks the sound modified and tells the document's observers. Once.
    void Commit(std::uint32_t firstChangedFrame);
    // Markers that changed since the edit began belong to steps of their own; this one keeps those
    // that the sound has now.
    void TakeMarkers();

  private:
    CSoundDoc* document_;
    std::optional<UndoStep> step_;
};

}  // namespace sonavel
