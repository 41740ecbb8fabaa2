#include "spatial/ui/user_sound_dialog.h"

#include "document/untitled_titles.h"
#include "spatial/scene_points.h"
#include "spatial/ui/shape_dialog.h"

namespace sonavel {
namespace {

SpatialDialog::Texts TextsOf(SourceMotion motion) {
    if (motion == SourceMotion::kPositional)
        return {UserSoundDialog::tr("User Defined Positional Sound"),
                UserSoundDialog::tr("The sound stands at the selected point"),
                spatial_title::kUserPositional, untitled_prefix::kUserSound};
    return {UserSoundDialog::tr("User-Defined Moving Sound"),
            UserSoundDialog::tr("The sound passes all points in their order"),
            spatial_title::kUserMoving, untitled_prefix::kUserSound};
}

std::vector<UserPoint> FirstPoints(SourceMotion motion) {
    if (motion == SourceMotion::kPositional) return {{0, 100, 0}};
    return {{-100, 60, 0}, {100, 60, 0}};
}

}  // namespace

UserSoundDialog::UserSoundDialog(CSoundView& view, SpatialMemory& memory, SourceMotion motion,
                                 QWidget* parent)
    : SpatialDialog(view, memory, motion, TextsOf(motion), PointNumbers::Editing::kOn, parent),
      memory_(memory.user[motion]),
      shape_(memory.shape),
      points_(new UserPointList(
          motion == SourceMotion::kMoving ? PointTimes::kOn : PointTimes::kOff, this)) {
    PresetBar& presets = Begin(*points_, Presets());
    if (Way()) connect(Way(), &PathBox::ShapeAsked, this, &UserSoundDialog::AskShape);
    connect(points_, &UserPointList::Changed, this, &UserSoundDialog::ShowChoice);
    connect(&Scene(), &SceneWidget::PointPicked, points_, &UserPointList::Select);
    connect(&Scene(), &SceneWidget::PointDragged, this,
            [this](int index, const SourcePosition& position) {
                MovePoint(index, NearestUserPoint(position));
            });
    connect(&Numbers(), &PointNumbers::Edited, this,
            [this](const UserPoint& point) { MovePoint(points_->Current(), point); });
    if (memory_)
        Recall(presets);
    else if (!presets.LoadFirst())
        points_->SetPoints(FirstPoints(motion));
}

void UserSoundDialog::Recall(PresetBar& presets) {
    presets.SetCurrent(memory_->preset);
    points_->SetPoints(memory_->points, memory_->current);
    points_->SetTimes(memory_->times);
}

void UserSoundDialog::Remember() {
    memory_ = {points_->Points(), points_->Times(), points_->Current(), CurrentPreset()};
}

PresetStore UserSoundDialog::Presets() {
    return {Folder().Profile("Usersound.ini"), tr("User Defined Localization Preset"),
            UserDeleteQuestion,
            [this](const ProfileText& presets, const std::string& name) {
                points_->SetPoints(LoadPreset<UserPreset>(presets, name));
            },
            [this](ProfileFile& file, const std::string& name) {
                return SavePreset(file, name, points_->Points());
            }};
}

std::vector<SourcePosition> UserSoundDialog::Path() const {
    std::vector<SourcePosition> path;
    const std::vector<UserPoint>& points = points_->Points();
    if (Motion() == SourceMotion::kMoving)
        for (const UserPoint& point : points) path.push_back(PositionOf(point));
    else if (points_->Current() >= 0)
        path.push_back(PositionOf(points[static_cast<std::size_t>(points_->Current())]));
    return path;
}

std::vector<std::optional<double>> UserSoundDialog::Times() const {
    if (Motion() == SourceMotion::kPositional) return {};
    return points_->Times();
}

void UserSoundDialog::AskShape() {
    ShapeDialog dialog(shape_, this);
    if (dialog.exec() != QDialog::Accepted) return;
    shape_ = dialog.Chosen();
    const bool winds = shape_.shape != PathShape::kFlyBy;
    Way()->ShowCurve(winds ? PathCurve::kSpline : PathCurve::kStraight);
    std::vector<UserPoint> points;
    for (const SourcePosition& point : PointsOfShape(shape_))
        points.push_back(NearestUserPoint(point));
    points_->SetPoints(std::move(points));
}

void UserSoundDialog::MovePoint(int index, const UserPoint& point) {
    if (index >= 0 && index < static_cast<int>(points_->Points().size()))
        points_->SetPoint(index, point);
}

PointRole UserSoundDialog::RoleOf(int index) const {
    if (index == points_->Current()) return PointRole::kSelected;
    if (Motion() == SourceMotion::kPositional) return PointRole::kPlain;
    if (index == 0) return PointRole::kStart;
    const bool last = index + 1 == static_cast<int>(points_->Points().size());
    return last ? PointRole::kEnd : PointRole::kPlain;
}

void UserSoundDialog::ShowChoice() {
    SceneContent content;
    content.dragging = PointDragging::kOn;
    content.showsStems = true;
    int index = 0;
    for (const UserPoint& point : points_->Points()) {
        content.points.push_back({PositionOf(point), index + 1, RoleOf(index)});
        ++index;
    }
    if (Motion() == SourceMotion::kMoving) content.path = Path();
    ShowPoints(std::move(content), points_->Current());
}

}  // namespace sonavel
