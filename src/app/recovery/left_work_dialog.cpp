#include "app/recovery/left_work_dialog.h"

#include <QHBoxLayout>
#include <QHeaderView>

namespace sonavel {
namespace {

enum Column {
    kWaveformColumn,
    kNameColumn,
    kTimeColumn,
    kLengthColumn,
    kEditsColumn,
    kChoiceColumn,
    kColumnCount
};

constexpr QSize kIconSize{120, 32};
constexpr QSize kListSize{760, 220};

}  // namespace

LeftWorkDialog::LeftWorkDialog(const std::vector<LeftWorkRow>& rows, QWidget* parent)
    : FormDialog(tr("Recover Unsaved Work"), parent), list_(new QTreeWidget(this)) {
    Body().addWidget(new QLabel(tr("The editor ended before these sounds were saved."), this));
    list_->setObjectName(QStringLiteral("leftWork"));
    list_->setColumnCount(kColumnCount);
    list_->setHeaderLabels(
        {tr("Sound"), tr("Name"), tr("Last change"), tr("Length"), tr("Edits"), tr("What to do")});
    list_->setRootIsDecorated(false);
    list_->setSelectionMode(QAbstractItemView::NoSelection);
    list_->setIconSize(kIconSize);
    list_->setMinimumSize(kListSize);
    for (const LeftWorkRow& row : rows) AddRow(row);
    for (int column = 0; column < kColumnCount; ++column) list_->resizeColumnToContents(column);
    Body().addWidget(list_);
    AddButtonsForAll();
    SetSizing(Sizing::kFree);
}

void LeftWorkDialog::AddRow(const LeftWorkRow& row) {
    auto* item = new QTreeWidgetItem(list_);
    if (!row.waveform.isNull()) item->setIcon(kWaveformColumn, QIcon(row.waveform));
    item->setSizeHint(kWaveformColumn, kIconSize + QSize(8, 4));
    item->setText(kNameColumn, row.name);
    item->setToolTip(kNameColumn, row.path);
    item->setText(kTimeColumn, row.time);
    item->setText(kLengthColumn, row.isReadable ? row.length : tr("damaged"));
    if (row.isReadable) item->setText(kEditsColumn, QString::number(row.edits));
    auto* choice = new QComboBox(list_);
    if (row.isReadable) choice->addItem(tr("Recover"), static_cast<int>(LeftWorkChoice::kRecover));
    choice->addItem(tr("Discard"), static_cast<int>(LeftWorkChoice::kDiscard));
    choice->addItem(tr("Later"), static_cast<int>(LeftWorkChoice::kLater));
    if (!row.isReadable) choice->setCurrentIndex(choice->count() - 1);
    choice->setAccessibleName(row.name);
    list_->setItemWidget(item, kChoiceColumn, choice);
    choices_.push_back(choice);
}

void LeftWorkDialog::AddButtonsForAll() {
    auto* line = new QHBoxLayout;
    const auto add = [&](const QString& text, LeftWorkChoice choice) {
        auto* button = new QPushButton(text, this);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, choice] { ChooseForAll(choice); });
        line->addWidget(button);
    };
    add(tr("&Recover All"), LeftWorkChoice::kRecover);
    add(tr("&Discard All"), LeftWorkChoice::kDiscard);
    add(tr("All &Later"), LeftWorkChoice::kLater);
    line->addStretch();
    Body().addLayout(line);
}

// What cannot be recovered is left for later by that.
void LeftWorkDialog::ChooseForAll(LeftWorkChoice choice) {
    for (QComboBox* one : choices_) {
        const int index = one->findData(static_cast<int>(choice));
        one->setCurrentIndex(index >= 0 ? index : one->count() - 1);
    }
}

std::vector<LeftWorkChoice> LeftWorkDialog::Choices() const {
    std::vector<LeftWorkChoice> all;
    for (const QComboBox* one : choices_)
        all.push_back(result() == Accepted ? static_cast<LeftWorkChoice>(one->currentData().toInt())
                                           : LeftWorkChoice::kLater);
    return all;
}

}  // namespace sonavel
