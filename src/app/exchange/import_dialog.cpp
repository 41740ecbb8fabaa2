#include "app/exchange/import_dialog.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

#include "platform/qt/utf8_text.h"

namespace sonavel {

ImportDialog::ImportDialog(const ImportQuestion& question, QWidget* parent)
    : FormDialog(tr("Import"), parent) {
    auto* name = new QLabel(
        question.fileName + QStringLiteral("\n") + Utf8Text(DescriptionText(question.description)),
        this);
    name->setTextFormat(Qt::PlainText);
    Body().addWidget(name);
    if (question.depth == ImportQuestion::Depth::kAsked) AddDepths();
    if (HasManyChannels(question.description)) AddChannels(question.description);
    if (question.place == ImportQuestion::Place::kMoreFollow) {
        forAll_ = new QCheckBox(tr("Do the same with the &files that follow"), this);
        Body().addWidget(forAll_);
    }
    Buttons().button(QDialogButtonBox::Ok)->setText(tr("&Import"));
}

void ImportDialog::AddDepths() {
    auto* group = new QGroupBox(tr("Samples"), this);
    auto* column = new QVBoxLayout(group);
    auto* keep = new QRadioButton(tr("&Keep 32-bit float"), group);
    auto* round = new QRadioButton(tr("&Round to 16 bits"), group);
    round->setToolTip(
        tr("With dither, which turns the error of rounding into an even, quiet noise."));
    keep->setChecked(true);
    depths_ = new QButtonGroup(this);
    depths_->addButton(keep, static_cast<int>(ImportDepth::kKeep));
    depths_->addButton(round, static_cast<int>(ImportDepth::kRoundTo16));
    column->addWidget(keep);
    column->addWidget(round);
    Body().addWidget(group);
}

void ImportDialog::AddChannels(const SoundFileDescription& description) {
    rows_ = ChannelChoices(description.speakers, description.channels);
    channels_ = new QComboBox(this);
    channels_->setObjectName(QStringLiteral("channels"));
    for (const ChannelChoiceRow& row : rows_) channels_->addItem(Utf8Text(row.text));
    AddForm(tr("A sound here has one or two channels")).addRow(tr("&Channels:"), channels_);
}

ImportChoice ImportDialog::Choice() const {
    ImportChoice choice;
    if (depths_) choice.depth = static_cast<ImportDepth>(depths_->checkedId());
    if (channels_ && channels_->currentIndex() >= 0)
        choice.matrix = rows_[static_cast<std::size_t>(channels_->currentIndex())].matrix;
    return choice;
}

}  // namespace sonavel
