// The view's edit commands: what each does to the sound, the clipboard, the selection, the cursor
// and the zoom.
#pragma once

#include "view/sound_view.h"

namespace sonavel {

// Each returns false when it did nothing: refused, cancelled or failed; the view's last error says
// why.
bool CutSelection(CSoundView& view);
bool CopySelection(CSoundView& view);
bool DeleteSelection(CSoundView& view);
bool Paste(CSoundView& view);
bool PasteReplicate(CSoundView& view);
bool PasteOverwrite(CSoundView& view);
bool PasteBlockOverwrite(CSoundView& view);
bool PasteBlockCopy(CSoundView& view);
bool PasteNew(CSoundView& view);
bool MixClipboard(CSoundView& view);
bool CrossfadeMixClipboard(CSoundView& view);
bool ShowClipboardContents(CSoundView& view);

bool UndoEdit(CSoundView& view);
bool RedoEdit(CSoundView& view);

}  // namespace sonavel
