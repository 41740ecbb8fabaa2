#include "meter/ui/play_meter.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "platform/qt/device_line.h"
#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr int kFrameWidth = 1;
constexpr int kLabelPixels = 10;

// From the empty end to the full one.
QLinearGradient MeterGradient(QPointF empty, QPointF full) {
    QLinearGradient gradient(empty, full);
    gradient.setColorAt(0.00, QColor(0x0f, 0x7a, 0x4c));
    gradient.setColorAt(0.45, QColor(0x2f, 0xb6, 0x55));
    gradient.setColorAt(0.70, QColor(0xd2, 0xd0, 0x36));
    gradient.setColorAt(0.88, QColor(0xf0, 0x8a, 0x24));
    gradient.setColorAt(1.00, QColor(0xe0, 0x2d, 0x2a));
    return gradient;
}

// A rim of the background keeps the text legible on the bar.
void DrawRimmedText(QPainter& painter, const QRect& area, const QString& text,
                    const MeterColours& colours) {
    constexpr int kFlags = Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip;
    painter.setPen(colours.background);
    for (const int dy : {-1, 0, 1})
        for (const int dx : {-1, 0, 1}) painter.drawText(area.translated(dx, dy), kFlags, text);
    painter.setPen(colours.label);
    painter.drawText(area, kFlags, text);
}

}  // namespace

PlayMeter::PlayMeter(const QString& name, QWidget* parent) : QWidget(parent) {
    setObjectName(name);
    setAccessibleName(name);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QFont PlayMeter::LabelFont() {
    QFont font({QStringLiteral("DejaVu Sans"), QStringLiteral("NanumGothic")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(GrownWithDesktop(kLabelPixels));
    font.setBold(true);
    return font;
}

Rectangle PlayMeter::Inner() const {
    return {kFrameWidth, kFrameWidth, width() - kFrameWidth, height() - kFrameWidth};
}

int PlayMeter::Filled() const {
    const Rectangle inner = Inner();
    const bool upwards = direction_ == MeterDirection::kUpwards;
    return FilledLength(level_, scale_, upwards ? inner.Height() : inner.Width());
}

void PlayMeter::SetLevel(const MeterLevel& level) {
    if (level == level_) return;
    const int before = Filled();
    level_ = level;
    const MeterBand band = ChangedBand(before, Filled());
    if (band.start < band.end) update(ToQRect(BandIn(Inner(), direction_, band)));
    if (underMouse() && QToolTip::isVisible())
        QToolTip::showText(QCursor::pos(), ToQString(MeterReadOut(level_)), this);
}

void PlayMeter::SetScale(MeterScale scale) {
    scale_ = scale;
    update();
}

void PlayMeter::SetShowLabels(bool show) {
    showLabels_ = show;
    update();
}

void PlayMeter::SetDirection(MeterDirection direction) {
    direction_ = direction;
    update();
}

void PlayMeter::SetColours(const MeterColours& colours) {
    colours_ = colours;
    update();
}

bool PlayMeter::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const QPoint position = static_cast<QHelpEvent*>(event)->globalPos();
        QToolTip::showText(position, ToQString(MeterReadOut(level_)), this);
        return true;
    }
    return QWidget::event(event);
}

void PlayMeter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), colours_.background);
    FillBevel(painter, rect(), palette(), Relief::kSunken);
    PaintBar(painter);
    if (showLabels_) PaintTicks(painter);
}

void PlayMeter::PaintBar(QPainter& painter) const {
    const int filled = Filled();
    if (filled == 0) return;
    const QRect inner = ToQRect(Inner());
    // The gradient belongs to the whole meter; a bar shows the part of it from the empty end.
    const QRectF area(inner);
    const bool upwards = direction_ == MeterDirection::kUpwards;
    const QLinearGradient gradient = upwards ? MeterGradient(area.bottomLeft(), area.topLeft())
                                             : MeterGradient(area.topLeft(), area.topRight());
    painter.fillRect(ToQRect(BandIn(Inner(), direction_, {0, filled})), gradient);
}

void PlayMeter::PaintTicks(QPainter& painter) const {
    const Rectangle inner = Inner();
    const QFont font = LabelFont();
    const MeterTextSize size{WidthIn(font), QFontMetrics(font).height()};
    const auto ticks = LayOutMeterTicks(inner, direction_, scale_, size);
    painter.setFont(font);
    for (const MeterTick& tick : ticks) {
        const MeterBand line{tick.place, tick.place + 1};
        FillLine(painter, ToQRect(BandIn(inner, direction_, line)), colours_.tick);
    }
    for (const MeterTick& tick : ticks)
        if (!tick.labelArea.Empty())
            DrawRimmedText(painter, ToQRect(tick.labelArea), ToQString(tick.label), colours_);
}

}  // namespace sonavel
