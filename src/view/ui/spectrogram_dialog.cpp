#include "view/ui/spectrogram_dialog.h"

#include <bit>

#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr int kRangeStep = 5;

QStringList WindowTexts() {
    QStringList texts;
    for (unsigned frames = kLeastSpectrumWindow; frames <= kGreatestSpectrumWindow; frames *= 2)
        texts << SpectrogramDialog::tr("%1 samples").arg(frames);
    return texts;
}

int PlaceOfWindow(unsigned frames) {
    return std::bit_width(frames) - std::bit_width(kLeastSpectrumWindow);
}

void Explain(QWidget& field, SettingId setting) {
    field.setToolTip(ToQString(RowOf(setting).explanation));
}

}  // namespace

SpectrogramDialog::SpectrogramDialog(const SpectrogramSettings& initial, QWidget* parent)
    : FormDialog(tr("Spectrogram"), parent), range_(new QSpinBox(this)) {
    QFormLayout& form = AddForm();
    const SpectrogramLook& look = initial.look;
    window_ = AddChoice(form, tr("&Window length"), SettingId::kSpectrumWindow, WindowTexts(),
                        PlaceOfWindow(look.windowFrames));
    shape_ = AddChoice(form, tr("Window &shape"), SettingId::kSpectrumShape,
                       {tr("Hann"), tr("Blackman-Harris")}, static_cast<int>(look.shape));
    scale_ = AddChoice(form, tr("&Frequencies"), SettingId::kSpectrumScale,
                       {tr("Linear"), tr("Logarithmic"), tr("Mel")}, static_cast<int>(look.scale));
    const Setting& range = RowOf(SettingId::kSpectrumRange);
    range_->setRange(range.least, range.greatest);
    range_->setSingleStep(kRangeStep);
    range_->setSuffix(tr(" dB"));
    range_->setValue(static_cast<int>(look.rangeDecibels));
    Explain(*range_, SettingId::kSpectrumRange);
    form.addRow(tr("&Range"), range_);
    connect(range_, &QSpinBox::valueChanged, this, &SpectrogramDialog::Changed);
    palette_ = AddChoice(form, tr("&Colors"), SettingId::kSpectrumPalette, {tr("Ember"), tr("Ice")},
                         static_cast<int>(initial.palette));
    window_->setFocus();
}

QComboBox* SpectrogramDialog::AddChoice(QFormLayout& form, const QString& label, SettingId setting,
                                        const QStringList& texts, int chosen) {
    auto* box = new QComboBox(this);
    box->addItems(texts);
    box->setCurrentIndex(chosen);
    Explain(*box, setting);
    form.addRow(label, box);
    connect(box, &QComboBox::currentIndexChanged, this, &SpectrogramDialog::Changed);
    return box;
}

SpectrogramSettings SpectrogramDialog::Choice() const {
    return {.look = {.windowFrames = kLeastSpectrumWindow << window_->currentIndex(),
                     .shape = static_cast<WindowShape>(shape_->currentIndex()),
                     .scale = static_cast<FrequencyScale>(scale_->currentIndex()),
                     .rangeDecibels = double{1} * range_->value()},
            .palette = static_cast<SpectrumPalette>(palette_->currentIndex())};
}

}  // namespace sonavel
