#include "document/edit_step.h"

#include <algorithm>

namespace sonavel::edit {

EditSelection ClampedTo(const Sound& sound, EditSelection at) {
    const std::uint32_t frames = sound.GetFrameCount();
    at.endFrame = std::min(at.endFrame, frames);
    at.startFrame = std::min(at.startFrame, frames);
    at.cursorFrame = std::min(at.cursorFrame, frames);
    return at;
}

Outcome CheckClip(const Sound& sound, const ClipRecord& clip) {
    if (!clip.present || !clip.HasData()) return Failed("There is no sound on the clipboard.");
    const bool fits =
        clip.GetChannels() == sound.GetChannels() && clip.GetBits() == sound.GetBits();
    return DoneIf(fits, "The clip has another format than the sound.");
}

}  // namespace sonavel::edit
