// What an answer of the export dialog means for a document: what is written, how large it gets and
// what it loses.
#pragma once

#include <vector>

#include "app/exchange/export_dialog.h"
#include "document/sound_doc.h"
#include "sound/frame_range.h"

namespace sonavel {

// Those that the kind of file holds, the best first; none for a lossy kind.
std::vector<EncodedDepth> DepthsOf(SoundFileKind kind);

ExportNotice NoticeOfExport(const CSoundDoc& document, FrameRange range,
                            const ExportAnswer& answer);

// Writes the frames of the range, which lie in the sound, into a new file; the document stays as it
// is. Fails with a sentence for the person.
Outcome WriteExport(CSoundDoc& document, FrameRange range, const ExportAnswer& answer);

}  // namespace sonavel
