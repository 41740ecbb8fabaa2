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
    void Keep();

  private:
    CSoundView& view_;
    MarkerList before_;
    bool isKept_ = false;
};

// In the selection, or in the whole sound without one.
Outcome MarkPauses(CSoundView& view, const PauseRule& rule, PauseMarks marks);

// By extension, see exchange/label_files.h. Import adds what is not there yet with the same place,
// length and name; what lies behind the end of the sound is left out with a message.
Outcome ImportMarkers(CSoundView& view, const std::filesystem::path& path);
Outcome ExportMarkers(CSoundView& view, const std::filesystem::path& path);

}  // namespace sonavel
