// The view's edit commands: what each does to the sound, the clipboard, the selection, the cursor
// and the zoom.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "view/sound_view.h"

namespace sonavel {

// What is not done has changed nothing.
Outcome CutSelection(CSoundView& view);
Outcome CopySelection(CSoundView& view);
Outcome DeleteSelection(CSoundView& view);
Outcome Paste(CSoundView& view);
Outcome PasteOverwrite(CSoundView& view);
Outcome PasteBlockOverwrite(CSoundView& view);
Outcome PasteBlockCopy(CSoundView& view);
Outcome PasteNew(CSoundView& view);

Outcome CropToSelection(CSoundView& view);

// As edit::RemoveRanges().
Outcome RemoveRanges(CSoundView& view, std::span<const FrameRange> ranges);

Outcome UndoEdit(CSoundView& view);
Outcome RedoEdit(CSoundView& view);

// --- Those with a dialog

// To be called before the dialog: reads the clipboard and makes the clip fit the sound, asking
// first where the formats differ.
Outcome PrepareClip(CSoundView& view);
// Likewise, with what the dialogs of the mixes show.
Result<MixQuestion> PrepareMix(CSoundView& view);
// What OK does, with the clip that was prepared.
Outcome PasteReplicate(CSoundView& view, int count);
Outcome MixClipboard(CSoundView& view, const MixChoice& choice);
Outcome CrossfadeMixClipboard(CSoundView& view, const CrossfadeChoice& choice);

// At the cursor, or in place of the selection; frames.
Outcome InsertSilence(CSoundView& view, std::uint32_t frames);

// Reads the clipboard.
Result<ClipboardContents> ReadClipboardContents(CSoundView& view);
// Plays the clip that was read, by itself.
std::unique_ptr<ClipboardPreview> MakeClipPlayer(CSoundView& view);

}  // namespace sonavel
