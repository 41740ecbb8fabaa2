#include "app/keys_page.h"

#include <QBoxLayout>
#include <QFileDialog>
#include <QFormLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalBlocker>

#include "platform/command_search.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"
#include "platform/small_file.h"

namespace sonavel {

namespace {

constexpr int kKeysWidth = 200;
constexpr int kTableHeight = 240;
constexpr std::size_t kMostSetBytes = 1 << 20;
enum KeysColumn { kCommand, kKeys, kColumns };
enum Set { kSonavelSet, kUsualSet, kOwnSet };

// In one way of writing, so that equal keys have equal texts; nothing for what is no key.
std::optional<QString> Written(const QString& typed) {
    QStringList keys;
    for (const QKeySequence& key : ShortcutsFromText(typed.toUtf8().constData())) {
        if (key.isEmpty() || key[0].key() == Qt::Key_unknown) return std::nullopt;
        keys << key.toString(QKeySequence::PortableText);
    }
    return keys.join(QStringLiteral("; "));
}

}  // namespace

KeysPage::KeysPage(std::vector<KeyRow> rows, QWidget* parent)
    : QWidget(parent),
      rows_(std::move(rows)),
      set_(new QComboBox(this)),
      search_(new QLineEdit(this)),
      table_(new QTableWidget(this)),
      notice_(new QLabel(this)) {
    auto* column = new QVBoxLayout(this);
    AddFields(*column);
    AddTable(*column);
    auto* below = new QHBoxLayout;
    below->addWidget(notice_, 1);
    AddFileButtons(*below);
    column->addLayout(below);
    notice_->setWordWrap(true);
    connect(set_, &QComboBox::activated, this, &KeysPage::TakeSet);
    connect(search_, &QLineEdit::textChanged, this, &KeysPage::Search);
    // Tab goes on to the next control, not to the next of hundreds of cells.
    table_->setTabKeyNavigation(false);
    connect(table_, &QTableWidget::cellChanged, this, &KeysPage::TakeKeys);
    ShowKeys();
}

void KeysPage::AddFields(QBoxLayout& column) {
    set_->addItems({tr("Sonavel"), tr("Usual"), tr("Own")});
    set_->setToolTip(tr("The keys of this program, those of other editors, or your own."));
    search_->setPlaceholderText(tr("A few letters of a command"));
    search_->setToolTip(tr("Shows the commands alone that hold these letters or this key."));
    auto* form = new QFormLayout;
    form->addRow(tr("&Set:"), set_);
    form->addRow(tr("F&ind:"), search_);
    column.addLayout(form);
}

void KeysPage::AddTable(QBoxLayout& column) {
    table_->setAccessibleName(tr("Commands"));
    table_->setToolTip(tr("Each command with its keys; a double click changes them."));
    table_->setColumnCount(kColumns);
    table_->setRowCount(static_cast<int>(rows_.size()));
    table_->setHorizontalHeaderLabels({tr("Command"), tr("Keys")});
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(kCommand, QHeaderView::Stretch);
    table_->setColumnWidth(kKeys, kKeysWidth);
    table_->setMinimumHeight(kTableHeight);
    for (int row = 0; row < table_->rowCount(); ++row) {
        auto* name = new QTableWidgetItem(rows_[static_cast<std::size_t>(row)].name);
        name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        table_->setItem(row, kCommand, name);
        table_->setItem(row, kKeys, new QTableWidgetItem);
    }
    column.addWidget(table_, 1);
}

void KeysPage::AddFileButtons(QBoxLayout& row) {
    auto* importing = new QPushButton(tr("I&mport..."), this);
    auto* exporting = new QPushButton(tr("&Export..."), this);
    importing->setToolTip(tr("Takes the keys of a file."));
    exporting->setToolTip(tr("Writes these keys to a file."));
    for (QPushButton* button : {importing, exporting}) {
        button->setAutoDefault(false);
        row.addWidget(button, 0, Qt::AlignTop);
    }
    connect(importing, &QPushButton::clicked, this, &KeysPage::ImportSet);
    connect(exporting, &QPushButton::clicked, this, &KeysPage::ExportSet);
}

void KeysPage::SetKeys(const ChangedKeys& keys) {
    keys_ = keys;
    ShowKeys();
}

QString KeysPage::KeysOf(const KeyRow& row) const {
    const auto changed = keys_.find(row.id);
    return Written(changed == keys_.end() ? row.ownKeys : changed->second).value_or(QString());
}

void KeysPage::ShowKeys() {
    const QSignalBlocker quiet(table_);
    for (int row = 0; row < table_->rowCount(); ++row)
        table_->item(row, kKeys)->setText(KeysOf(rows_[static_cast<std::size_t>(row)]));
    set_->setCurrentIndex(keys_ == SonavelKeys() ? kSonavelSet
                          : keys_ == UsualKeys() ? kUsualSet
                                                 : kOwnSet);
    ShowConflicts();
}

void KeysPage::TakeKeys(int tableRow) {
    const KeyRow& row = rows_[static_cast<std::size_t>(tableRow)];
    const QString typed = table_->item(tableRow, kKeys)->text();
    const std::optional<QString> written = Written(typed);
    if (written && *written == Written(row.ownKeys))
        keys_.erase(row.id);
    else if (written)
        keys_[row.id] = *written;
    ShowKeys();
    Q_EMIT Edited();
    if (!written) notice_->setText(tr("\"%1\" is no key; Ctrl+Shift+E; F5 are two.").arg(typed));
}

void KeysPage::TakeSet(int index) {
    if (index != kOwnSet) keys_ = index == kUsualSet ? UsualKeys() : SonavelKeys();
    ShowKeys();
    Q_EMIT Edited();
}

void KeysPage::Search(const QString& typed) {
    for (int row = 0; row < table_->rowCount(); ++row) {
        const KeyRow& shown = rows_[static_cast<std::size_t>(row)];
        const bool fits = CommandFit(typed.toStdString(), shown.name.toStdString()) ||
                          KeysOf(shown).contains(typed, Qt::CaseInsensitive);
        table_->setRowHidden(row, !fits);
    }
}

void KeysPage::ShowConflicts() {
    std::map<QString, const KeyRow*> owners;
    QStringList conflicts;
    for (const KeyRow& row : rows_)
        for (const QString& key : KeysOf(row).split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
            const auto [owner, isFirst] = owners.try_emplace(key, &row);
            // The tables have the space bar twice, and mean it.
            if (!isFirst && (keys_.contains(row.id) || keys_.contains(owner->second->id)))
                conflicts << tr("%1 stands for \"%2\" and \"%3\".")
                                 .arg(key, owner->second->name, row.name);
        }
    notice_->setText(conflicts.join(u'\n'));
}

void KeysPage::ImportSet() {
    QFileDialog dialog(this, tr("Import Keys"), {}, tr("Keys (*.keys)"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted) return;
    const auto text = ReadSmallFile(FilePath(dialog.selectedFiles().value(0)), kMostSetBytes);
    const auto keys = text ? KeysFromText(Utf8Text(*text)) : std::nullopt;
    if (keys) keys_ = *keys;
    ShowKeys();
    Q_EMIT Edited();
    if (!keys) notice_->setText(tr("The file holds no set of keys."));
}

void KeysPage::ExportSet() {
    QFileDialog dialog(this, tr("Export Keys"), {}, tr("Keys (*.keys)"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("keys"));
    if (dialog.exec() != QDialog::Accepted) return;
    if (!ReplaceFile(FilePath(dialog.selectedFiles().value(0)), KeysAsText(keys_).toStdString()))
        notice_->setText(tr("The file could not be written."));
}

}  // namespace sonavel
