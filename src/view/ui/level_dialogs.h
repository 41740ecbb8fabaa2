// The dialogs "Mix" and "Crossfade", which set levels, and "Paste Replicate", which sets a count.
#pragma once

#include "view/commands/view_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class MixDialog : public FormDialog {
    Q_OBJECT

  public:
    MixDialog(const MixQuestion& range, const MixChoice& initial, QWidget* parent = nullptr);
    MixChoice Choice() const;

  private:
    PercentSlider* clipboard_;
    PercentSlider* destination_;
};

class CrossfadeDialog : public FormDialog {
    Q_OBJECT

  public:
    CrossfadeDialog(const MixQuestion& range, const CrossfadeChoice& initial,
                    QWidget* parent = nullptr);
    CrossfadeChoice Choice() const;

  private:
    PercentSlider* clipboardStart_;
    PercentSlider* clipboardEnd_;
    PercentSlider* destinationStart_;
    PercentSlider* destinationEnd_;
};

class PasteReplicateDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit PasteReplicateDialog(int initial, QWidget* parent = nullptr);
    int Count() const { return count_->value(); }

  private:
    QSpinBox* count_;
};

}  // namespace sonavel
