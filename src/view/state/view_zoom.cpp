#include "view/state/view_zoom.h"

#include <algorithm>

namespace sonavel {

ZoomContext ViewZoom::Context() const {
    return ZoomContext::Of(sound_, geometry_.waveform.Width(), geometry_.envelope.Height(),
                           selection_.Range().start);
}

void ViewZoom::SetTime(const ScrollState& state) {
    if (state == Horizontal()) return;
    horizontal_.Set(state);
    notes_.TimeAreas();
    notes_.Window().OnScrollChanged();
}

void ViewZoom::SetLevel(const ScrollState& state) {
    if (state == Vertical()) return;
    vertical_.Set(state);
    notes_.Area(ViewArea::kVerticalRuler);
    notes_.Area(ViewArea::kWaveform);
    notes_.Window().OnScrollChanged();
}

// --- Scrolling

bool ViewZoom::IsFrameInSight(std::uint32_t frame) const {
    const std::int64_t x = Pixels().X(frame);
    return x >= 0 && x <= geometry_.waveform.Width();
}

void ViewZoom::ScrollToShow(std::uint32_t frame) {
    if (!IsFrameInSight(frame))
        ScrollHorizontallyTo(Pixels().VirtualX(frame) - geometry_.waveform.Width() / 2);
}

void ViewZoom::ScrollToPlayPosition(std::int64_t positionBytes) {
    SetTime(sonavel::ScrollToPlayPosition(State(), Context(), positionBytes).horizontal);
}

// --- Zooming

void ViewZoom::ZoomTime(const ScrollState& state) {
    if (state == Horizontal()) return;
    if (Horizontal().maximum > 0) history_.Leave(Place());
    SetTime(state);
}

SeenPlace ViewZoom::Place() const {
    const int width = geometry_.waveform.Width();
    const auto frameAt = [&](int x) {
        return static_cast<std::uint32_t>(Pixels().Usable() ? Pixels().NearestFrameAt(x) : 0);
    };
    return {Horizontal(), sound_.GetFrameCount(), width, {frameAt(0), frameAt(width)}};
}

void ViewZoom::Return(const SeenPlace& place) {
    const SeenPlace now = Place();
    if (place.frameCount == now.frameCount && place.width == now.width) return SetTime(place.state);
    const FrameRange shown = place.shown.ClampedTo(now.frameCount);
    if (!shown.IsEmpty())
        SetTime(ZoomToRange(State(), Context(), shown.start, shown.end).horizontal);
}

bool ViewZoom::Back() {
    const auto place = history_.Back(Place());
    if (place) Return(*place);
    return place.has_value();
}

bool ViewZoom::Forward() {
    const auto place = history_.Forward(Place());
    if (place) Return(*place);
    return place.has_value();
}

void ViewZoom::Time(ZoomFunction step) {
    const WaitCursorScope wait(notes_);
    ZoomTime(step(State(), Context()).horizontal);
}

void ViewZoom::TimeAt(std::int64_t column, ZoomFunction step) {
    const std::int64_t frame = Pixels().NearestFrameAt(column);
    // The command decides how far; where the frame then stands decides the position.
    const ScrollState zoomed = step(State(), Context()).horizontal;
    const std::int64_t virtualX = PixelMap(sound_.GetFrameCount(), zoomed).VirtualX(frame);
    ZoomTime(zoomed.WithPosition(virtualX - column));
}

void ViewZoom::ToRange(std::uint32_t startFrame, std::uint32_t endFrame) {
    const WaitCursorScope wait(notes_);
    ZoomTime(ZoomToRange(State(), Context(), startFrame, endFrame).horizontal);
}

void ViewZoom::ToDefault(OpeningZoom opening) {
    const ZoomState state = DefaultZoom(Context(), opening);
    ZoomTime(state.horizontal);
    SetLevel(state.vertical);
}

void ViewZoom::Apply(const UserZoom& zoom) {
    const WaitCursorScope wait(notes_);
    const ZoomState state = ApplyUserZoom(State(), Context(), zoom);
    ZoomTime(state.horizontal);
    SetLevel(state.vertical);
}

// --- For the view

void ViewZoom::Restart() {
    horizontal_ = ZoomAxis(geometry_.waveform.Width());
    vertical_ = ZoomAxis(geometry_.envelope.Height());
}

void ViewZoom::Resize() {
    const ZoomState before = State();
    const ZoomState fit = FitZoom(Context());
    horizontal_.Resize(geometry_.waveform.Width(), fit.horizontal);
    vertical_.Resize(geometry_.envelope.Height(), fit.vertical);
    if (before != State()) notes_.Window().OnScrollChanged();
}

void ViewZoom::FollowSound(Lanes lanes) {
    const ZoomState before = State();
    if (lanes == Lanes::kOthers) vertical_.Set(FitZoom(Context()).vertical);
    AdaptToLength();
    if (lanes == Lanes::kOthers)
        notes_.Area(ViewArea::kAll);
    else
        notes_.TimeAreas();
    if (before != State()) notes_.Window().OnScrollChanged();
}

// A change of length may leave a pixel with less than a frame, or a window partly empty that the
// sound could fill.
void ViewZoom::AdaptToLength() {
    const std::int64_t frames = sound_.GetFrameCount();
    const std::int64_t width = geometry_.waveform.Width();
    const ScrollState& state = Horizontal();
    if (state.maximum < std::min(frames, width))
        horizontal_.Set(FitZoom(Context()).horizontal);
    else if (state.maximum > std::max(frames, width))
        horizontal_.Set(state.WithRange(std::max(frames, width), state.position));
}

}  // namespace sonavel
