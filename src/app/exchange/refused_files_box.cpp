#include "app/exchange/refused_files_box.h"

#include <QPushButton>

#include "platform/qt/file_names.h"

namespace sonavel {

namespace {

// What a screen has room for.
constexpr std::size_t kMostNamed = 12;
constexpr qsizetype kMostOfName = 80;

QString ShortName(const QString& path) {
    const QString name = ShownFileText(path.section(u'/', -1));
    return name.size() <= kMostOfName ? name : name.left(kMostOfName - 1) + u'…';
}

QString TextOf(const std::vector<RefusedFile>& files) {
    QStringList lines;
    for (const RefusedFile& file : files) {
        if (static_cast<std::size_t>(lines.size()) == kMostNamed) {
            lines << QObject::tr("and %1 more").arg(files.size() - kMostNamed);
            break;
        }
        lines << ShortName(file.path) + QStringLiteral(": ") + file.reason;
    }
    const QString head = files.size() == 1 ? QObject::tr("Open does not read this file:")
                                           : QObject::tr("Open does not read these files:");
    return head + QStringLiteral("\n\n") + lines.join(u'\n') + QStringLiteral("\n\n") +
           QObject::tr("Import does.");
}

}  // namespace

RefusedFilesBox::RefusedFilesBox(const std::vector<RefusedFile>& files, QWidget* parent)
    : MessageBox({.text = TextOf(files), .buttons = QMessageBox::Ok | QMessageBox::Cancel}, parent),
      forGood_(new QCheckBox(tr("&Do so from now on"), this)) {
    setTextFormat(Qt::PlainText);
    button(QMessageBox::Ok)->setText(tr("&Import"));
    setCheckBox(forGood_);
}

bool RefusedFilesBox::AskWhetherToImport() {
    return exec() == QMessageBox::Ok;
}

}  // namespace sonavel
