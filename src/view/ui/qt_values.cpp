#include "view/ui/qt_values.h"

#include <QFontMetrics>

namespace sonavel {

namespace {

constexpr int kRulerFontPixels = 11;

}  // namespace

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QFont RulerFont() {
    QFont font({QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"),
                QStringLiteral("Nimbus Roman"), QStringLiteral("DejaVu Serif"),
                QStringLiteral("NanumMyeongjo")});
    font.setStyleHint(QFont::Serif);
    font.setPixelSize(kRulerFontPixels);
    font.setWeight(QFont::Normal);
    return font;
}

TextWidth WidthIn(const QFont& font) {
    return [metrics = QFontMetrics(font)](std::string_view text) {
        return metrics.horizontalAdvance(ToQString(text));
    };
}

}  // namespace sonavel
