// What the edit commands do to a document's sound. Each operation stores its undo step, changes the
// samples, moves the markers, marks the sound modified and tells the document's observers from
// which frame on; the caller stores the selection and cursor that come back. Selections are clamped
// to the sound. What fails has left the sound as it was.
#pragma once

#include <cstdint>

#include "document/clip_record.h"
#include "document/edit_selection.h"
#include "document/sound_doc.h"

namespace sonavel::edit {

inline constexpr std::uint32_t kHighestReplicateCount = 1000;

// --- The clipboard

// Puts the frames [startFrame, endFrame) on the clipboard. An empty range does nothing and
// succeeds; it fails when the clipboard cannot be taken.
Outcome CopyRange(CSoundDoc& document, std::uint32_t startFrame, std::uint32_t endFrame);

// The start of every command that pastes or mixes: reads the clipboard into the record and makes
// the clip fit the document's sound, asking first where the formats differ. Unless it is done, the
// command is to do nothing.
Outcome PrepareClip(CSoundDoc& document, ClipRecord& clip);

// --- Removing

// Both need a selection; the cursor moves to its start, and the selection becomes 0..0. Cut changes
// nothing when the clipboard cannot be taken.
Result<EditSelection> Cut(CSoundDoc& document, const EditSelection& at);
Result<EditSelection> Delete(CSoundDoc& document, const EditSelection& at);

// --- Pasting a prepared clip

// Inserts the clip `count` times (1 to kHighestReplicateCount), one behind the other, as one undo
// step: at the cursor, which moves behind them, or in place of the selection, which then covers
// them and has the cursor at its start.
Result<EditSelection> Paste(CSoundDoc& document, const ClipRecord& clip, const EditSelection& at,
                            std::uint32_t count = 1);

// These need a selection, never change the sound's length, and store no undo step. Overwrite writes
// the clip once, cut at the selection's end; block overwrite fills the selection with it; block
// copy writes as many whole copies as fit and shows a message when not even one does.
Result<EditSelection> PasteOverwrite(CSoundDoc& document, const ClipRecord& clip,
                                     const EditSelection& at);
Result<EditSelection> PasteBlockOverwrite(CSoundDoc& document, const ClipRecord& clip,
                                          const EditSelection& at);
Result<EditSelection> PasteBlockCopy(CSoundDoc& document, const ClipRecord& clip,
                                     const EditSelection& at);

// Makes the clip, with its own format, the whole sound. No undo step: the document is a new one.
Outcome ReplaceWithClip(CSoundDoc& document, const ClipRecord& clip);

// --- The format of the whole sound

// Channels and bits as one edit; none where the sound has them already.
Outcome ConvertFormat(CSoundDoc& document, unsigned channels, ChannelChoice choice, unsigned bits);

// --- Mixing a prepared clip

// Gains are factors (1 is 100 percent), clamped to +-1000. With a selection the mix covers it and
// moves the cursor to its start; without one it runs from the cursor over the whole clip, and the
// sound grows where the clip is longer. Mix lets it grow to hold the whole clip with a selection
// too, what lies behind the selection being silence. Results wrap around instead of being clipped.
struct MixGains {
    double clip = 1;
    double sound = 1;
};

// The gains of the first and of the last frame, linear in between.
struct CrossfadeGains {
    MixGains start{0, 1};
    MixGains end{1, 0};
};

Result<EditSelection> Mix(CSoundDoc& document, const ClipRecord& clip, const EditSelection& at,
                          const MixGains& gains);
Result<EditSelection> CrossfadeMix(CSoundDoc& document, const ClipRecord& clip,
                                   const EditSelection& at, const CrossfadeGains& gains);

}  // namespace sonavel::edit
