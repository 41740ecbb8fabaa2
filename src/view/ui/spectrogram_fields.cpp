#include "view/ui/spectrogram_fields.h"

#include <QSpinBox>
#include <algorithm>
#include <bit>
#include <utility>

#include "sound/power_spectrum.h"
#include "view/ui/qt_values.h"

namespace sonavel {

SpectrogramFields::SpectrogramFields(QFormLayout& form, QObject* parent) : QObject(parent) {
    AddWindowLength(form);
    AddChoice(form, SettingId::kSpectrumShape, tr("Window &shape:"),
              {tr("Hann"), tr("Blackman-Harris")});
    AddChoice(form, SettingId::kSpectrumScale, tr("Fre&quencies:"),
              {tr("Linear"), tr("Logarithmic"), tr("Mel")});
    AddRange(form);
    AddChoice(form, SettingId::kSpectrumPalette, tr("&Colors:"), {tr("Ember"), tr("Ice")});
}

void SpectrogramFields::AddControl(SettingControl control) {
    control.widget->setToolTip(ToQString(RowOf(control.setting).explanation));
    controls_.push_back(std::move(control));
}

QComboBox* SpectrogramFields::AddBox(QFormLayout& form, const QString& label,
                                     const QStringList& texts) {
    auto* box = new QComboBox(form.parentWidget());
    box->addItems(texts);
    form.addRow(label, box);
    connect(box, &QComboBox::currentIndexChanged, this, &SpectrogramFields::Edited);
    return box;
}

// Powers of two; a number between two in the file is the lower one.
void SpectrogramFields::AddWindowLength(QFormLayout& form) {
    QStringList texts;
    for (unsigned frames = kLeastSpectrumWindow; frames <= kGreatestSpectrumWindow; frames *= 2)
        texts << tr("%1 samples").arg(frames);
    QComboBox* box = AddBox(form, tr("&Window length:"), texts);
    AddControl(
        {SettingId::kSpectrumWindow, box,
         [box](int number) {
             const auto frames = static_cast<unsigned>(std::max(number, int{kLeastSpectrumWindow}));
             box->setCurrentIndex(std::bit_width(frames) - std::bit_width(kLeastSpectrumWindow));
         },
         [box] { return static_cast<int>(kLeastSpectrumWindow) << box->currentIndex(); }});
}

void SpectrogramFields::AddChoice(QFormLayout& form, SettingId setting, const QString& label,
                                  const QStringList& texts) {
    QComboBox* box = AddBox(form, label, texts);
    AddControl({setting, box, [box](int number) { box->setCurrentIndex(number); },
                [box] { return box->currentIndex(); }});
}

void SpectrogramFields::AddRange(QFormLayout& form) {
    constexpr int kStep = 5;
    const Setting& setting = RowOf(SettingId::kSpectrumRange);
    auto* box = new QSpinBox(form.parentWidget());
    box->setRange(setting.least, setting.greatest);
    box->setSingleStep(kStep);
    box->setSuffix(tr(" dB"));
    form.addRow(tr("&Range:"), box);
    connect(box, &QSpinBox::valueChanged, this, &SpectrogramFields::Edited);
    AddControl({setting.id, box, [box](int number) { box->setValue(number); },
                [box] { return box->value(); }});
}

}  // namespace sonavel
