// The dialog "Panpot/Crossfade": a fixed position between left and right, or a moving one.
#pragma once

#include <QGridLayout>

#include "effects/panpot.h"
#include "effects/ui/effect_dialog.h"

namespace sonavel {

class CPanpotDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CPanpotDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    // In the order of the effect's parameters.
    enum Index : std::size_t { kMode, kPan, kFrom, kTo, kNonlinear };

    QRadioButton* AddMode(const QString& text, PanMode mode);
    QGridLayout* AddGrid();
    QScrollBar* AddBar(QGridLayout& grid, std::size_t index);
    void EnableBars();

    std::vector<QWidget*> widgetsOf_[2];  // by mode
};

}  // namespace sonavel
