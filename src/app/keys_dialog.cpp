#include "app/keys_dialog.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalBlocker>

#include "platform/command_search.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"
#include "platform/small_file.h"

namespace sonavel {

namespace {

constexpr QSize kKeysSize{620, 520};
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

KeysDialog::KeysDialog(std::vector<KeyRow> rows, ChangedKeys keys, QWidget* parent)
    : FormDialog(tr("Keys"), parent),
      rows_(std::move(rows)),
      keys_(std::move(keys)),
      set_(new QComboBox(this)),
      search_(new QLineEdit(this)),
      table_(new QTableWidget(this)),
      notice_(new QLabel(this)) {
    SetSizing(Sizing::kFree);
    set_->addItems({tr("Sonavel"), tr("Usual"), tr("Own")});
    search_->setPlaceholderText(tr("A few letters of a command"));
    notice_->setWordWrap(true);
    QFormLayout& form = AddForm();
    form.addRow(tr("&Set:"), set_);
    form.addRow(tr("&Find:"), search_);
    AddTable();
    Body().addWidget(notice_);
    AddFileButtons();
    resize(kKeysSize);
    connect(set_, &QComboBox::activated, this, &KeysDialog::TakeSet);
    connect(search_, &QLineEdit::textChanged, this, &KeysDialog::Search);
    connect(table_, &QTableWidget::cellChanged, this, &KeysDialog::TakeKeys);
    ShowKeys();
}

void KeysDialog::AddTable() {
    table_->setAccessibleName(tr("Commands"));
    table_->setColumnCount(kColumns);
    table_->setRowCount(static_cast<int>(rows_.size()));
    table_->setHorizontalHeaderLabels({tr("Command"), tr("Keys")});
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(kCommand, QHeaderView::Stretch);
    table_->setColumnWidth(kKeys, kKeysSize.width() / 3);
    for (int row = 0; row < table_->rowCount(); ++row) {
        auto* name = new QTableWidgetItem(rows_[static_cast<std::size_t>(row)].name);
        name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        table_->setItem(row, kCommand, name);
        table_->setItem(row, kKeys, new QTableWidgetItem);
    }
    Body().addWidget(table_, 1);
}

void KeysDialog::AddFileButtons() {
    auto* importing = Buttons().addButton(tr("&Import..."), QDialogButtonBox::ActionRole);
    auto* exporting = Buttons().addButton(tr("&Export..."), QDialogButtonBox::ActionRole);
    connect(importing, &QPushButton::clicked, this, &KeysDialog::ImportSet);
    connect(exporting, &QPushButton::clicked, this, &KeysDialog::ExportSet);
}

QString KeysDialog::KeysOf(const KeyRow& row) const {
    const auto changed = keys_.find(row.id);
    return Written(changed == keys_.end() ? row.ownKeys : changed->second).value_or(QString());
}

void KeysDialog::ShowKeys() {
    const QSignalBlocker quiet(table_);
    for (int row = 0; row < table_->rowCount(); ++row)
        table_->item(row, kKeys)->setText(KeysOf(rows_[static_cast<std::size_t>(row)]));
    set_->setCurrentIndex(keys_ == SonavelKeys() ? kSonavelSet
                          : keys_ == UsualKeys() ? kUsualSet
                                                 : kOwnSet);
    ShowConflicts();
}

void KeysDialog::TakeKeys(int tableRow) {
    const KeyRow& row = rows_[static_cast<std::size_t>(tableRow)];
    const QString typed = table_->item(tableRow, kKeys)->text();
    const std::optional<QString> written = Written(typed);
    if (written && *written == Written(row.ownKeys))
        keys_.erase(row.id);
    else if (written)
        keys_[row.id] = *written;
    ShowKeys();
    if (!written) notice_->setText(tr("\"%1\" is no key; Ctrl+Shift+E; F5 are two.").arg(typed));
}

void KeysDialog::TakeSet(int index) {
    if (index != kOwnSet) keys_ = index == kUsualSet ? UsualKeys() : SonavelKeys();
    ShowKeys();
}

void KeysDialog::Search(const QString& typed) {
    for (int row = 0; row < table_->rowCount(); ++row) {
        const KeyRow& shown = rows_[static_cast<std::size_t>(row)];
        const bool fits = CommandFit(typed.toStdString(), shown.name.toStdString()) ||
                          KeysOf(shown).contains(typed, Qt::CaseInsensitive);
        table_->setRowHidden(row, !fits);
    }
}

void KeysDialog::ShowConflicts() {
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

void KeysDialog::ImportSet() {
    QFileDialog dialog(this, tr("Import Keys"), {}, tr("Keys (*.keys)"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted) return;
    const auto text = ReadSmallFile(FilePath(dialog.selectedFiles().value(0)), kMostSetBytes);
    const auto keys = text ? KeysFromText(Utf8Text(*text)) : std::nullopt;
    if (keys) keys_ = *keys;
    ShowKeys();
    if (!keys) notice_->setText(tr("The file holds no set of keys."));
}

void KeysDialog::ExportSet() {
    QFileDialog dialog(this, tr("Export Keys"), {}, tr("Keys (*.keys)"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("keys"));
    if (dialog.exec() != QDialog::Accepted) return;
    if (!ReplaceFile(FilePath(dialog.selectedFiles().value(0)), KeysAsText(keys_).toStdString()))
        notice_->setText(tr("The file could not be written."));
}

}  // namespace sonavel
