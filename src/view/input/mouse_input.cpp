#include "view/input/mouse_input.h"

#include <algorithm>
#include <cmath>

#include "sound/zero_crossing.h"
#include "view/commands/marker_commands.h"
#include "view/commands/transport.h"
#include "view/draw/frequency_ruler.h"
#include "view/draw/marker_strip.h"
#include "view/input/cursor_moves.h"
#include "view/state/status_texts.h"

namespace sonavel {
namespace {

constexpr int kEdgeReach = 3;  // pixels around a selection edge in which a press takes it
constexpr int kSlowestScroll = 4;
constexpr int kFastestScroll = 60;  // pixels a tick
constexpr int kWheelParts = 10;     // a notch scrolls such a part of the window

bool ShowsTime(MouseTarget target) {
    switch (target) {
        case MouseTarget::kWaveform:
        case MouseTarget::kSelectionStart:
        case MouseTarget::kSelectionEnd:
        case MouseTarget::kMarkerStrip:
        case MouseTarget::kMarkerFlag:
        case MouseTarget::kHorizontalRuler:
            return true;
        default:
            return false;
    }
}

MouseTarget ButtonAt(const ViewGeometry& geometry, int x, int y) {
    if (geometry.timeZoomButton.Contains(x, y)) return MouseTarget::kTimeZoomButton;
    if (geometry.levelZoomButton.Contains(x, y)) return MouseTarget::kLevelZoomButton;
    if (geometry.zoomerButton.Contains(x, y)) return MouseTarget::kZoomerButton;
    return MouseTarget::kNothing;
}

// The edge of the selection near the pointer; the nearer of two, kWaveform for none.
MouseTarget EdgeAt(const CSoundView& view, int x) {
    if (!view.State().HasSelection()) return MouseTarget::kWaveform;
    // The selection is drawn one pixel to the right of its frames.
    const std::int64_t column = x - view.State().Geometry().waveform.left - 1;
    const std::int64_t toStart =
        std::abs(column - view.Zoom().Pixels().X(view.State().GetSelection().start));
    const std::int64_t toEnd =
        std::abs(column - view.Zoom().Pixels().X(view.State().GetSelection().end));
    if (std::min(toStart, toEnd) > kEdgeReach) return MouseTarget::kWaveform;
    return toStart < toEnd ? MouseTarget::kSelectionStart : MouseTarget::kSelectionEnd;
}

}  // namespace

MouseTarget MouseInput::TargetAt(int x, int y) const {
    const ViewGeometry& geometry = view_.State().Geometry();
    const MouseTarget button = ButtonAt(geometry, x, y);
    if (button != MouseTarget::kNothing) return button;
    if (geometry.waveform.Contains(x, y)) return EdgeAt(view_, x);
    if (geometry.markerStrip.Contains(x, y))
        return MarkerAt(x, y) != 0 ? MouseTarget::kMarkerFlag : MouseTarget::kMarkerStrip;
    if (geometry.horizontalRuler.Contains(x, y)) return MouseTarget::kHorizontalRuler;
    if (geometry.verticalRuler.Contains(x, y)) return MouseTarget::kVerticalRuler;
    return MouseTarget::kNothing;
}

std::uint32_t MouseInput::MarkerAt(int x, int y) const {
    std::uint32_t id = 0;
    const auto noLabels = [](std::string_view) { return 0; };
    for (const MarkerFlag& place :
         LayOutMarkerStrip(view_.State().Geometry().markerStrip, view_.Zoom().Pixels(),
                           view_.Sound().Markers(), noLabels))
        if (place.flag.Contains(x, y)) id = place.id;
    return id;
}

// A drag past an edge means the frame at the edge; scrolling brings further frames there.
std::uint32_t MouseInput::FrameAt(int x) const {
    const Rectangle& waveform = view_.State().Geometry().waveform;
    const int inside = std::clamp(x, waveform.left, std::max(waveform.left, waveform.right));
    return static_cast<std::uint32_t>(view_.Zoom().Pixels().NearestFrameAt(inside - waveform.left));
}

// Where the pointer is, or the sound passes through zero near it.
std::uint32_t MouseInput::PointedFrame(const PointerEvent& event) const {
    const std::uint32_t frame = FrameAt(event.x);
    const bool turned = event.shift != pressedWithShift_;
    if (dragsMarker_ || view_.Settings().IsOn(ViewSwitch::kSnapping) == turned) return frame;
    constexpr std::uint32_t kReachParts = 50;  // of a second
    return NearestZeroCrossing(view_.Sound(), frame,
                               view_.Sound().GetSamplesPerSecond() / kReachParts);
}

void MouseInput::Choose(std::uint32_t markerId) {
    if (markerId != 0) view_.State().ChooseMarker(markerId);
}

std::unique_ptr<Gesture> MouseInput::GestureFor(MouseTarget target,
                                                const PointerEvent& event) const {
    const Selection selection = view_.State().GetSelection();
    if (target == MouseTarget::kMarkerFlag) {
        const std::uint32_t id = MarkerAt(event.x, event.y);
        const Marker* marker = view_.Sound().Markers().Find(id);
        if (!marker) return nullptr;
        // As far as the marked region still lies within the sound.
        const std::uint32_t furthest =
            view_.FrameCount() - std::min(marker->length, view_.FrameCount());
        return std::make_unique<DragMarkerGesture>(id, marker->position, furthest);
    }
    if (event.shift) return std::make_unique<ExtendGesture>(selection, view_.State().Cursor());
    if (target == MouseTarget::kSelectionStart)
        return std::make_unique<DragEdgeGesture>(selection.end);
    if (target == MouseTarget::kSelectionEnd)
        return std::make_unique<DragEdgeGesture>(selection.start);
    return std::make_unique<SelectGesture>();
}

bool MouseInput::PressZoomButton(MouseTarget target, MouseButton button) {
    const bool in = button == MouseButton::kLeft;
    ViewZoom& zoom = view_.Zoom();
    if (target == MouseTarget::kTimeZoomButton)
        zoom.Time(in ? TimeZoomIn : TimeZoomOut);
    else if (target == MouseTarget::kLevelZoomButton)
        in ? view_.Zoom().Level(LevelZoomIn) : view_.Zoom().Level(LevelZoomOut);
    else
        return false;
    return true;
}

MouseRequest MouseInput::Press(MouseButton button, const PointerEvent& event) {
    last_ = event;
    const MouseTarget target = TargetAt(event.x, event.y);
    if (button != MouseButton::kMiddle) {
        if (PressZoomButton(target, button)) return MouseRequest::kNone;
        if (target == MouseTarget::kZoomerButton && view_.FrameCount() > 0)
            return MouseRequest::kUserZoom;
    }
    if (button == MouseButton::kRight && target == MouseTarget::kVerticalRuler)
        return MouseRequest::kRulerMenu;
    if (!ShowsTime(target) || IsDragging()) return MouseRequest::kNone;
    if (button == MouseButton::kRight && target == MouseTarget::kMarkerFlag) {
        Choose(MarkerAt(event.x, event.y));
        return MouseRequest::kMarkerMenu;
    }
    if (button == MouseButton::kRight)
        return view_.State().HasSelection() ? MouseRequest::kContextMenuSelection
                                            : MouseRequest::kContextMenuNormal;
    if (button == MouseButton::kMiddle) {
        panning_ = true;
        panPosition_ = view_.Zoom().Horizontal().position;
        panX_ = event.x;
        return MouseRequest::kNone;
    }
    pressedWithShift_ = event.shift;
    dragsMarker_ = target == MouseTarget::kMarkerFlag;
    setsCursor_ = !event.shift && !dragsMarker_ && target != MouseTarget::kSelectionStart &&
                  target != MouseTarget::kSelectionEnd;
    gesture_ = GestureFor(target, event);
    if (gesture_) Apply(gesture_->Press(PointedFrame(event)));
    if (dragsMarker_) Choose(MarkerAt(event.x, event.y));
    return MouseRequest::kNone;
}

void MouseInput::Move(const PointerEvent& event) {
    last_ = event;
    if (panning_)
        view_.Zoom().ScrollHorizontallyTo(panPosition_ + panX_ - event.x);
    else if (gesture_)
        Apply(gesture_->Move(PointedFrame(event)));
    else
        ShowValues(event.x, event.y);
}

// Unless the engine plays or records.
void MouseInput::ShowValues(int x, int y) {
    const CWavePlayer& sound = view_.Sound();
    if (!view_.Document().Options().displaySampleData || sound.IsPlaying() || sound.IsRecording())
        return;
    const Rectangle& waveform = view_.State().Geometry().waveform;
    const PixelMap pixels = view_.Zoom().Pixels();
    if (!waveform.Contains(x, y) || !pixels.Usable()) return;
    const std::int64_t frame = pixels.FrameAt(x - waveform.left);
    if (frame >= view_.FrameCount() || ShowSpectrumValue(frame, y)) return;
    view_.Playing().ShowStatusText(SampleValuesText(sound, frame));
}

// False where there is no spectrogram.
bool MouseInput::ShowSpectrumValue(std::int64_t frame, int y) {
    const CWavePlayer& sound = view_.Sound();
    const ViewGeometry& geometry = view_.State().Geometry();
    const SpectrogramLook& look = view_.Settings().spectrogram.look;
    if (!geometry.ShowsSpectrogram() || y < geometry.spectrogram.top) return false;
    const std::uint32_t rate = sound.GetSamplesPerSecond();
    for (unsigned channel = 0; channel < sound.GetChannels(); ++channel) {
        const Rectangle lane = geometry.SpectrogramLane(channel, sound.GetChannels());
        if (y < lane.top || y >= lane.bottom) continue;
        const auto frequencyAt = [&](int row) {
            return FrequencyOfRow(lane, look.scale, row, rate / 2.0);
        };
        const double frequency = frequencyAt(y);
        // Half a row to both sides, as it is drawn.
        const SpectrumProbe::Band band = {(frequency + frequencyAt(y + 1)) / 2,
                                          (frequency + frequencyAt(y - 1)) / 2};
        view_.Playing().ShowStatusText(
            SpectrumText(PositionText(view_.Settings().statusFormat, frame, rate), frequency,
                         probe_.Decibels(sound, channel, frame, band, look)));
    }
    return true;
}

void MouseInput::Release(const PointerEvent& event) {
    last_ = event;
    panning_ = false;
    if (!gesture_) return;
    Apply(gesture_->Release(PointedFrame(event)));
    EndGesture();
    FollowClick();
}

// A drag has selected something, and lets playing be.
void MouseInput::FollowClick() {
    const bool follows = setsCursor_ && !view_.State().HasSelection() &&
                         view_.Settings().IsOn(ViewSwitch::kPlayFollowsClicks);
    // Where it is not playing, a click only sets the cursor.
    if (follows && view_.Sound().IsPlaying()) static_cast<void>(GoOnFromCursor(view_));
}

void MouseInput::Cancel() {
    panning_ = false;
    EndGesture();
}

void MouseInput::EndGesture() {
    gesture_.reset();
    view_.Document().EndMarkerEdit();
}

MouseRequest MouseInput::DoubleClick(const PointerEvent& event) {
    Cancel();
    const MouseTarget target = TargetAt(event.x, event.y);
    if (PressZoomButton(target, MouseButton::kLeft)) return MouseRequest::kNone;
    if (target == MouseTarget::kZoomerButton && view_.FrameCount() > 0)
        return MouseRequest::kUserZoom;
    if (target == MouseTarget::kMarkerFlag) return MouseRequest::kEditMarker;
    if (ShowsTime(target)) static_cast<void>(SelectBetweenMarkers(view_, FrameAt(event.x)));
    return MouseRequest::kNone;
}

void MouseInput::Tick() {
    if (!gesture_) return;
    ScrollPastEdge();
    // A modal dialog that the scrolling's observers open may have ended the gesture.
    if (gesture_) Apply(gesture_->Move(PointedFrame(last_)));
}

void MouseInput::ScrollPastEdge() {
    const Rectangle& waveform = view_.State().Geometry().waveform;
    const int before = waveform.left - last_.x;
    const int behind = last_.x - waveform.right;
    const std::int64_t position = view_.Zoom().Horizontal().position;
    if (before > 0)
        view_.Zoom().ScrollHorizontallyTo(position -
                                          std::clamp(before, kSlowestScroll, kFastestScroll));
    else if (behind >= 0)
        view_.Zoom().ScrollHorizontallyTo(position +
                                          std::clamp(behind, kSlowestScroll, kFastestScroll));
}

void MouseInput::Apply(const GestureIntent& intent) {
    if (intent.selection)
        view_.State().SetSelection(intent.selection->start, intent.selection->end);
    if (intent.cursor) view_.State().SetCursor(*intent.cursor);
    if (intent.marker) DragMarker(view_, intent.marker->id, intent.marker->position);
}

int MouseInput::WholeNotches(double notches) {
    wheelRest_ += notches;
    const double whole = std::trunc(wheelRest_);
    wheelRest_ -= whole;
    return static_cast<int>(whole);
}

void MouseInput::WheelOverLevel(double notches) {
    const int steps = WholeNotches(notches);
    for (int i = 0; i < std::abs(steps); ++i)
        view_.Zoom().Level(steps > 0 ? LevelZoomIn : LevelZoomOut);
}

void MouseInput::Wheel(const PointerEvent& event, double notches) {
    if ((event.control && event.shift) || TargetAt(event.x, event.y) == MouseTarget::kVerticalRuler)
        return WheelOverLevel(notches);
    if (event.control) {
        const int steps = WholeNotches(notches);
        const int column = event.x - view_.State().Geometry().waveform.left;
        for (int i = 0; i < std::abs(steps); ++i)
            view_.Zoom().TimeAt(column, steps > 0 ? TimeZoomIn : TimeZoomOut);
        return;
    }
    wheelRest_ = 0;
    const double pixels = notches * std::max(view_.State().WaveformWidth() / kWheelParts, 1);
    view_.Zoom().ScrollHorizontallyTo(view_.Zoom().Horizontal().position - std::llround(pixels));
}

}  // namespace sonavel
