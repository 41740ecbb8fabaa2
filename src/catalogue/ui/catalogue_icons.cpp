#include "catalogue/ui/catalogue_icons.h"

#include <QFile>
#include <QtGlobal>

#include "platform/qt/palette_icon.h"

// Resources of a static library are linked in by a call from outside every namespace.
static void InitialiseCataloguePictures() {
    Q_INIT_RESOURCE(catalogue);
}

namespace sonavel {

QIcon CatalogueIcon(const char* name) {
    InitialiseCataloguePictures();
    const QString own = QStringLiteral(":/catalogue/%1.svg").arg(QLatin1String(name));
    if (QFile::exists(own)) return PaletteIcon(own);
    return PaletteIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
}

}  // namespace sonavel
