#include "app/logo_picture.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <cmath>

namespace sonavel {

namespace {

// The drawing's own units; the painter is scaled to the wanted size.
constexpr QSizeF kCanvas{460, 230};
constexpr int kBars = 62;
constexpr double kBarSpacing = 6.4;
constexpr double kMiddle = 140;
constexpr double kHighestBar = 46;

// 0 to 1: two swells of a struck sound with a finer movement over them.
double BarHeight(int bar) {
    const double t = static_cast<double>(bar) / kBars;
    const double swell = std::exp(-9 * (t - 0.28) * (t - 0.28) * 4) +
                         0.75 * std::exp(-14 * (t - 0.72) * (t - 0.72) * 4);
    const double ripple = 0.62 + 0.38 * std::sin(bar * 1.7) * std::sin(bar * 0.53 + 1);
    return std::min(1.0, 0.06 + swell * ripple);
}

void PaintBackground(QPainter& painter) {
    QLinearGradient night(0, 0, 0, kCanvas.height());
    night.setColorAt(0, QColor(0x1b, 0x3a, 0x5c));
    night.setColorAt(1, QColor(0x0a, 0x14, 0x20));
    painter.fillRect(QRectF(QPointF(), kCanvas), night);
}

void PaintWave(QPainter& painter, int index) {
    const double left = (kCanvas.width() - (kBars - 1) * kBarSpacing) / 2;
    QLinearGradient colours(left, 0, kCanvas.width() - left, 0);
    colours.setColorAt(0, QColor(0x38, 0xe0, 0xa0));
    colours.setColorAt(1, QColor(0x4a, 0xa8, 0xff));
    painter.setPen(QPen(colours, 3.2, Qt::SolidLine, Qt::RoundCap));
    const int risen = kBars * index / (kLogoPictures - 1);
    for (int bar = 0; bar < kBars; ++bar) {
        const double x = left + bar * kBarSpacing;
        const double height = bar < risen ? kHighestBar * BarHeight(bar) : 0.5;
        painter.drawLine(QPointF(x, kMiddle - height), QPointF(x, kMiddle + height));
    }
}

QFont TextFont(int pixels, QFont::Weight weight) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

void PaintWords(QPainter& painter) {
    painter.setPen(Qt::white);
    painter.setFont(TextFont(42, QFont::DemiBold));
    painter.drawText(QRectF(34, 14, 300, 60), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Sonavel"));
    // Where the face is not installed, whatever stands in for it serves.
    QFont small(QStringLiteral("Arial"));
    small.setPixelSize(13);
    painter.setFont(small);
    painter.setPen(QColor(0xa9, 0xc4, 0xdf));
    painter.drawText(QRectF(36, 196, 388, 22), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Sound Editor"));
    painter.drawText(QRectF(36, 196, 388, 22), Qt::AlignRight | Qt::AlignVCenter,
                     QStringLiteral("Version 1.2 Beta"));
}

}  // namespace

QPixmap LogoPicture(int index, const QSize& size, qreal devicePixelRatio) {
    QPixmap picture(size * devicePixelRatio);
    picture.setDevicePixelRatio(devicePixelRatio);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width() / kCanvas.width(), size.height() / kCanvas.height());
    PaintBackground(painter);
    PaintWave(painter, index);
    PaintWords(painter);
    return picture;
}

}  // namespace sonavel
