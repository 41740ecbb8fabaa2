// The dialog "Convert": another rate, other bits or channels, and beside them what the sound is now
// and what it would become.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <array>

#include "effects/convert_format.h"
#include "view/ui/form_dialog.h"

class QGridLayout;

namespace sonavel {

class ConvertDialog : public FormDialog {
    Q_OBJECT

  public:
    // The sound must outlive the dialog.
    explicit ConvertDialog(const Sound& sound, QWidget* parent = nullptr);

    FormatChange Choice() const;

  private:
    // Rate, samples, channels, duration and size.
    static constexpr int kLines = 5;
    using Lines = std::array<QString, kLines>;
    static Lines LinesOf(const FormatOutlook& outlook);

    void AddRate();
    void AddBits();
    void AddChannels();
    void AddOutlook();
    void ShowOutlook();

    const Sound& sound_;
    QComboBox* rate_;
    QRadioButton* resampled_;
    QRadioButton* newSpeed_;
    QComboBox* bits_;
    QCheckBox* dither_;
    QComboBox* channels_;
    QComboBox* mode_;
    std::array<QLabel*, kLines> then_{};
    QLabel* refusal_;
};

// Shows the dialog on the view's sound and does what was chosen.
Outcome AskConversion(CSoundView& view, QWidget* parent);

}  // namespace sonavel
