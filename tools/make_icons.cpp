// make_icons PICTURE.svg FOLDER SIZE...: draws the picture as PNG files, one a size,
// FOLDER/SIZE.png.
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace {

bool Draw(QSvgRenderer& picture, int size, const QString& path) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    picture.render(&painter);
    painter.end();
    return image.save(path, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fputs("usage: make_icons PICTURE.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer picture(QString::fromLocal8Bit(argv[1]));
    for (int i = 3; i < argc; ++i) {
        const QString size = QString::fromLocal8Bit(argv[i]);
        const QString path = QString::fromLocal8Bit(argv[2]) + u'/' + size + QStringLiteral(".png");
        if (picture.isValid() && size.toInt() > 0 && Draw(picture, size.toInt(), path)) continue;
        std::fprintf(stderr, "make_icons: cannot draw %s\n", qPrintable(path));
        return 1;
    }
    return 0;
}
