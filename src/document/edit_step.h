// What the edit operations share: bringing a selection within the sound, and refusing to work.
#pragma once

#include <string_view>

#include "document/clip_record.h"
#include "document/edit_selection.h"
#include "document/sound_doc.h"

namespace sonavel::edit {

// Every frame at most the sound's count, the end not before the start.
EditSelection ClampedTo(const Sound& sound, EditSelection at);

// Nothing done, for this reason.
EditResult NothingDone(CSoundDoc& document, const EditSelection& at, std::string_view reason);
// Likewise, for the reason that the document has noted.
EditResult NotBegun(const EditSelection& at);
// Commits the edit.
EditResult Done(SoundEdit& edit, const EditSelection& after, std::uint32_t firstChangedFrame);

// Why the clip cannot go into the sound; empty when it can.
std::string_view ReasonAgainst(const Sound& sound, const ClipRecord& clip);

}  // namespace sonavel::edit
