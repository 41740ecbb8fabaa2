#include "app/recent_files.h"

#include <QAction>

#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"
#include "platform/qt/person_settings.h"

namespace sonavel {

namespace {

constexpr const char* kGroup = "Recent File List";

QString KeyOf(qsizetype index) {
    return QStringLiteral("File%1").arg(index + 1);
}

// The first nine have their number as access key, and an "&" in a name is none.
QString MenuTextOf(qsizetype index, const QString& file) {
    QString path = ShownFileText(file);
    path.replace(QStringLiteral("&"), QStringLiteral("&&"));
    const QString key = index < 9 ? QStringLiteral("&%1").arg(index + 1) : QStringLiteral("1&0");
    return key + QStringLiteral("  ") + path;
}

// The file of settings holds text, and bytes as they are only under a type of their own.
QVariant StoredForm(const QString& file) {
    const std::string bytes = FilePath(file).native();
    return IsValidUtf8(bytes) ? QVariant(file) : QVariant(QByteArray::fromStdString(bytes));
}

QString FileIn(const QVariant& stored) {
    if (stored.typeId() != QMetaType::QByteArray) return stored.toString();
    return FileText(stored.toByteArray().toStdString());
}

}  // namespace

RecentFiles::RecentFiles(QObject* parent) : QObject(parent) {
    Load();
}

void RecentFiles::Add(const QString& absolutePath) {
    Load();  // another running editor may have added some
    paths_.removeAll(absolutePath);
    paths_.prepend(absolutePath);
    while (paths_.size() > kMostFiles) paths_.removeLast();
    Store();
}

void RecentFiles::Remove(const QString& absolutePath) {
    Load();
    if (paths_.removeAll(absolutePath) > 0) Store();
}

void RecentFiles::ShowIn(QMenu& menu) {
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { Fill(menu); });
    Fill(menu);
}

void RecentFiles::Load() {
    PersonSettings settings;
    settings.sync();
    settings.beginGroup(kGroup);
    paths_.clear();
    for (qsizetype i = 0; i < kMostFiles; ++i) {
        const QString path = FileIn(settings.value(KeyOf(i)));
        if (!path.isEmpty() && !paths_.contains(path)) paths_ << path;
    }
}

void RecentFiles::Store() const {
    PersonSettings settings;
    settings.beginGroup(kGroup);
    settings.remove(QString());
    for (qsizetype i = 0; i < paths_.size(); ++i)
        settings.setValue(KeyOf(i), StoredForm(paths_[i]));
}

void RecentFiles::Fill(QMenu& menu) {
    Load();
    menu.clear();
    for (qsizetype i = 0; i < paths_.size(); ++i) {
        QAction* action = menu.addAction(MenuTextOf(i, paths_[i]));
        action->setStatusTip(tr("Open this file"));
        connect(action, &QAction::triggered, this,
                [this, path = paths_[i]] { Q_EMIT Chosen(path); });
    }
    if (paths_.isEmpty()) menu.addAction(tr("No recent files"))->setEnabled(false);
}

}  // namespace sonavel
