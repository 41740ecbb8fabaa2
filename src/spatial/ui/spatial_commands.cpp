#include "spatial/ui/spatial_commands.h"

#include <QApplication>
#include <QDir>

#include "spatial/crosstalk.h"
#include "spatial/ui/crosstalk_dialog.h"
#include "spatial/ui/place_many_dialog.h"
#include "spatial/ui/system_sound_dialog.h"
#include "spatial/ui/user_sound_dialog.h"

namespace sonavel {
namespace {

void Prepare(const SpatialCommandTarget& target) {
    if (target.memory.prepare) target.memory.prepare(target.memory.listener);
}

template <class Dialog>
Outcome Open(SpatialCommandTarget& target, SourceMotion motion) {
    Prepare(target);
    Dialog dialog(target.view, target.memory, motion, QApplication::activeWindow());
    if (target.memory.beginsLive) dialog.BeginLive();
    return dialog.exec() == QDialog::Accepted ? dialog.Apply() : Cancelled();
}

QString EarsOf(const SpatialCommandTarget& target) {
    return QString::fromStdString(target.memory.listener.Measured().name);
}

Outcome CrossTalk(SpatialCommandTarget& target) {
    Prepare(target);
    CrosstalkDialog dialog(target.memory.speakerAngle, EarsOf(target),
                           QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    target.memory.speakerAngle = dialog.Angle();
    const Selection selection = target.view.State().GetSelection();
    return CancelCrosstalk(target.document, selection.start, selection.end, dialog.Angle(),
                           target.memory.listener);
}

std::filesystem::path FolderOf(const CSoundDoc& document) {
    if (!document.Path().empty()) return document.Path().parent_path();
    return QDir::currentPath().toStdString();
}

std::vector<CSoundDoc*> SoundsToPlace(const SpatialCommandTarget& target, PlacedSounds sounds) {
    if (sounds == PlacedSounds::kAllOpen && target.memory.openSounds)
        return target.memory.openSounds();
    return {&target.document};
}

Outcome PlaceMany(SpatialCommandTarget& target) {
    std::optional<ManyPlacesChoice>& choice = target.memory.places;
    PlaceManyDialog dialog(choice.value_or(FourDirections(FolderOf(target.document))),
                           QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    choice = dialog.Choice();
    const ManyPlacesChoice chosen = *choice;
    // Asked for once, and not again without being asked.
    choice->filesThere = FilesThere::kKeep;
    Prepare(target);
    return PlaceSounds(chosen, SoundsToPlace(target, chosen.sounds), target.document.Services(),
                       target.memory.listener);
}

Outcome SwitchLiveAtOnce(SpatialCommandTarget& target) {
    target.memory.beginsLive = !target.memory.beginsLive;
    return Done();
}

CommandState LiveAtOnce(const SpatialCommandTarget& target) {
    return {true, target.memory.beginsLive};
}

CommandState WhenThereIsSound(const SpatialCommandTarget& target) {
    return {target.view.FrameCount() > 0 && !target.view.Sound().IsRecording(), false};
}

CommandState WhenThereIsStereo(const SpatialCommandTarget& target) {
    const CommandState state = WhenThereIsSound(target);
    return {state.enabled && target.document.Sound().GetChannels() == 2, state.checked};
}

using Row = Command<SpatialCommandTarget>;

constexpr Row kTable[] = {
    {{spatial_command::kSystemPositional, "", "&System Defined Positional Sound…", "",
      "Places the sound at one of the fixed points around the listener"},
     [](SpatialCommandTarget& target) {
         return Open<SystemSoundDialog>(target, SourceMotion::kPositional);
     },
     WhenThereIsSound},
    {{spatial_command::kUserPositional, "", "&User Defined Positional Sound…", "",
      "Places the sound at a point of your own around the listener"},
     [](SpatialCommandTarget& target) {
         return Open<UserSoundDialog>(target, SourceMotion::kPositional);
     },
     WhenThereIsSound},
    {{spatial_command::kSystemMoving, "", "S&ystem-Defined Moving Sound…", "",
      "Moves the sound from one fixed point around the listener to another"},
     [](SpatialCommandTarget& target) {
         return Open<SystemSoundDialog>(target, SourceMotion::kMoving);
     },
     WhenThereIsSound},
    {{spatial_command::kUserMoving, "", "Us&er-Defined Moving Sound…", "",
      "Moves the sound along a path of your own around the listener"},
     [](SpatialCommandTarget& target) {
         return Open<UserSoundDialog>(target, SourceMotion::kMoving);
     },
     WhenThereIsSound},
    {{spatial_command::kCrosstalk, "", "&Cross Talk…", "",
      "Makes a sound for headphones right for two loudspeakers"},
     CrossTalk,
     WhenThereIsStereo},
    {{spatial_command::kPlaceMany, "", "Place &Many…", "",
      "Writes a file of the sound as heard from each of many points"},
     PlaceMany,
     WhenThereIsSound},
    {{spatial_command::kLiveAtOnce, "", "&Live at Once", "",
      "Hear the 3D editors live as soon as they open"},
     SwitchLiveAtOnce,
     LiveAtOnce},
};

}  // namespace

std::span<const Command<SpatialCommandTarget>> SpatialCommandTable() {
    return kTable;
}

SpatialCommands::SpatialCommands(CSoundDoc& document, CSoundView& view, SpatialMemory& memory)
    : target_{document, view, memory}, commands_(target_, SpatialCommandTable()) {}

}  // namespace sonavel
