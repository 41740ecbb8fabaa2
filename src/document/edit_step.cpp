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

EditResult NotBegun(const EditSelection& at) {
    return {.selection = at};
}

EditResult NothingDone(CSoundDoc& document, const EditSelection& at, std::string_view reason) {
    document.SetLastError(reason);
    return NotBegun(at);
}

EditResult Done(SoundEdit& edit, const EditSelection& after, std::uint32_t firstChangedFrame) {
    edit.Commit(firstChangedFrame);
    return {.done = true, .selection = after, .firstChangedFrame = firstChangedFrame};
}

std::string_view ReasonAgainst(const Sound& sound, const ClipRecord& clip) {
    if (!clip.present || !clip.HasData()) return "There is no sound on the clipboard.";
    const bool fits =
        clip.GetChannels() == sound.GetChannels() && clip.GetBits() == sound.GetBits();
    return fits ? "" : "The clip has another format than the sound.";
}

}  // namespace sonavel::edit
