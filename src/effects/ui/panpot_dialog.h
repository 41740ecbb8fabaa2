// The dialog "Panpot/Crossfade": a fixed position between left and right, or a moving one.
#pragma once

#include <QButtonGroup>
#include <QGridLayout>

#include "effects/ui/effect_dialog.h"

namespace sonavel {

class CPanpotDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CPanpotDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

    const Effect& ChosenEffect() const override;
    std::vector<double> Values() const override;
    void Reset() override;

  protected:
    void RememberAll() override;
    void RecallAll() override;

  private:
    static constexpr std::size_t kPan = 0;
    static constexpr std::size_t kFrom = 1;
    static constexpr std::size_t kTo = 2;
    static constexpr std::size_t kNonlinear = 3;

    PanMode Mode() const;
    void SetMode(PanMode mode);
    void AddMode(const QString& text, PanMode mode);
    QScrollBar* AddBar(QGridLayout& grid, std::size_t index);
    void EnableBars();

    QButtonGroup modes_;
    std::vector<QWidget*> widgetsOf_[2];  // by mode
};

}  // namespace sonavel
