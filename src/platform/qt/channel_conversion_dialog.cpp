#include "platform/qt/channel_conversion_dialog.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace sonavel {

ChannelConversionDialog::ChannelConversionDialog(ChannelConversion conversion, QWidget* parent)
    : QDialog(parent), choices_(new QButtonGroup(this)) {
    const bool toStereo = conversion == ChannelConversion::kMonoToStereo;
    // The word follows without a blank.
    setWindowTitle(QStringLiteral("Convert Channel Type") +
                   (toStereo ? QStringLiteral("Stereo") : QStringLiteral("Mono")));
    auto* group = new QGroupBox(toStereo ? tr("Convert to &stereo") : tr("Convert to &mono"), this);
    auto* column = new QVBoxLayout(group);
    const QString texts[] = {tr("Left(&L)"), tr("Right(&R)"), toStereo ? tr("&Both") : tr("&Mix")};
    for (int id = 0; id < 3; ++id) {
        auto* button = new QRadioButton(texts[id], group);
        choices_->addButton(button, id);
        column->addWidget(button);
    }
    choices_->button(static_cast<int>(ChannelChoice::kBothOrMix))->setChecked(true);
    choices_->button(static_cast<int>(ChannelChoice::kBothOrMix))->setFocus();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* outer = new QVBoxLayout(this);
    outer->setSpacing(12);
    outer->addWidget(group);
    outer->addWidget(buttons);
    setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + 160);
}

}  // namespace sonavel
