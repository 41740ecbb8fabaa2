// Edits that keep, or make room for, a range of a document's sound. As the edit operations do, each
// stores its undo step, moves the markers and says where selection and cursor are left.
#pragma once

#include <cstdint>
#include <span>

#include "document/edit_selection.h"
#include "document/sound_doc.h"
#include "sound/frame_range.h"

namespace sonavel::edit {

// Removes what lies outside the selection, which has to be there; the cursor moves to the start.
Result<EditSelection> Crop(CSoundDoc& document, const EditSelection& at);

// Puts that many frames of silence, at least one, at the cursor, which moves behind them, or in
// place of the selection, which then covers them.
Result<EditSelection> InsertSilence(CSoundDoc& document, const EditSelection& at,
                                    std::uint32_t frames);

// Removes several ranges as one edit: in the order of their places, none empty, none overlapping
// another, all inside the sound, and not the whole of it. Markers inside go to where their range
// was, regions lose what is removed of them; selection and cursor stay with what they stood at.
Result<EditSelection> RemoveRanges(CSoundDoc& document, const EditSelection& at,
                                   std::span<const FrameRange> ranges);

}  // namespace sonavel::edit
