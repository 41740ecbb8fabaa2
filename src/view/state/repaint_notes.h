// What the parts of a view note for its window: areas and columns to be painted anew.
#pragma once

#include <cstdint>

#include "view/sound_view_observer.h"
#include "view/state/pixel_map.h"

namespace sonavel {

class RepaintNotes {
  public:
    // Null while no window shows the view: what is noted then goes nowhere.
    void SetWindow(SoundViewObserver* window) { window_ = window ? window : &nobody_; }
    SoundViewObserver& Window() const { return *window_; }

    void Area(ViewArea area) const { window_->Invalidate(area); }
    // The waveform, the horizontal ruler and the marker strip.
    void TimeAreas() const;
    // The columns of these frames and the marks that the ruler has for them.
    void Frames(const ViewGeometry& geometry, const PixelMap& map, std::uint32_t a,
                std::uint32_t b) const;

  private:
    SoundViewObserver nobody_;
    SoundViewObserver* window_ = &nobody_;
};

// Shows the window's wait cursor as long as it lives.
class WaitCursorScope {
  public:
    explicit WaitCursorScope(const RepaintNotes& notes) : window_(notes.Window()) {
        window_.SetWaitCursor(SoundViewObserver::WaitCursor::kShow);
    }
    ~WaitCursorScope() { window_.SetWaitCursor(SoundViewObserver::WaitCursor::kHide); }
    WaitCursorScope(const WaitCursorScope&) = delete;
    WaitCursorScope& operator=(const WaitCursorScope&) = delete;

  private:
    SoundViewObserver& window_;
};

}  // namespace sonavel
