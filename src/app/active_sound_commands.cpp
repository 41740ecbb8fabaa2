#include "app/active_sound_commands.h"

#include <utility>

#include "app/document_commands.h"
#include "app/own_ears.h"
#include "spatial/ui/spatial_commands.h"
#include "view/ui/asking_view_commands.h"

namespace sonavel {

struct ActiveSoundCommands::OfOneSound {
    OfOneSound(Workspace& workspace, OpenSound& open, SpatialMemory& memory, SceneMemory& scenes,
               QWidget* parent)
        : sound(*open.document),
          view(*open.view, parent),
          saver(workspace, *open.document, parent),
          document(saver, DocumentCommands()),
          exporter(workspace, open, parent),
          exports(exporter, ExportCommands()),
          spatial(*open.document, *open.view, memory),
          mixer(workspace, open, memory, scenes, parent),
          scene(mixer, SceneCommands()) {}

    const CSoundDoc& sound;
    AskingViewCommands view;
    DocumentSaver saver;
    TableCommandTarget<DocumentSaver> document;
    SoundExporter exporter;
    TableCommandTarget<SoundExporter> exports;
    SpatialCommands spatial;
    SceneMixer mixer;
    TableCommandTarget<SceneMixer> scene;
};

ActiveSoundCommands::ActiveSoundCommands() = default;

// A file that cannot be used leaves the ears as they were; the preferences say why.
void ActiveSoundCommands::PrepareEars(Listener& listener, ProgressFactory& progress) {
    const std::string chosen = ChosenEars();
    if (chosen == ears_) return;
    const auto window = progress.CreateProgress("Progress Responses");
    if (TakeEars(chosen, listener, *window)) ears_ = chosen;
}

void ActiveSoundCommands::Take(Workspace& workspace, OpenSound& sound, QWidget* parent) {
    Forget();
    spatialMemory_.prepare = [this, &workspace](Listener& listener) {
        PrepareEars(listener, workspace.Services().progress);
    };
    spatialMemory_.openSounds = [&workspace] {
        std::vector<CSoundDoc*> sounds;
        for (std::size_t i = 0; i < workspace.Count(); ++i) {
            CSoundDoc& document = *workspace.At(i).document;
            if (document.Sound().GetFrameCount() > 0 && !document.Sound().IsRecording())
                sounds.push_back(&document);
        }
        return sounds;
    };
    now_ = std::make_shared<OfOneSound>(workspace, sound, spatialMemory_, sceneMemory_, parent);
}

void ActiveSoundCommands::Forget() {
    if (now_) forgotten_.push_back(std::exchange(now_, nullptr));
}

const DocumentSaver* ActiveSoundCommands::Saver() const {
    return now_ ? &now_->saver : nullptr;
}

const CSoundDoc* ActiveSoundCommands::DocumentOfCommand() const {
    if (!forgotten_.empty()) return &forgotten_.front()->sound;
    return now_ ? &now_->sound : nullptr;
}

CommandTarget* ActiveSoundCommands::TargetOf(int commandId) const {
    if (!now_) return nullptr;
    for (CommandTarget* target : std::initializer_list<CommandTarget*>{
             &now_->view, &now_->document, &now_->exports, &now_->spatial, &now_->scene})
        if (target->HandlesCommand(commandId)) return target;
    return nullptr;
}

}  // namespace sonavel
