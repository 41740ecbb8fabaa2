// What a view asks of its window and of the program around it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/outcome.h"
#include "view/state/display_settings.h"
#include "view/state/spectrogram_settings.h"
#include "view/state/view_geometry.h"
#include "view/state/view_settings.h"

namespace sonavel {

struct ClipRecord;

enum class ViewArea { kWaveform, kHorizontalRuler, kVerticalRuler, kMarkerStrip, kAll };

// A marker's name is to be typed at its flag.
struct NameWanted {
    std::uint32_t id = 0;  // 0 for a new marker
    std::uint32_t frame = 0;
    std::string name;  // the present one, UTF-8
};

// The window of a view. As it stands here it is told everything and does nothing.
class SoundViewObserver {
  public:
    virtual ~SoundViewObserver() = default;

    virtual void Invalidate(ViewArea) {}
    // A part of the client area, such as the strip of the cursor.
    virtual void InvalidateRectangle(const Rectangle&) {}
    // A scroll state changed; the zoom pane of the status bar hangs on it too.
    virtual void OnScrollChanged() {}
    // Selection or cursor changed: the panes that show them, and the enabled commands.
    virtual void OnSelectionChanged() {}
    // The text of the state pane, such as "(Playing) ".
    virtual void OnStatusText(std::string_view) {}
    enum class WaitCursor { kShow, kHide };
    virtual void SetWaitCursor(WaitCursor) {}
    // The colours were loaded; the meter takes slots 0 to 2 and the channel count.
    virtual void OnColoursChanged() {}
    virtual void OnNameWanted(const NameWanted&) {}
    // The player started, paused or stopped.
    virtual void OnTransportChanged() {}
    // The strip with the whole sound is to be shown, or hidden.
    virtual void OnOverviewChanged() {}
};

// What a view asks of the program around it.
class ViewHost {
  public:
    virtual ~ViewHost() = default;

    // The clip last read from the clipboard, one for the whole program.
    virtual ClipRecord& Clip() = 0;
    // Opens a document that holds the clip.
    virtual Outcome NewDocumentFromClip() = 0;
    // One view was told what all of them have to show.
    virtual void OnChosen(const ViewChoice& choice) = 0;
};

}  // namespace sonavel
