// The editors "User Defined Positional Sound" and "User-Defined Moving Sound": points that a person
// places, one of which the sound stands at, or all of which it passes in their order.
#pragma once

#include "spatial/ui/spatial_dialog.h"
#include "spatial/ui/spatial_memory.h"
#include "spatial/ui/user_point_list.h"

namespace sonavel {

class UserSoundDialog : public SpatialDialog {
    Q_OBJECT

  public:
    // Shows what the editor remembers, else its first preset, else points to begin with.
    UserSoundDialog(CSoundView& view, SpatialMemory& memory, SourceMotion motion,
                    QWidget* parent = nullptr);

    std::vector<SourcePosition> Path() const override;
    std::vector<std::optional<double>> Times() const override;
    UserPointList& Points() { return *points_; }

  protected:
    void Remember() override;

  private:
    PresetStore Presets();
    void Recall(PresetBar& presets);
    PointRole RoleOf(int index) const;
    void MovePoint(int index, const UserPoint& point);
    void ShowChoice();
    void AskShape();

    std::optional<UserEditorMemory>& memory_;
    ShapeNumbers& shape_;  // the one asked for last
    UserPointList* points_;
};

}  // namespace sonavel
