// The mouse over a view: finds what lies under the pointer, chooses the gesture that a press
// begins, and carries out what the gesture means. Coordinates are client pixels.
#pragma once

#include <cstdint>
#include <memory>

#include "view/draw/spectrum_probe.h"
#include "view/input/gestures.h"
#include "view/sound_view.h"

namespace sonavel {

struct PointerEvent {
    int x = 0;
    int y = 0;
    bool shift = false;
    bool control = false;
};

enum class MouseTarget {
    kNothing,
    kWaveform,
    kSelectionStart,  // the edges, within a few pixels
    kSelectionEnd,
    kMarkerStrip,
    kMarkerFlag,
    kHorizontalRuler,
    kVerticalRuler,
    kTimeZoomButton,
    kLevelZoomButton,
    kZoomerButton,
};

enum class MouseButton { kLeft, kRight, kMiddle };

// What is left to the window after an event.
enum class MouseRequest {
    kNone,
    kContextMenuNormal,
    kContextMenuSelection,
    kUserZoom,
    kEditMarker,  // the one whose flag lies there
    kMarkerMenu,  // of the chosen marker
    kRulerMenu,   // of what the vertical ruler stands beside
};

class MouseInput {
  public:
    explicit MouseInput(CSoundView& view) : view_(view) {}

    // For the shape of the pointer, too.
    MouseTarget TargetAt(int x, int y) const;
    // The marker whose flag lies there, 0 for none; of several the one added last, which is drawn
    // on top.
    std::uint32_t MarkerAt(int x, int y) const;

    MouseRequest Press(MouseButton button, const PointerEvent& event);
    // Also without a button: shows the sample values under the pointer, or how loud the frequency
    // is.
    void Move(const PointerEvent& event);
    void Release(const PointerEvent& event);
    MouseRequest DoubleClick(const PointerEvent& event);
    // A drag past an edge scrolls on; the window calls this about every 30 ms while IsDragging().
    void Tick();
    bool IsDragging() const { return gesture_ != nullptr || panning_; }
    // Lets go without a last move, as when another window takes the mouse.
    void Cancel();

    // `notches`: positive away from the person. Scrolls time; with Ctrl zooms time around the
    // pointer; with Ctrl+Shift, or over the vertical ruler, zooms level.
    void Wheel(const PointerEvent& event, double notches);
    // Over what stands for the level wherever it lies, such as its scroll bar.
    void WheelOverLevel(double notches);

  private:
    std::unique_ptr<Gesture> GestureFor(MouseTarget target, const PointerEvent& event) const;
    bool PressZoomButton(MouseTarget target, MouseButton button);
    std::uint32_t FrameAt(int x) const;
    std::uint32_t PointedFrame(const PointerEvent& event) const;
    void Choose(std::uint32_t markerId);
    int WholeNotches(double notches);
    void Apply(const GestureIntent& intent);
    void EndGesture();
    void FollowClick();
    void ShowValues(int x, int y);
    bool ShowSpectrumValue(std::int64_t frame, int y);
    void ScrollPastEdge();

    CSoundView& view_;
    std::unique_ptr<Gesture> gesture_;
    PointerEvent last_;
    bool pressedWithShift_ = false;  // which extends; only later does Shift turn snapping round
    bool dragsMarker_ = false;
    bool setsCursor_ = false;  // as long as it is a click
    bool panning_ = false;
    std::int64_t panPosition_ = 0;  // the scroll position at the press
    int panX_ = 0;
    SpectrumProbe probe_;
    double wheelRest_ = 0;  // what whole notches left over
};

}  // namespace sonavel
