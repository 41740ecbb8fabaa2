#include "view/ui/qt_values.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <algorithm>

namespace sonavel {

namespace {

constexpr int kRulerFontPixels = 11;
constexpr int kDesktopFontPixels = 12;
// Between the ticks of the horizontal ruler and its lower edge.
constexpr int kMostDigitRows = 12;
// Right of the ticks of the vertical ruler. A label may be drawn narrower, down to this share.
constexpr int kColumnWidth = 15;
constexpr double kNarrowest = 0.7;

bool HasRoom(const QFont& font, RulerRoom room) {
    const QFontMetricsF metrics(font);
    if (room == RulerRoom::kRow)
        return metrics.tightBoundingRect(QStringLiteral("0123456789")).height() <= kMostDigitRows;
    return metrics.horizontalAdvance(QStringLiteral("-80")) * kNarrowest <= kColumnWidth;
}

}  // namespace

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

int GrownWithDesktop(int pixels) {
    const int desktop = QFontInfo(QApplication::font()).pixelSize();
    return std::max(pixels * desktop / kDesktopFontPixels, pixels);
}

QFont RulerFont(RulerRoom room) {
    QFont font({QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"),
                QStringLiteral("Nimbus Roman"), QStringLiteral("DejaVu Serif"),
                QStringLiteral("NanumMyeongjo")});
    font.setStyleHint(QFont::Serif);
    font.setWeight(QFont::Normal);
    int pixels = GrownWithDesktop(kRulerFontPixels);
    do {
        font.setPixelSize(pixels--);
    } while (pixels >= kRulerFontPixels && !HasRoom(font, room));
    return font;
}

TextWidth WidthIn(const QFont& font) {
    return [metrics = QFontMetrics(font)](std::string_view text) {
        return metrics.horizontalAdvance(ToQString(text));
    };
}

}  // namespace sonavel
