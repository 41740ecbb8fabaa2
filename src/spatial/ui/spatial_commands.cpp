#include "spatial/ui/spatial_commands.h"

#include <QApplication>

#include "spatial/ui/system_sound_dialog.h"
#include "spatial/ui/user_sound_dialog.h"

namespace sonavel {
namespace {

template <class Dialog>
Outcome Open(SpatialCommandTarget& target, SourceMotion motion) {
    Dialog dialog(target.view, target.memory, motion, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted ? dialog.Apply() : Cancelled();
}

CommandState WhenThereIsSound(const SpatialCommandTarget& target) {
    return {target.view.FrameCount() > 0 && !target.view.Sound().IsRecording(), false};
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
};

}  // namespace

std::span<const Command<SpatialCommandTarget>> SpatialCommandTable() {
    return kTable;
}

SpatialCommands::SpatialCommands(CSoundDoc& document, CSoundView& view, SpatialMemory& memory)
    : target_{document, view, memory}, commands_(target_, SpatialCommandTable()) {}

}  // namespace sonavel
