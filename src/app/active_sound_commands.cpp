#include "app/active_sound_commands.h"

#include "app/document_commands.h"
#include "app/own_ears.h"
#include "spatial/ui/spatial_commands.h"
#include "view/ui/asking_view_commands.h"

namespace sonavel {

// A file that cannot be used leaves the ears as they were; the preferences say why.
ActiveSoundCommands::ActiveSoundCommands() {
    spatialMemory_.prepare = [this](Listener& listener) {
        const std::string chosen = ChosenEars();
        if (chosen != ears_ && TakeEars(chosen, listener)) ears_ = chosen;
    };
}

void ActiveSoundCommands::Take(Workspace& workspace, OpenSound& sound, QWidget* parent) {
    Forget();
    spatial_ = std::make_unique<SpatialCommands>(*sound.document, *sound.view, spatialMemory_);
    view_ = std::make_unique<AskingViewCommands>(*sound.view, parent);
    saver_.emplace(workspace, *sound.document, parent);
    document_ = std::make_unique<TableCommandTarget<DocumentSaver>>(*saver_, DocumentCommands());
    exporter_.emplace(workspace, sound, parent);
    export_ = std::make_unique<TableCommandTarget<SoundExporter>>(*exporter_, ExportCommands());
}

void ActiveSoundCommands::Forget() {
    view_.reset();
    document_.reset();
    saver_.reset();
    export_.reset();
    exporter_.reset();
    spatial_.reset();
}

CommandTarget* ActiveSoundCommands::TargetOf(int commandId) const {
    for (CommandTarget* target : {view_.get(), document_.get(), export_.get(), spatial_.get()})
        if (target && target->HandlesCommand(commandId)) return target;
    return nullptr;
}

}  // namespace sonavel
