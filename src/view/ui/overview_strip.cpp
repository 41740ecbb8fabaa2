#include "view/ui/overview_strip.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "platform/qt/device_line.h"
#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr int kHeight = 40;
constexpr int kDimming = 120;  // of 255, beside the frame

}  // namespace

OverviewStrip::OverviewStrip(SoundViewWidget& window, QWidget* parent)
    : QWidget(parent), view_(window.View()) {
    setAccessibleName(tr("Overview"));
    setToolTip(tr("The whole sound; drag the frame, or click where to go"));
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent);
    const auto repaint = [this] { update(); };
    connect(&window, &SoundViewWidget::ScrollChanged, this, repaint);
    connect(&window, &SoundViewWidget::SelectionChanged, this, repaint);
    connect(&window, &SoundViewWidget::StatusTextChanged, this, repaint);
    connect(&window, &SoundViewWidget::ColoursChanged, this, repaint);
    connect(&window, &SoundViewWidget::OverviewChanged, this, &OverviewStrip::FollowView);
}

QSize OverviewStrip::sizeHint() const {
    return {kHeight, kHeight};
}

void OverviewStrip::FollowView() {
    setVisible(view_.Pictures().ShowsOverview());
    update();
}

void OverviewStrip::DrawWaveform() {
    if (view_.Document().IsBeingChanged() && !image_.isNull()) return;
    const QSize device = (QSizeF(size()) * devicePixelRatioF()).toSize();
    const ColourTable& colours = view_.Settings().colours;
    const BlockExtremes& extremes = view_.Extremes();
    if (image_.size() == device && revision_ == extremes.Revision() && colours_ == colours) return;
    revision_ = extremes.Revision();
    colours_ = colours;
    image_ = QImage(device, QImage::Format_RGB32);
    image_.fill(ToQColor(colours[ColourSlot::kBackground]));
    const QRgb pen = ToQColor(colours[ColourSlot::kWaveform]).rgb();
    const auto columns = OverviewColumns(view_.Sound(), extremes, device.width(), device.height());
    for (int x = 0; x < static_cast<int>(columns.size()); ++x) {
        const OverviewColumn& column = columns[static_cast<std::size_t>(x)];
        for (int y = column.top; y < column.bottom; ++y)
            reinterpret_cast<QRgb*>(image_.scanLine(y))[x] = pen;
    }
}

void OverviewStrip::paintEvent(QPaintEvent*) {
    DrawWaveform();
    QPainter painter(this);
    painter.drawImage(QRectF(rect()), image_);
    PaintPlaces(painter);
    PaintFrame(painter);
    FillLine(painter, QRect(0, height() - 1, width(), 1),
             ToQColor(view_.Settings().colours[ColourSlot::kLaneSeparator]));
}

void OverviewStrip::PaintPlaces(QPainter& painter) const {
    const ColourTable& colours = view_.Settings().colours;
    const auto x = [&](std::int64_t frame) {
        return OverviewX(frame, view_.FrameCount(), width());
    };
    const Selection selection = view_.State().GetSelection();
    if (!selection.IsEmpty()) {
        QColor colour = ToQColor(colours[ColourSlot::kSelectedWaveform]);
        colour.setAlpha(kDimming);
        const int left = x(selection.start);
        painter.fillRect(left, 0, std::max(x(selection.end) - left, 1), height(), colour);
    }
    const auto column = [&](int left, ColourSlot slot) {
        FillLine(painter, QRect(left, 0, 1, height()), ToQColor(colours[slot]));
    };
    column(std::min(x(view_.State().Cursor()), width() - 1), ColourSlot::kCursor);
    if (const auto playing = view_.Playing().PlayFrame())
        column(x(*playing), ColourSlot::kCentreLine);
}

void OverviewStrip::PaintFrame(QPainter& painter) const {
    const OverviewFrame frame = FrameOfOverview(view_.Zoom().Pixels(), ShownWidth(), width());
    if (frame.right <= frame.left) return;
    QColor dim = ToQColor(view_.Settings().colours[ColourSlot::kBackground]);
    dim.setAlpha(kDimming);
    painter.fillRect(0, 0, frame.left, height(), dim);
    painter.fillRect(frame.right, 0, width() - frame.right, height(), dim);
    FillFrame(painter, QRect(frame.left, 0, frame.right - frame.left, height() - 1),
              ToQColor(view_.Settings().colours[ColourSlot::kEndOfSound]));
}

void OverviewStrip::ScrollTo(std::optional<std::int64_t> position) {
    if (position) view_.Zoom().ScrollHorizontallyTo(*position);
}

void OverviewStrip::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    ScrollTo(
        drag_.Press(view_.Zoom().Pixels(), ShownWidth(), width(), event->position().toPoint().x()));
}

void OverviewStrip::mouseMoveEvent(QMouseEvent* event) {
    ScrollTo(drag_.Move(view_.Zoom().Pixels(), width(), event->position().toPoint().x()));
}

void OverviewStrip::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) drag_.Release();
}

}  // namespace sonavel
