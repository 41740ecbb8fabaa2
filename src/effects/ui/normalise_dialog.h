// The dialog "Normalise", which shows how loud the range is now.
#pragma once

#include <memory>

#include "effects/ui/plain_effect_dialog.h"
#include "view/ui/loudness_worker.h"

namespace sonavel {

class CNormaliseDlg : public PlainEffectDialog {
    Q_OBJECT

  public:
    explicit CNormaliseDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

    // Ends the measurement too: what follows may change the sound.
    void done(int result) override;

  private:
    ValueLabel* AddPresentValue(const QString& name, const char* objectName);
    void ShowFound(const Result<SoundLoudness>& found);
    void ShowLines();

    ValueLabel* samplePeak_;
    ValueLabel* truePeak_;
    ValueLabel* loudness_;
    std::unique_ptr<LoudnessWorker> worker_;
};

}  // namespace sonavel
