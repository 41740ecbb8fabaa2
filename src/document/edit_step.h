// What the edit operations share: bringing a selection within the sound, and what a clip
// has to be like.
#pragma once

#include "document/clip_record.h"
#include "document/edit_selection.h"
#include "document/sound_doc.h"

namespace sonavel::edit {

// Every frame at most the sound's count, the end not before the start.
EditSelection ClampedTo(const Sound& sound, EditSelection at);

// Fails for a clip that cannot go into the sound as it is.
Outcome CheckClip(const Sound& sound, const ClipRecord& clip);

}  // namespace sonavel::edit
