// The editors "User Defined Positional Sound" and "User-Defined Moving Sound": points that a person
// places, one of which the sound stands at, or all of which it passes in their order.
#pragma once

#include "spatial/ui/spatial_dialog.h"
#include "spatial/ui/user_point_list.h"

namespace sonavel {

class UserSoundDialog : public SpatialDialog {
    Q_OBJECT

  public:
    UserSoundDialog(CSoundView& view, SourceMotion motion, QWidget* parent = nullptr);

    std::vector<SourcePosition> Path() const override;
    UserPointList& Points() { return *points_; }

  private:
    PresetStore Presets();
    PointRole RoleOf(int index) const;
    void MovePoint(int index, const UserPoint& point);
    void ShowChoice();

    UserPointList* points_;
};

}  // namespace sonavel
