#include "platform/qt/palette_icon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace sonavel {

namespace {

constexpr const char* kTextColour = "#404040";
constexpr const char* kAccentColour = "#1f6fd0";

struct IconColours {
    QColor text;
    QColor accent;
};

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

IconColours ColoursFor(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Disabled) {
        const QColor faint = palette.color(QPalette::Disabled, QPalette::WindowText);
        return {faint, faint};
    }
    if (mode == QIcon::Active || mode == QIcon::Selected) {
        const QColor onAccent = palette.color(QPalette::HighlightedText);
        return {onAccent, onAccent};
    }
    // The highlight of a light palette is too dim on a dark one.
    const QColor accent = IsDark(palette) ? QColor(0x6c, 0xb2, 0xff) : QColor(kAccentColour);
    return {palette.color(QPalette::Active, QPalette::WindowText), accent};
}

class PaletteIconEngine : public QIconEngine {
  public:
    PaletteIconEngine(QString path, QByteArray picture)
        : path_(std::move(path)), picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        Draw(*painter, rect, ColoursFor(mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        const IconColours colours = ColoursFor(mode);
        const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                                .arg(path_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(colours.text.rgba())
                                .arg(colours.accent.rgba());
        QPixmap result;
        if (QPixmapCache::find(key, &result)) return result;
        result = QPixmap(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        Draw(painter, QRect(QPoint(), size), colours);
        painter.end();
        QPixmapCache::insert(key, result);
        return result;
    }

    QIconEngine* clone() const override { return new PaletteIconEngine(*this); }

  private:
    void Draw(QPainter& painter, const QRect& rect, const IconColours& colours) const {
        QByteArray coloured = picture_;
        coloured.replace(kTextColour, colours.text.name().toLatin1());
        coloured.replace(kAccentColour, colours.accent.name().toLatin1());
        QSvgRenderer(coloured).render(&painter, QRectF(rect));
    }

    QString path_;
    QByteArray picture_;
};

}  // namespace

QIcon PaletteIcon(const QString& svgPath) {
    QFile file(svgPath);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QIcon(new PaletteIconEngine(svgPath, file.readAll()));
}

}  // namespace sonavel
