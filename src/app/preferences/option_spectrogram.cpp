#include "app/preferences/option_spectrogram.h"

#include <QGroupBox>

#include "view/ui/spectrogram_fields.h"

namespace sonavel {

COptionSpectrogram::COptionSpectrogram(QWidget* parent) : OptionPage(parent) {
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeView());
    column->addWidget(MakeLook());
    column->addStretch(1);
}

QWidget* COptionSpectrogram::MakeView() {
    auto* group = new QGroupBox(tr("Sounds"), this);
    auto* form = new QFormLayout(group);
    form->addRow(
        tr("&First shown as:"),
        AddChoice(SettingId::kSoundPicture, {tr("Waveform"), tr("Spectrogram"), tr("Both")}));
    form->addRow(tr("O&verview:"),
                 AddChoice(SettingId::kOverview, {tr("Of sounds longer than ten minutes"),
                                                  tr("Of all sounds"), tr("Of no sound")}));
    return group;
}

QWidget* COptionSpectrogram::MakeLook() {
    auto* group = new QGroupBox(tr("Spectrograms"), this);
    auto* fields = new SpectrogramFields(*new QFormLayout(group), this);
    connect(fields, &SpectrogramFields::Edited, this, &OptionPage::Edited);
    for (const SettingControl& field : fields->Controls()) AddControl(field);
    return group;
}

}  // namespace sonavel
