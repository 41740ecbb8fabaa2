// The dialog "Dynamics": a transfer curve for each channel, as numbers and as points to drag.
#pragma once

#include <QGridLayout>

#include "effects/ui/dynamics_picture.h"
#include "effects/ui/effect_dialog.h"

namespace sonavel {

class CDynamicsDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CDynamicsDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  protected:
    void RememberAll() override;
    void RecallAll() override;

  private:
    static constexpr std::size_t kRight = 3;   // where the right channel's parameters begin
    static constexpr std::size_t kCurves = 6;  // the parameters of both channels
    static constexpr std::size_t kAttack = 6;  // and of the times behind them
    static constexpr std::size_t kRelease = 7;

    // Its controls begin at `first`. Returns the threshold's field.
    QWidget* AddChannel(QHBoxLayout& row, const QString& title, std::size_t first);
    void AddTimes();
    DynamicsFields Fields(std::size_t first) const;
    void TakeFields(std::size_t first, const DynamicsFields& fields);
    void TakeChange(std::size_t index);
    void Link(bool linked);
    bool IsLinked() const { return link_->isChecked(); }

    QCheckBox* link_;
    DynamicsPicture* pictures_[2];
};

}  // namespace sonavel
