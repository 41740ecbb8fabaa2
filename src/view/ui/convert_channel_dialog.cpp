#include "view/ui/convert_channel_dialog.h"

#include <QRadioButton>

namespace sonavel {

ConvertChannelDialog::ConvertChannelDialog(ChannelConversion conversion, QWidget* parent)
    : FormDialog(tr("Convert Channel Type"), parent) {
    const bool toStereo = conversion == ChannelConversion::kMonoToStereo;
    // The target's name follows the caption without a blank; scripts that drive windows know it so.
    setWindowTitle(windowTitle() + (toStereo ? tr("Stereo") : tr("Mono")));
    auto* label = new QLabel(toStereo ? tr("Convert to &stereo") : tr("Convert to &mono"), this);
    Body().addWidget(label);
    const auto add = [this](const QString& text, ChannelChoice choice) {
        auto* button = new QRadioButton(text, this);
        choices_.addButton(button, static_cast<int>(choice));
        Body().addWidget(button);
        return button;
    };
    label->setBuddy(add(tr("Left(&L)"), ChannelChoice::kLeft));
    add(tr("Right(&R)"), ChannelChoice::kRight);
    QRadioButton* third = add(toStereo ? tr("&Both") : tr("&Mix"), ChannelChoice::kBothOrMix);
    third->setChecked(true);
    third->setFocus();
}

std::optional<ChannelChoice> AskChannelConversion(ChannelConversion conversion, QWidget* parent) {
    ConvertChannelDialog dialog(conversion, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

}  // namespace sonavel
