// The dialog "Spectrogram": how spectrograms are computed and coloured. What is chosen shows at
// once.
#pragma once

#include <QComboBox>

#include "view/state/spectrogram_settings.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class SpectrogramDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit SpectrogramDialog(const SpectrogramSettings& initial, QWidget* parent = nullptr);
    SpectrogramSettings Choice() const;

  Q_SIGNALS:
    void Changed();

  private:
    QComboBox* AddChoice(QFormLayout& form, const QString& label, SettingId setting,
                         const QStringList& texts, int chosen);

    QComboBox* window_;
    QComboBox* shape_;
    QComboBox* scale_;
    QSpinBox* range_;
    QComboBox* palette_;
};

}  // namespace sonavel
