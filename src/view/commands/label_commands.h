// Markers that are found or read instead of set one by one: at pauses, and from text files. What
// changes markers is one edit with an undo step.
#pragma once

#include <cstdint>
#include <filesystem>

#include "platform/outcome.h"
#include "sound/marker_list.h"
#include "sound/pauses.h"
#include "view/sound_view.h"

namespace sonavel {

enum class PauseMarks : std::uint8_t {
    kMarkersAtPauses,  // in the middle of each: "Pause 1", "Pause 2" …
    kRegionsOfSound,   // each sound between pauses: "Sound 1", "Sound 2" …
};

// The sound's markers and those that would be added.
MarkerList WithPausesMarked(const Sound& sound, FrameRange range, const PauseRule& rule,
                            PauseMarks marks);
// In the selection, or in the whole sound without one.
Outcome MarkPauses(CSoundView& view, const PauseRule& rule, PauseMarks marks);

// By extension, see exchange/label_files.h. Import adds what is not there yet with the same place,
// length and name; what lies behind the end of the sound is left out with a message.
Outcome ImportMarkers(CSoundView& view, const std::filesystem::path& path);
Outcome ExportMarkers(CSoundView& view, const std::filesystem::path& path);

}  // namespace sonavel
