#include "effects/ui/level_bars.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

namespace sonavel {

namespace {

constexpr double kSpanDecibels = 60;
constexpr double kFall = 0.02;           // of the length, each time
constexpr double kNearFullScale = 0.98;  // from there on the bar warns
constexpr QRgb kGround = qRgb(0x10, 0x28, 0x28);
constexpr QRgb kBar = qRgb(0x2E, 0xC4, 0x7A);
constexpr QRgb kLoudBar = qRgb(0xF0, 0x6A, 0x3C);

double LengthOf(float peak) {
    if (peak <= 0) return 0;
    return std::clamp(1 + 20 * std::log10(double{peak}) / kSpanDecibels, 0.0, 1.0);
}

}  // namespace

LevelBars::LevelBars(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("liveLevels"));
    setAccessibleName(tr("Levels of the left and the right ear"));
    setToolTip(tr("Left ear above, right ear below: 60 dB up to full scale"));
}

void LevelBars::Show(const LivePeaks& peaks) {
    left_ = std::max(LengthOf(peaks.left), left_ - kFall);
    right_ = std::max(LengthOf(peaks.right), right_ - kFall);
    update();
}

void LevelBars::Clear() {
    left_ = right_ = 0;
    update();
}

void LevelBars::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const std::array<double, 2> lengths = {std::max(left_, 0.0), std::max(right_, 0.0)};
    const double high = (height() - 2.0) / 2;
    for (const int side : {0, 1}) {
        const double length = lengths[static_cast<std::size_t>(side)];
        const QRectF place(0, side * (high + 2), width(), high);
        painter.fillRect(place, QColor(kGround));
        const QRectF bar(place.x(), place.y(), place.width() * length, place.height());
        painter.fillRect(bar, QColor(length >= kNearFullScale ? kLoudBar : kBar));
    }
}

}  // namespace sonavel
