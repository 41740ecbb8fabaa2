#include "document/range_operations.h"

#include <utility>

#include "document/edit_step.h"
#include "platform/failure_texts.h"
#include "sound/sample_types.h"

namespace sonavel::edit {
namespace {

// False when the memory cannot be had, or the sound would become too long.
bool MakeSilence(const Sound& sound, std::uint32_t frames, SoundBuffer& silence) {
    const std::uint64_t bytes = std::uint64_t{frames} * sound.GetBlockAlign();
    if (bytes > MostSoundBytes(sound.GetFormat()) || !silence.AllocBuffer(bytes)) return false;
    FillWithSilence(silence.Bytes(), sound.GetBits());
    return true;
}

}  // namespace

Result<EditSelection> Crop(CSoundDoc& document, const EditSelection& requested) {
    CWave& sound = document.Sound();
    const EditSelection at = ClampedTo(sound, requested);
    if (at.IsEmpty()) return Failed("Nothing is selected.");
    Result<SoundEdit> edit = document.BeginEdit("Source Sample");
    if (!edit) return edit.Ended();
    // Behind first, so that the places in front of it stay what they are.
    const std::uint32_t frames = sound.GetFrameCount();
    if (at.endFrame < frames && !sound.RemoveFrames(at.endFrame, frames))
        return Failed(failure::kMemory);
    if (at.startFrame > 0 && !sound.RemoveFrames(0, at.startFrame)) return Failed(failure::kMemory);
    edit->Commit(0);
    return EditSelection{};
}

Result<EditSelection> InsertSilence(CSoundDoc& document, const EditSelection& requested,
                                    std::uint32_t frames) {
    CWave& sound = document.Sound();
    EditSelection at = ClampedTo(sound, requested);
    if (frames == 0) return Failed("The silence is to be at least one frame long.");
    SoundBuffer silence;
    if (!MakeSilence(sound, frames, silence)) return Failed(failure::kMemory);
    const std::uint32_t start = at.IsEmpty() ? at.cursorFrame : at.startFrame;
    const std::uint32_t behind = at.IsEmpty() ? at.cursorFrame : at.endFrame;
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample", ReplacesFrames(start, behind));
    if (!edit) return edit.Ended();
    if (!sound.InsertFrames(behind, std::as_const(silence).Bytes()) ||
        (!at.IsEmpty() && !sound.RemoveFrames(at.startFrame, at.endFrame)))
        return Failed(failure::kMemory);
    edit->Commit(start);
    if (at.IsEmpty()) return EditSelection{start + frames, start + frames, start + frames};
    return EditSelection{start, start + frames, start};
}

}  // namespace sonavel::edit
