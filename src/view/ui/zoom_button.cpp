#include "view/ui/zoom_button.h"

#include <QMouseEvent>
#include <QPainter>

#include "platform/qt/device_line.h"

namespace sonavel {

namespace {

QString NameOf(ZoomButton::Picture picture) {
    switch (picture) {
        case ZoomButton::Picture::kTime:
            return QStringLiteral("TimeZoom");
        case ZoomButton::Picture::kLevel:
            return QStringLiteral("LevelZoom");
        default:
            return QStringLiteral("Zoomer");
    }
}

// The pictures are drawn on a field of this size.
constexpr double kField = 22;

void DrawArrow(QPainter& painter, QPointF tip, QPointF direction) {
    const QPointF side(-direction.y(), direction.x());
    const QPointF back = tip - direction * 2.2;
    painter.drawPolyline(QPolygonF{{back + side * 2.2, tip, back - side * 2.2}});
}

void DrawDoubleArrow(QPainter& painter, QPointF centre, QPointF direction) {
    const QPointF reach = direction * 4.2;
    painter.drawLine(centre - reach, centre + reach);
    DrawArrow(painter, centre + reach, direction);
    DrawArrow(painter, centre - reach, -direction);
}

}  // namespace

ZoomButton::ZoomButton(Picture picture, const QString& toolTip, QWidget* parent)
    : QAbstractButton(parent), picture_(picture) {
    setObjectName(NameOf(picture));
    setToolTip(toolTip);
    setAccessibleName(toolTip.section(u':', 0, 0));
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    // No mouse clicks it, as both buttons act when they go down.
    connect(this, &QAbstractButton::clicked, this, [this] { Q_EMIT Pressed(Qt::LeftButton); });
}

void ZoomButton::mousePressEvent(QMouseEvent* event) {
    down_ = true;
    update();
    Q_EMIT Pressed(event->button());
}

void ZoomButton::mouseReleaseEvent(QMouseEvent*) {
    down_ = false;
    update();
}

void ZoomButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    FillBevel(painter, rect(), palette(), down_ ? Relief::kSunken : Relief::kRaised);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(width() / kField, height() / kField);
    PaintLens(painter);
}

void ZoomButton::PaintLens(QPainter& painter) const {
    const QPointF centre(9.5, 9.5);
    painter.setPen(QPen(palette().color(QPalette::ButtonText), 1.2, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawEllipse(centre, 6.5, 6.5);
    painter.setPen(QPen(palette().color(QPalette::ButtonText), 2.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(14.8, 14.8), QPointF(18.2, 18.2));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1.4, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    switch (picture_) {
        case Picture::kTime:
            DrawDoubleArrow(painter, centre, {1, 0});
            break;
        case Picture::kLevel:
            DrawDoubleArrow(painter, centre, {0, 1});
            break;
        case Picture::kUser:
            painter.drawRect(QRectF(6, 7, 7, 5));
            break;
    }
}

}  // namespace sonavel
