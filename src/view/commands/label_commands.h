// Markers that are found or read instead of set one by one: at pauses, and from text files. What
// changes markers is one edit with an undo step.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "platform/outcome.h"
#include "sound/frame_range.h"
#include "sound/marker_list.h"
#include "sound/pauses.h"
#include "view/sound_view.h"

namespace sonavel {

enum class PauseMarks : std::uint8_t {
    kMarkersAtPauses,  // in the middle of each: "Pause 1", "Pause 2" …
    kRegionsOfSound,   // each sound between pauses: "Sound 1", "Sound 2" …
};

// What goes of the pauses of a range that last longer than `kept` frames: so much in the middle of
// each that this length stays.
struct PausesGoing {
    std::vector<FrameRange> ranges;  // in the order of their places
    std::uint32_t frames = 0;        // in all of them
};
// In the selection, or in the whole sound without one. Throws std::bad_alloc.
PausesGoing FindPausesGoing(const CSoundView& view, const PauseRule& rule, std::uint32_t kept);

// Shows marks before they are wanted: as one edit of the markers, which is taken back unless it is
// kept.
class PauseProposal {
  public:
    explicit PauseProposal(CSoundView& view);
    ~PauseProposal();
    PauseProposal(const PauseProposal&) = delete;
    PauseProposal& operator=(const PauseProposal&) = delete;

    // Instead of what was shown before; gives how many marks there are, fails when memory is short.
    Result<std::size_t> Show(const PauseRule& rule, PauseMarks marks);
    // Shows what would go as regions, which are not meant to be kept.
    Result<PausesGoing> ShowGoing(const PauseRule& rule, std::uint32_t kept);
    void Keep();

  private:
    void Put(MarkerList markers);

    CSoundView& view_;
    MarkerList before_;
    bool isKept_ = false;
};

// In the selection, or in the whole sound without one.
Outcome MarkPauses(CSoundView& view, const PauseRule& rule, PauseMarks marks);

// One edit; fails where no pause is as long.
Outcome RemovePauses(CSoundView& view, const PauseRule& rule, std::uint32_t kept);

// By extension, see exchange/label_files.h. Import adds what is not there yet with the same place,
// length and name; what lies behind the end of the sound is left out with a message.
Outcome ImportMarkers(CSoundView& view, const std::filesystem::path& path);
Outcome ExportMarkers(CSoundView& view, const std::filesystem::path& path);

}  // namespace sonavel
