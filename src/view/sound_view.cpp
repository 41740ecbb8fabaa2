#include "view/sound_view.h"

#include <algorithm>

#include "view/state/status_texts.h"

namespace sonavel {

CSoundView::CSoundView(CSoundDoc& document, ViewDialogs& dialogs, ViewHost& host)
    : document_(document), dialogs_(dialogs), host_(host) {
    document_.AddObserver(this);
    Sound().SetObserver(this);
    document_.Preview().SetObserver(&previewReports_);
}

CSoundView::~CSoundView() {
    Sound().SetObserver(nullptr);
    document_.Preview().SetObserver(nullptr);
    document_.RemoveObserver(this);
}

void CSoundView::SetObserver(SoundViewObserver* observer) {
    observer_ = observer;
    if (!observer_ || !maximizePending_) return;
    maximizePending_ = false;
    observer_->MaximizeFrame();
}

bool CSoundView::Refuse(std::string_view reason) {
    lastError_ = reason;
    return false;
}

// --- Sizes and settings

void CSoundView::Show(int width, int height) {
    client_ = {0, 0, width, height};
    TakeSettings();
    LayOut();
    extremes_.Rebuild(Sound(), 0);
    shown_ = true;
    horizontal_ = ZoomAxis(WaveformWidth());
    vertical_ = ZoomAxis(WaveformHeight());
    ZoomDefault();
    Invalidate(ViewArea::kAll);
}

void CSoundView::TakeSettings() {
    const ProfileText display = document_.Services().folder.Display().Read();
    settings_ = DisplaySettings::Read(display);
    colours_.Load(display);
    grid_ = GridSettings::Read(document_.OptionsText());
    statusFormat_ = ReadStatusFormat(document_.OptionsText());
    if (observer_) observer_->OnColoursChanged();
}

void CSoundView::LayOut() {
    GeometryRequest request;
    request.client = client_;
    request.horizontalRuler =
        settings_.horizontalRuler ? RulerVisibility::kShown : RulerVisibility::kHidden;
    request.verticalRuler =
        settings_.verticalRuler ? RulerVisibility::kShown : RulerVisibility::kHidden;
    geometry_ = ViewGeometry::Layout(request);
}

void CSoundView::Resize(int width, int height) {
    if (!shown_) return;
    client_ = {0, 0, width, height};
    LayOut();
    Rescale();
    Invalidate(ViewArea::kAll);
}

void CSoundView::Rescale() {
    const ZoomState before = Zoom();
    const ZoomState fit = FitZoom(Context());
    horizontal_.Resize(WaveformWidth(), fit.horizontal);
    vertical_.Resize(WaveformHeight(), fit.vertical);
    if (before != Zoom() && observer_) observer_->OnScrollChanged();
}

int CSoundView::WaveformWidth() const {
    return geometry_.waveform.Width();
}
int CSoundView::WaveformHeight() const {
    return geometry_.waveform.Height();
}

void CSoundView::ReloadSettings() {
    document_.ReloadOptions();
    TakeSettings();
    ShowStatusFormat(statusFormat_);
    Resize(client_.Width(), client_.Height());
}

bool CSoundView::SetStatusFormat(StatusFormat format) {
    host_.OnStatusFormatChosen(format);
    ProfileFile options = document_.Services().folder.Options();
    return WriteStatusFormat(options, format) || Refuse("Options.ini cannot be written.");
}

void CSoundView::ShowStatusFormat(StatusFormat format) {
    statusFormat_ = format;
    ShowPlayReport();
    Invalidate(ViewArea::kAll);
    if (observer_) observer_->OnSelectionChanged();
}

// --- The document

void CSoundView::OnSoundChanged(std::uint32_t firstChangedFrame) {
    const bool rebuildsLanes = extremes_.Channels() != Sound().GetChannels();
    extremes_.Rebuild(Sound(), firstChangedFrame);
    ClampToSound();
    ShowPlayReport();
    if (!shown_) return;
    const ZoomState before = Zoom();
    if (rebuildsLanes) vertical_.Set(FitZoom(Context()).vertical);
    AdaptZoomToSound();
    if (rebuildsLanes)
        Invalidate(ViewArea::kAll);
    else
        InvalidateTimeAreas();
    if (before != Zoom() && observer_) observer_->OnScrollChanged();
}

// A change of length may leave a pixel with less than a frame, or a window partly empty that the
// sound could fill.
void CSoundView::AdaptZoomToSound() {
    const std::int64_t frames = FrameCount();
    const std::int64_t width = WaveformWidth();
    const ScrollState& state = Horizontal();
    if (state.maximum < std::min(frames, width))
        horizontal_.Set(FitZoom(Context()).horizontal);
    else if (state.maximum > std::max(frames, width))
        horizontal_.Set(state.WithRange(std::max(frames, width), state.position));
}

void CSoundView::ClampToSound() {
    const std::uint32_t frames = FrameCount();
    const SelectionEnds clamped = {std::min(selectionEnds_.start, frames),
                                   std::min(selectionEnds_.end, frames)};
    const std::uint32_t cursor = std::min(cursor_, frames);
    const bool changed = clamped != selectionEnds_ || cursor != cursor_;
    selectionEnds_ = clamped;
    cursor_ = cursor;
    if (changed && observer_) observer_->OnSelectionChanged();
}

void CSoundView::MaximizeFrame() {
    // A document is opened before its window exists, which then takes up the wish.
    if (observer_)
        observer_->MaximizeFrame();
    else
        maximizePending_ = true;
}

void CSoundView::OnWaiting(Waiting waiting) {
    using enum SoundViewObserver::WaitCursor;
    if (observer_) observer_->SetWaitCursor(waiting == Waiting::kBegins ? kShow : kHide);
}

// --- Selection and cursor

void CSoundView::SetSelection(std::uint32_t start, std::uint32_t end) {
    const Selection range = RangeBetween(start, end).ClampedTo(FrameCount());
    StoreSelection({range.start, range.end});
}

void CSoundView::SetSelectionStart(std::uint32_t frame) {
    StoreSelection({std::min(frame, FrameCount()), selectionEnds_.end});
}

void CSoundView::StoreSelection(const SelectionEnds& ends) {
    if (ends == selectionEnds_) return;
    const Selection before = GetSelection();
    selectionEnds_ = ends;
    InvalidateSelectionChange(before, GetSelection());
    if (observer_) observer_->OnSelectionChanged();
}

void CSoundView::SetCursor(std::uint32_t frame) {
    const std::uint32_t target = std::min(frame, FrameCount());
    if (target == cursor_) return;
    InvalidateFrames(cursor_, cursor_);
    cursor_ = target;
    InvalidateFrames(cursor_, cursor_);
    if (observer_) observer_->OnSelectionChanged();
}

// --- Repainting

void CSoundView::Invalidate(ViewArea area) {
    if (observer_) observer_->Invalidate(area);
}

void CSoundView::InvalidateTimeAreas() {
    Invalidate(ViewArea::kWaveform);
    Invalidate(ViewArea::kHorizontalRuler);
    Invalidate(ViewArea::kMarkerStrip);
}

// The columns of these frames and the marks that the ruler has for them.
void CSoundView::InvalidateFrames(std::uint32_t a, std::uint32_t b) {
    constexpr std::int64_t kColumnReach = 3;
    constexpr std::int64_t kRulerReach = 8;
    if (!observer_) return;
    const PixelMap map = Pixels();
    const Rectangle& waveform = geometry_.waveform;
    const std::int64_t width = waveform.Width();
    // The cursor stays visible at the right edge, so places beyond it repaint that edge.
    const std::int64_t first = std::clamp<std::int64_t>(map.X(std::min(a, b)), 0, width);
    const std::int64_t last = std::clamp<std::int64_t>(map.X(std::max(a, b)), 0, width);
    const auto strip = [&](const Rectangle& area, std::int64_t reach) {
        const Rectangle around = {waveform.left + static_cast<int>(first - reach), area.top,
                                  waveform.left + static_cast<int>(last + reach + 1), area.bottom};
        const Rectangle visible = around.Intersected(area);
        if (!visible.Empty()) observer_->InvalidateRectangle(visible);
    };
    strip(waveform, kColumnReach);
    strip(geometry_.horizontalRuler, kRulerReach);
}

void CSoundView::InvalidateSelectionChange(const Selection& before, const Selection& after) {
    if (before.IsEmpty() && after.IsEmpty()) return;
    if (before.IsEmpty() || after.IsEmpty()) {
        const Selection& shown = before.IsEmpty() ? after : before;
        InvalidateFrames(shown.start, shown.end);
        return;
    }
    if (before.start != after.start) InvalidateFrames(before.start, after.start);
    if (before.end != after.end) InvalidateFrames(before.end, after.end);
}

}  // namespace sonavel
