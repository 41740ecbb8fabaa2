#include "view/ui/spectrogram_dialog.h"

#include "view/ui/spectrogram_fields.h"

namespace sonavel {

SpectrogramDialog::SpectrogramDialog(const SpectrogramSettings& initial, QWidget* parent)
    : FormDialog(tr("Spectrogram"), parent), fields_(new SpectrogramFields(AddForm(), this)) {
    SettingValues numbers;
    initial.PutInto(numbers);
    for (const SettingControl& field : fields_->Controls()) field.show(numbers[field.setting]);
    connect(fields_, &SpectrogramFields::Edited, this, &SpectrogramDialog::Changed);
}

SpectrogramSettings SpectrogramDialog::Choice() const {
    SettingValues numbers;
    for (const SettingControl& field : fields_->Controls()) numbers[field.setting] = field.number();
    return SpectrogramSettings::Read(numbers);
}

}  // namespace sonavel
