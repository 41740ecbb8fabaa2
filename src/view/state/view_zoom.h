// The zoom and the scrolling of a view: both axes, over the sound and the waveform's size as they
// are just now. What changes is noted for the window.
#pragma once

#include <cstdint>

#include "sound/wave.h"
#include "view/state/pixel_map.h"
#include "view/state/repaint_notes.h"
#include "view/state/selection.h"
#include "view/state/view_geometry.h"
#include "view/state/view_history.h"
#include "view/state/zoom.h"
#include "view/state/zoom_axis.h"

namespace sonavel {

class ViewZoom {
  public:
    // All must outlive it.
    ViewZoom(const CWave& sound, const ViewGeometry& geometry, const SelectionEnds& selection,
             const RepaintNotes& notes)
        : sound_(sound), geometry_(geometry), selection_(selection), notes_(notes) {}

    const ScrollState& Horizontal() const { return horizontal_.Now(); }
    const ScrollState& Vertical() const { return vertical_.Now(); }
    ZoomState State() const { return {Horizontal(), Vertical()}; }
    PixelMap Pixels() const { return {sound_.GetFrameCount(), Horizontal()}; }
    bool IsFrameInSight(std::uint32_t frame) const;

    // The numbers of zoom.h.
    std::int64_t TimeRatio() const { return TimeZoomRatio(State(), Context()); }
    double TimePercent() const { return TimeZoomPercent(State(), Context()); }
    double LevelPercent() const { return LevelZoomPercent(State(), Context()); }

    // --- Scrolling

    void ScrollHorizontally(ScrollStep step) { SetTime(Horizontal().Stepped(step)); }
    void ScrollVertically(ScrollStep step) { SetLevel(Vertical().Stepped(step)); }
    // Pixels of the virtual width or height.
    void ScrollHorizontallyTo(std::int64_t position) {
        SetTime(Horizontal().WithPosition(position));
    }
    void ScrollVerticallyTo(std::int64_t position) { SetLevel(Vertical().WithPosition(position)); }
    // Brings a frame that is out of sight to the middle of the waveform.
    void ScrollToShow(std::uint32_t frame);
    // See zoom.h.
    void ScrollToPlayPosition(std::int64_t positionBytes);

    // --- Zooming, by the functions of zoom.h

    void Time(ZoomFunction step);
    void Level(ZoomFunction step) { SetLevel(step(State(), Context()).vertical); }
    // Keeps the frame under that column of the waveform there.
    void TimeAt(std::int64_t column, ZoomFunction step);
    void ToRange(std::uint32_t startFrame, std::uint32_t endFrame);
    void ToDefault(OpeningZoom opening);
    // The whole sound; the level's zoom stays.
    void FitTime() { ZoomTime(FitZoom(Context()).horizontal); }
    // What the dialog "User Defined Zoom" is filled with, and what its OK does.
    UserZoom CurrentUserZoom() const { return InitialUserZoom(State(), Context()); }
    void Apply(const UserZoom& zoom);

    // --- Where the zoom has been: every zoom of the time is kept, scrolling is none. False where
    // there is none.

    bool Back();
    bool Forward();
    const ZoomHistory& History() const { return history_; }

    // --- For the view

    // Forgets every size and zoom of before.
    void Restart();
    // The waveform has another size; one that was there before brings its zoom back.
    void Resize();
    // The sound has another length.
    enum class Lanes { kKept, kOthers };
    void FollowSound(Lanes lanes);

  private:
    ZoomContext Context() const;
    void SetTime(const ScrollState& state);
    // As a zoom, from which there is a way back.
    void ZoomTime(const ScrollState& state);
    SeenPlace Place() const;
    void Return(const SeenPlace& place);
    void SetLevel(const ScrollState& state);
    void AdaptToLength();

    const CWave& sound_;
    const ViewGeometry& geometry_;
    const SelectionEnds& selection_;
    const RepaintNotes& notes_;
    ZoomAxis horizontal_;
    ZoomAxis vertical_;
    ZoomHistory history_;
};

}  // namespace sonavel
