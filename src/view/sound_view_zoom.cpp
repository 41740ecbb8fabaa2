// The view's zoom and scrolling: which state each command leads to, and what is repainted then.
#include <algorithm>

#include "sound/failure_texts.h"
#include "view/sound_view.h"

namespace sonavel {

class CSoundView::WaitCursorScope {
  public:
    explicit WaitCursorScope(SoundViewObserver* observer) : observer_(observer) {
        if (observer_) observer_->SetWaitCursor(SoundViewObserver::WaitCursor::kShow);
    }
    ~WaitCursorScope() {
        if (observer_) observer_->SetWaitCursor(SoundViewObserver::WaitCursor::kHide);
    }
    WaitCursorScope(const WaitCursorScope&) = delete;
    WaitCursorScope& operator=(const WaitCursorScope&) = delete;

  private:
    SoundViewObserver* observer_;
};

ZoomContext CSoundView::Context() const {
    return ZoomContext::Of(Sound(), WaveformWidth(), WaveformHeight(), GetSelection().start);
}

void CSoundView::ApplyTimeZoom(const ZoomState& state) {
    if (state.horizontal == Horizontal()) return;
    horizontal_.Set(state.horizontal);
    InvalidateTimeAreas();
    if (observer_) observer_->OnScrollChanged();
}

void CSoundView::ApplyLevelZoom(const ZoomState& state) {
    if (state.vertical == Vertical()) return;
    vertical_.Set(state.vertical);
    Invalidate(ViewArea::kVerticalRuler);
    Invalidate(ViewArea::kWaveform);
    if (observer_) observer_->OnScrollChanged();
}

// --- Zoom

void CSoundView::ZoomTimeIn() {
    const WaitCursorScope wait(observer_);
    ApplyTimeZoom(TimeZoomIn(Zoom(), Context()));
}

void CSoundView::ZoomTimeOut() {
    const WaitCursorScope wait(observer_);
    ApplyTimeZoom(TimeZoomOut(Zoom(), Context()));
}

void CSoundView::ZoomTimeFull() {
    const WaitCursorScope wait(observer_);
    ApplyTimeZoom(TimeZoomFull(Zoom(), Context()));
}

void CSoundView::ZoomToRange(std::uint32_t startFrame, std::uint32_t endFrame) {
    const WaitCursorScope wait(observer_);
    ApplyTimeZoom(sonavel::ZoomToRange(Zoom(), Context(), startFrame, endFrame));
}

void CSoundView::ZoomLevelIn() {
    ApplyLevelZoom(LevelZoomIn(Zoom(), Context()));
}
void CSoundView::ZoomLevelOut() {
    ApplyLevelZoom(LevelZoomOut(Zoom(), Context()));
}
void CSoundView::ZoomLevelFull() {
    ApplyLevelZoom(LevelZoomFull(Zoom(), Context()));
}

void CSoundView::ZoomDefault() {
    const OpeningZoom opening =
        document_.Options().openAndFullTimeZoom ? OpeningZoom::kFullTime : OpeningZoom::kFit;
    const ZoomState state = DefaultZoom(Context(), opening);
    ApplyTimeZoom(state);
    ApplyLevelZoom(state);
}

void CSoundView::ResetTimeZoom() {
    ApplyTimeZoom(FitZoom(Context()));
}

UserZoom CSoundView::CurrentUserZoom() const {
    return InitialUserZoom(Zoom(), Context());
}

void CSoundView::ApplyUserZoom(const UserZoom& zoom) {
    const WaitCursorScope wait(observer_);
    const ZoomState state = sonavel::ApplyUserZoom(Zoom(), Context(), zoom);
    ApplyTimeZoom(state);
    ApplyLevelZoom(state);
}

bool AskUserZoom(CSoundView& view) {
    if (view.FrameCount() == 0) return view.Refuse("The document has no sound.");
    const std::optional<UserZoom> zoom = view.Dialogs().AskUserZoom(view.CurrentUserZoom());
    if (!zoom) return view.Refuse(failure::kCancelled);
    view.ApplyUserZoom(*zoom);
    return true;
}

void CSoundView::ZoomTimeAt(int x, ZoomStep step) {
    const std::int64_t column = x - geometry_.waveform.left;
    const std::int64_t frame = Pixels().NearestFrameAt(column);
    const ZoomState zoomed =
        step == ZoomStep::kIn ? TimeZoomIn(Zoom(), Context()) : TimeZoomOut(Zoom(), Context());
    // The command decides how far; where the frame then stands decides the position.
    const std::int64_t virtualX = PixelMap(FrameCount(), zoomed.horizontal).VirtualX(frame);
    ApplyTimeZoom({zoomed.horizontal.WithPosition(virtualX - column), Vertical()});
}

std::int64_t CSoundView::TimeRatio() const {
    return TimeZoomRatio(Zoom(), Context());
}
double CSoundView::TimePercent() const {
    return TimeZoomPercent(Zoom(), Context());
}
double CSoundView::LevelPercent() const {
    return LevelZoomPercent(Zoom(), Context());
}

// --- Scrolling

void CSoundView::ScrollHorizontally(ScrollStep step) {
    ApplyTimeZoom({Horizontal().Stepped(step), Vertical()});
}

void CSoundView::ScrollVertically(ScrollStep step) {
    ApplyLevelZoom({Horizontal(), Vertical().Stepped(step)});
}

void CSoundView::ScrollHorizontallyTo(std::int64_t position) {
    ApplyTimeZoom({Horizontal().WithPosition(position), Vertical()});
}

void CSoundView::ScrollVerticallyTo(std::int64_t position) {
    ApplyLevelZoom({Horizontal(), Vertical().WithPosition(position)});
}

bool CSoundView::IsFrameInSight(std::uint32_t frame) const {
    const std::int64_t x = Pixels().X(frame);
    return x >= 0 && x <= WaveformWidth();
}

void CSoundView::ScrollToShow(std::uint32_t frame) {
    if (!IsFrameInSight(frame))
        ScrollHorizontallyTo(Pixels().VirtualX(frame) - WaveformWidth() / 2);
}

void CSoundView::ScrollToPlayPosition(std::int64_t positionBytes) {
    ApplyTimeZoom(sonavel::ScrollToPlayPosition(Zoom(), Context(), positionBytes));
}

}  // namespace sonavel
