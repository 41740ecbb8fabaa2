// How the window of a view paints: the picture of the waveform with the moving columns over it, the
// marker strip and the rulers, each only where it must.
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>

#include "platform/qt/device_line.h"
#include "view/ui/marker_painter.h"
#include "view/ui/qt_values.h"
#include "view/ui/ruler_painter.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

namespace {

constexpr int kLaterMs = 50;

}  // namespace

void SoundViewWidget::FollowWaveform() {
    if (!view_.State().IsShown() || view_.Document().IsBeingChanged()) return;
    const WaveformCanvas::Update change = canvas_.Follow(view_, devicePixelRatioF());
    const QRect area = ToQRect(view_.State().Geometry().waveform);
    switch (change.kind) {
        case WaveformCanvas::Update::Kind::kNothing:
            break;
        case WaveformCanvas::Update::Kind::kParts:
            update(change.parts.translated(area.topLeft()));
            break;
        case WaveformCanvas::Update::Kind::kScrolled:
            ScrollWaveform(change);
            break;
        case WaveformCanvas::Update::Kind::kAll:
            update(area);
            break;
    }
}

void SoundViewWidget::ShowNewTiles() {
    // The next tiles would be read of a sound that is neither as before nor as after.
    if (view_.Document().IsBeingChanged())
        return QTimer::singleShot(kLaterMs, this, [this] { ShowNewTiles(); });
    const QRect area = ToQRect(view_.State().Geometry().waveform);
    for (const ColumnSpan& columns : view_.Pictures().Tiles().Collect(view_.Sound()))
        update(canvas_.ShowColumns(view_, columns).parts.translated(area.topLeft()));
}

void SoundViewWidget::ScrollWaveform(const WaveformCanvas::Update& change) {
    const QRect area = ToQRect(view_.State().Geometry().waveform);
    const QRegion moved = paintedColumns_.translated(change.scrolledBy, 0);
    scroll(change.scrolledBy, 0, area);
    update(change.parts.translated(area.topLeft()));
    update((moved + paintedColumns_) & area);
    paintedColumns_ += moved;
    update(ToQRect(CursorRect(view_.State().Geometry().waveform, view_.Zoom().Pixels(),
                              view_.State().Cursor())));
    if (const std::optional<Rectangle> column = view_.Playing().PlayPosition())
        update(ToQRect(*column));
}

void SoundViewWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!view_.State().IsShown()) {
        painter.fillRect(event->rect(), palette().window());
        return;
    }
    FollowWaveform();
    const ViewGeometry& geometry = view_.State().Geometry();
    const QRegion& region = event->region();
    const QRegion waveform = region & ToQRect(geometry.waveform);
    for (const QRect& part : waveform) PaintWaveform(painter, part);
    if (!waveform.isEmpty()) PaintColumns(painter);
    if (region.intersects(ToQRect(geometry.verticalRuler))) PaintVerticalRuler(painter, view_);
    if (region.intersects(ToQRect(geometry.markerStrip))) PaintMarkerStrip(painter, view_);
    if (region.intersects(ToQRect(geometry.horizontalRuler))) PaintHorizontalRuler(painter, view_);
}

void SoundViewWidget::PaintWaveform(QPainter& painter, const QRect& area) {
    const Rectangle& waveform = view_.State().Geometry().waveform;
    const QRect part = area.translated(-waveform.left, -waveform.top);
    if (!view_.Document().IsBeingChanged()) return canvas_.Draw(painter, part, view_);
    painter.fillRect(area, ToQColor(view_.Settings().colours[ColourSlot::kBackground]));
    canvas_.DrawAsItWas(painter, part);
}

void SoundViewWidget::PaintColumns(QPainter& painter) {
    const Rectangle cursor = CursorRect(view_.State().Geometry().waveform, view_.Zoom().Pixels(),
                                        view_.State().Cursor());
    paintedColumns_ = ToQRect(cursor);
    if (!cursor.Empty())
        FillLine(painter, ToQRect(cursor), ToQColor(view_.Settings().colours[ColourSlot::kCursor]));
    const std::optional<Rectangle> play = view_.Playing().PlayPosition();
    if (!play) return;
    paintedColumns_ += ToQRect(*play);
    painter.setCompositionMode(QPainter::CompositionMode_Difference);
    FillLine(painter, ToQRect(*play), Qt::white);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace sonavel
