// Where two states of a sound begin to differ.
#pragma once

#include <cstdint>

#include "document/undo_history.h"
#include "sound/sound.h"

namespace sonavel {

// Where the first marker that differs stands, after the change unless it was removed; 0 for equal
// lists.
std::uint32_t FirstDifferentFrame(const MarkerList& before, const MarkerList& after);

// Where the sound begins to differ from the state of before that a step's records lead back to, or
// the length of the shorter one where one begins with the other; 0 for different formats. What lies
// on the disk or was changed by several edits may differ no earlier than at the frame returned.
std::uint32_t FirstDifferentFrame(const UndoStep& before, const Sound& after);

}  // namespace sonavel
