#include "platform/qt/open_files_dialog.h"

#include <QDir>
#include <QGridLayout>
#include <algorithm>
#include <system_error>

#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"

namespace sonavel {
namespace {

constexpr int kOwnRow = 4;
constexpr std::size_t kMostOddNames = 1000;

QStringList PatternsOf(const QString& filter) {
    return filter.section(u'(', -1).section(u')', 0, 0).split(u' ', Qt::SkipEmptyParts);
}

// The files of the folder whose names are not UTF-8 and fit one of the patterns.
QStringList OddNamesIn(const QString& folder, const QStringList& patterns) {
    namespace fs = std::filesystem;
    QStringList names;
    std::error_code error;
    fs::directory_iterator entry(FilePath(folder), error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        const fs::path name = entry->path().filename();
        std::error_code ignored;
        if (IsValidUtf8(name.native()) || !entry->is_regular_file(ignored)) continue;
        if (!QDir::match(patterns, ShownFileText(FileText(name)))) continue;
        names << FileText(entry->path());
        if (static_cast<std::size_t>(names.size()) == kMostOddNames) break;
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

OpenFilesDialog::OpenFilesDialog(const QString& title, const QString& folder,
                                 const QString& filters, QWidget* parent)
    : QFileDialog(parent, title, folder, filters),
      label_(new QLabel(tr("Names in another e&ncoding:"), this)),
      oddNames_(new QComboBox(this)) {
    setOption(QFileDialog::DontUseNativeDialog);
    setFileMode(QFileDialog::ExistingFiles);
    oddNames_->setObjectName(QStringLiteral("oddNames"));
    oddNames_->setPlaceholderText(tr("Choose one to open it"));
    label_->setBuddy(oddNames_);
    if (auto* grid = qobject_cast<QGridLayout*>(layout())) {
        grid->addWidget(label_, kOwnRow, 0);
        grid->addWidget(oddNames_, kOwnRow, 1);
    }
    connect(oddNames_, &QComboBox::activated, this, &OpenFilesDialog::ChooseOddName);
    connect(this, &QFileDialog::directoryEntered, this, &OpenFilesDialog::ListOddNames);
    connect(this, &QFileDialog::filterSelected, this, &OpenFilesDialog::ListOddNames);
    ListOddNames();
}

void OpenFilesDialog::ListOddNames() {
    odd_ = OddNamesIn(directory().absolutePath(), PatternsOf(selectedNameFilter()));
    oddNames_->clear();
    for (const QString& name : odd_) oddNames_->addItem(ShownFileText(name.section(u'/', -1)));
    oddNames_->setCurrentIndex(-1);
    label_->setVisible(!odd_.isEmpty());
    oddNames_->setVisible(!odd_.isEmpty());
}

void OpenFilesDialog::ChooseOddName(int index) {
    chosenOdd_ = odd_.value(index);
    if (!chosenOdd_.isEmpty()) done(QDialog::Accepted);
}

QStringList OpenFilesDialog::Chosen() const {
    if (!chosenOdd_.isEmpty()) return {chosenOdd_};
    QStringList paths;
    for (const QString& path : selectedFiles()) paths << QDir::cleanPath(path);
    return paths;
}

QStringList OpenFilesDialog::Ask(const QString& title, const QString& folder,
                                 const QString& filters, QWidget* parent) {
    OpenFilesDialog dialog(title, folder, filters, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.Chosen() : QStringList();
}

QString OpenFilesDialog::AskOne(const QString& title, const QString& folder, const QString& filters,
                                QWidget* parent) {
    OpenFilesDialog dialog(title, folder, filters, parent);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return dialog.exec() == QDialog::Accepted ? dialog.Chosen().value(0) : QString();
}

}  // namespace sonavel
