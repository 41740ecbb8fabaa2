// The editors "System Defined Positional Sound" and "System-Defined Moving Sound": one or two of
// the fixed points round the listener.
#pragma once

#include "spatial/ui/spatial_dialog.h"
#include "spatial/ui/system_point_chooser.h"

namespace sonavel {

class SystemSoundDialog : public SpatialDialog {
    Q_OBJECT

  public:
    SystemSoundDialog(CSoundView& view, SourceMotion motion, QWidget* parent = nullptr);

    std::vector<SourcePosition> Path() const override;
    SystemPointChooser& Chooser() { return *chooser_; }

  private:
    PresetStore Presets();
    void Pick(int number, Qt::KeyboardModifiers modifiers);
    void ShowChoice();

    SystemPointChooser* chooser_;
};

}  // namespace sonavel
