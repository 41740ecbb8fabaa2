#include "spatial/ui/system_sound_dialog.h"

#include "document/untitled_titles.h"
#include "spatial/scene_points.h"

namespace sonavel {
namespace {

SpatialDialog::Texts TextsOf(SourceMotion motion) {
    if (motion == SourceMotion::kPositional)
        return {SystemSoundDialog::tr("System Defined Positional Sound"),
                SystemSoundDialog::tr("Choose a point by its number or in the scene"),
                spatial_title::kSystemPositional, untitled_prefix::kSystemSound};
    return {SystemSoundDialog::tr("System-Defined Moving Sound"),
            SystemSoundDialog::tr("Choose where the sound starts and where it ends"),
            spatial_title::kSystemMoving, untitled_prefix::kSystemSound};
}

PointRole RoleOf(int number, const SystemPreset& chosen, SourceMotion motion) {
    const bool moving = motion == SourceMotion::kMoving;
    if (number == chosen.start) return moving ? PointRole::kStart : PointRole::kSelected;
    return moving && number == chosen.end ? PointRole::kEnd : PointRole::kPlain;
}

}  // namespace

SystemSoundDialog::SystemSoundDialog(CSoundView& view, SpatialMemory& memory, SourceMotion motion,
                                     QWidget* parent)
    : SpatialDialog(view, memory, motion, TextsOf(motion), PointNumbers::Editing::kOff, parent),
      memory_(memory.system[motion]),
      chooser_(new SystemPointChooser(motion, this)) {
    PresetBar& presets = Begin(*chooser_, Presets());
    connect(chooser_, &SystemPointChooser::Changed, this, &SystemSoundDialog::ShowChoice);
    connect(&Scene(), &SceneWidget::PointPicked, this, &SystemSoundDialog::Pick);
    if (memory_)
        Recall(presets);
    else if (!presets.LoadFirst())
        ShowChoice();
}

void SystemSoundDialog::Recall(PresetBar& presets) {
    presets.SetCurrent(memory_->preset);
    chooser_->SetActive(memory_->active);
    chooser_->Choose(memory_->chosen);
}

void SystemSoundDialog::Remember() {
    memory_ = {chooser_->Chosen(), chooser_->Active(), CurrentPreset()};
}

PresetStore SystemSoundDialog::Presets() {
    return {Folder().Profile("Systemsound.ini"), tr("System Defined Localization Preset"),
            SystemDeleteQuestion,
            [this](const ProfileText& presets, const std::string& name) {
                chooser_->Choose(LoadPreset<SystemPreset>(presets, name));
            },
            [this](ProfileFile& file, const std::string& name) {
                return SavePreset(file, name, chooser_->Chosen());
            }};
}

std::vector<SourcePosition> SystemSoundDialog::Path() const {
    const SystemPreset chosen = chooser_->Chosen();
    if (Motion() == SourceMotion::kPositional) return {SystemPoint(chosen.start)};
    return {SystemPoint(chosen.start), SystemPoint(chosen.end)};
}

void SystemSoundDialog::Pick(int number, Qt::KeyboardModifiers modifiers) {
    const bool end = Motion() == SourceMotion::kMoving && modifiers.testFlag(Qt::ShiftModifier);
    chooser_->Choose(end ? PathEnd::kEnd : chooser_->Active(), number);
}

void SystemSoundDialog::ShowChoice() {
    const SystemPreset chosen = chooser_->Chosen();
    SceneContent content;
    content.showsSpheres = true;
    for (int number = 0; number < kSystemPoints; ++number)
        content.points.push_back({SystemPoint(number), number, RoleOf(number, chosen, Motion())});
    if (Motion() == SourceMotion::kMoving) content.path = Path();
    ShowPoints(std::move(content),
               chooser_->Active() == PathEnd::kStart ? chosen.start : chosen.end);
}

}  // namespace sonavel
