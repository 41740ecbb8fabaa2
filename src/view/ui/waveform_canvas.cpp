#include "view/ui/waveform_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "view/ui/waveform_renderer.h"

namespace sonavel {

namespace {

// A column's joining lines reach into its neighbours.
constexpr int kJoinReach = 2;

bool IsWhole(double number) {
    return number == std::floor(number);
}

void ScrollRows(QImage& image, int distance) {
    const auto moved = static_cast<std::size_t>(image.width() - std::abs(distance));
    for (int row = 0; row < image.height(); ++row) {
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(row));
        std::memmove(pixels + std::max(distance, 0), pixels + std::max(-distance, 0),
                     moved * sizeof(QRgb));
    }
}

// A label of the grid may straddle a strip, or have had no room before.
bool HasGridLabels(const WaveformLook& look) {
    return look.grid.timeGrid && look.grid.timeLabels && look.grid.Place() != GridPlace::kNowhere;
}

// The lanes of such a sound end at a column that does not scroll, and its joining lines are long;
// there is too little of it to be worth strips.
bool HasFewerFramesThanPixels(const WaveformLook& look) {
    return look.frameCount < std::max<std::int64_t>(look.waveform.Width(), look.horizontal.maximum);
}

WaveformSource SourceOf(const CSoundView& view) {
    return {view.Sound(), view.Extremes(), &view.Pictures().Tiles()};
}

}  // namespace

WaveformCanvas::Update WaveformCanvas::Follow(const CSoundView& view, double pixelRatio) {
    const WaveformLook before = look_;
    look_ = WaveformLook::Of(view, pixelRatio);
    if (look_.ShowsSpectrogram())
        view.Pictures().Tiles().Want(view.Sound(), look_.Scene(), look_.VisibleColumns());
    const LookChange change = ChangeBetween(before, look_);
    if (!complete_) return All();
    if (change == LookChange::kNone) return {};
    if (HasFewerFramesThanPixels(look_)) return All();
    switch (change) {
        case LookChange::kPosition:
            return Scroll(view, before.horizontal.position - look_.horizontal.position);
        case LookChange::kSelection:
            return Reselect(view, before.selection);
        default:
            return All();
    }
}

WaveformCanvas::Update WaveformCanvas::All() {
    complete_ = false;
    return {Update::Kind::kAll, 0, {}};
}

WaveformCanvas::Update WaveformCanvas::Scroll(const CSoundView& view, std::int64_t distance) {
    const int width = look_.waveform.Width();
    const double deviceDistance = static_cast<double>(distance) * look_.pixelRatio;
    if (std::abs(distance) > width / 2 || !IsWhole(deviceDistance) || HasGridLabels(look_))
        return All();
    const int pixels = static_cast<int>(distance);
    ScrollRows(image_, static_cast<int>(deviceDistance));
    Update update{Update::Kind::kScrolled, pixels, {}};
    WaveformRenderer renderer(image_, look_, SourceOf(view));
    const auto show = [&](int first, int last) {
        renderer.RenderStrip({first, last});
        update.parts += QRect(first, 0, last - first, look_.waveform.Height());
    };
    // The first column has the line from the lane's edge, the last none to a next one.
    show(0, std::max(pixels, 0) + kJoinReach);
    show(width - std::max(-pixels, 0) - kJoinReach, width);
    return update;
}

WaveformCanvas::Update WaveformCanvas::ShowColumns(const CSoundView& view,
                                                   const ColumnSpan& columns) {
    if (!complete_ || !look_.ShowsSpectrogram()) return {};
    const std::int64_t left = look_.VisibleColumns().first;
    const double ratio = look_.pixelRatio;
    const auto pixel = [&](std::int64_t column, auto rounded) {
        const double x = rounded(static_cast<double>(column - left) / ratio);
        return static_cast<int>(std::clamp(x, 0.0, double{1} * look_.waveform.Width()));
    };
    const int first = pixel(columns.first, [](double x) { return std::floor(x); });
    const int last = pixel(columns.last, [](double x) { return std::ceil(x); });
    if (first >= last) return {};
    WaveformRenderer(image_, look_, SourceOf(view)).RenderStrip({first, last});
    return {Update::Kind::kParts, 0, QRect(first, 0, last - first, look_.waveform.Height())};
}

WaveformCanvas::Update WaveformCanvas::Reselect(const CSoundView& view, const Selection& before) {
    const PixelMap map(look_.frameCount, look_.horizontal);
    const Rectangle old = SelectionRect(look_.waveform, map, before);
    const Rectangle now = SelectionRect(look_.waveform, map, look_.selection);
    Update update{Update::Kind::kParts, 0, {}};
    const QRect bounds(0, 0, look_.waveform.Width(), look_.waveform.Height());
    const auto change = [&](int a, int b) {
        const int left = std::min(a, b) - look_.waveform.left - kJoinReach;
        const int right = std::max(a, b) - look_.waveform.left + kJoinReach;
        update.parts += QRect(left, 0, right - left, bounds.height()) & bounds;
    };
    if (old.Empty() || now.Empty()) {
        const Rectangle& shown = old.Empty() ? now : old;
        change(shown.left, shown.right);
    } else {
        change(old.left, now.left);
        change(old.right, now.right);
    }
    WaveformRenderer renderer(image_, look_, SourceOf(view));
    for (const QRect& part : update.parts)
        renderer.RenderStrip({part.left(), part.left() + part.width()});
    return update;
}

void WaveformCanvas::RenderAll(const CSoundView& view) {
    const QSize size(static_cast<int>(std::ceil(look_.waveform.Width() * look_.pixelRatio)),
                     static_cast<int>(std::ceil(look_.waveform.Height() * look_.pixelRatio)));
    if (image_.size() != size) image_ = QImage(size, QImage::Format_RGB32);
    complete_ = true;
    if (!image_.isNull())
        WaveformRenderer(image_, look_, SourceOf(view)).RenderStrip({0, look_.waveform.Width()});
}

void WaveformCanvas::Draw(QPainter& painter, const QRect& source, const CSoundView& view) {
    if (!complete_) RenderAll(view);
    DrawAsItWas(painter, source);
}

void WaveformCanvas::DrawAsItWas(QPainter& painter, const QRect& source) const {
    if (image_.isNull()) return;
    const double ratio = look_.pixelRatio;
    const QRectF device(source.x() * ratio, source.y() * ratio, source.width() * ratio,
                        source.height() * ratio);
    const QPoint corner(look_.waveform.left, look_.waveform.top);
    painter.drawImage(QRectF(source.translated(corner)), image_, device);
}

}  // namespace sonavel
