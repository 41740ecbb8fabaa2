// The editors "System Defined Positional Sound" and "System-Defined Moving Sound": one or two of
// the fixed points round the listener.
#pragma once

#include "spatial/ui/spatial_dialog.h"
#include "spatial/ui/spatial_memory.h"
#include "spatial/ui/system_point_chooser.h"

namespace sonavel {

class SystemSoundDialog : public SpatialDialog {
    Q_OBJECT

  public:
    // Shows what the editor remembers, else its first preset.
    SystemSoundDialog(CSoundView& view, SpatialMemory& memory, SourceMotion motion,
                      QWidget* parent = nullptr);

    std::vector<SourcePosition> Path() const override;
    SystemPointChooser& Chooser() { return *chooser_; }

  protected:
    void Remember() override;

  private:
    PresetStore Presets();
    void Recall(PresetBar& presets);
    void Pick(int number, Qt::KeyboardModifiers modifiers);
    void ShowChoice();

    std::optional<SystemEditorMemory>& memory_;
    SystemPointChooser* chooser_;
};

}  // namespace sonavel
