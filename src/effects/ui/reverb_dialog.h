// The dialog "Reverberation".
#pragma once

#include <QGridLayout>

#include "effects/ui/effect_dialog.h"
#include "effects/ui/reverb_picture.h"

namespace sonavel {

class CReverbDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CReverbDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    enum Parameter : std::size_t { kEarly, kTime, kReflections, kDry, kWet };

    QScrollBar* AddBar(QGridLayout& grid, Parameter parameter, int pageStep);
    void AddMixing(QGridLayout& grid);
    void AddReflections(QGridLayout& grid);
    QWidget* MakeTimes();
    ValueLabel* AddTime(QHBoxLayout& row, const QString& name);
    void TakeMixing(int tenths);
    void ShowMixing();
    void ShowRoom();

    QScrollBar* mixing_;  // ten times the wet percentage
    ValueLabel* earlyDecay_;
    ValueLabel* fullDecay_;
    ReverbPicture* picture_;
};

}  // namespace sonavel
