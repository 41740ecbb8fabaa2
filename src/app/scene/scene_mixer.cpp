#include "app/scene/scene_mixer.h"

#include "app/scene/scene_dialog.h"
#include "spatial/ui/spatial_commands.h"

namespace sonavel {
namespace {

CommandState WithSoundToMix(const SceneMixer& mixer) {
    return {mixer.HasSound(), false};
}

constexpr Command<SceneMixer> kSceneRows[] = {
    {{spatial_command::kScene, "", "Sce&ne…", "",
      "Puts several sounds around the listener and mixes them into a new stereo sound"},
     Call<SceneMixer, &SceneMixer::AskAndMix>,
     WithSoundToMix},
};

}  // namespace

bool SceneMixer::HasSound() const {
    return active_.view->FrameCount() > 0 && !active_.view->Sound().IsRecording();
}

Outcome SceneMixer::AskAndMix() {
    if (memory_.prepare) memory_.prepare(memory_.listener);
    script::ForgetClosed(scene_, sounds_);
    if (scene_.empty()) scene_ = script::OpenSoundsAround(sounds_);
    SceneDialog dialog(*active_.view, sounds_, memory_, scene_, parent_);
    if (memory_.beginsLive) dialog.BeginLive();
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    scene_ = dialog.Entries();
    if (!isAccepted) return Cancelled();
    if (Outcome mixed = dialog.Apply(); !mixed) return mixed;
    // The new sound takes this object's place as the active one's.
    sounds_.NewDocumentFromSound(*std::move(dialog.Mixed()), "Scene_");
    return Done();
}

std::span<const Command<SceneMixer>> SceneCommands() {
    return kSceneRows;
}

}  // namespace sonavel
