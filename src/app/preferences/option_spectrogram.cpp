#include "app/preferences/option_spectrogram.h"

#include <QGroupBox>
#include <algorithm>
#include <bit>

#include "sound/power_spectrum.h"

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
    return group;
}

QWidget* COptionSpectrogram::MakeLook() {
    auto* group = new QGroupBox(tr("Spectrograms"), this);
    auto* form = new QFormLayout(group);
    form->addRow(tr("&Window length:"), AddWindowLength());
    form->addRow(tr("Window &shape:"),
                 AddChoice(SettingId::kSpectrumShape, {tr("Hann"), tr("Blackman-Harris")}));
    form->addRow(tr("Fre&quencies:"), AddChoice(SettingId::kSpectrumScale,
                                                {tr("Linear"), tr("Logarithmic"), tr("Mel")}));
    form->addRow(tr("&Range:"), AddNumber(SettingId::kSpectrumRange, 5, tr("dB")));
    form->addRow(tr("&Colors:"), AddChoice(SettingId::kSpectrumPalette, {tr("Ember"), tr("Ice")}));
    return group;
}

// Powers of two; a number between two in the file is the lower one.
QComboBox* COptionSpectrogram::AddWindowLength() {
    auto* box = new QComboBox(this);
    for (unsigned frames = kLeastSpectrumWindow; frames <= kGreatestSpectrumWindow; frames *= 2)
        box->addItem(tr("%1 samples").arg(frames));
    connect(box, &QComboBox::currentIndexChanged, this, &OptionPage::Edited);
    AddControl(
        {SettingId::kSpectrumWindow, box,
         [box](int number) {
             const auto frames = static_cast<unsigned>(std::max(number, int{kLeastSpectrumWindow}));
             box->setCurrentIndex(std::bit_width(frames) - std::bit_width(kLeastSpectrumWindow));
         },
         [box] { return static_cast<int>(kLeastSpectrumWindow) << box->currentIndex(); }});
    return box;
}

}  // namespace sonavel
