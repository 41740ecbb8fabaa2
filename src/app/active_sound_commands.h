// The commands that the active sound answers: those of its view, its document, its export, its 3D
// effects and the scene, in this order.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/document_saver.h"
#include "app/exchange/sound_exporter.h"
#include "app/scene/scene_mixer.h"
#include "spatial/ui/spatial_memory.h"

namespace sonavel {

class ActiveSoundCommands {
  public:
    ActiveSoundCommands();

    // Null without a sound.
    const DocumentSaver* Saver() const;
    // Dialogs stand over `parent`. The sound has to be forgotten before it goes.
    void Take(Workspace& workspace, OpenSound& sound, QWidget* parent);
    // While a command is being carried out, as when the person goes to another sound meanwhile, its
    // object lives on until DropForgotten().
    void Forget();
    void DropForgotten() { forgotten_.clear(); }
    bool HasForgotten() const { return !forgotten_.empty(); }
    // Of the sound that was active when the command that is being carried out began.
    const CSoundDoc* DocumentOfCommand() const;

    // Null when none of them handles the command, as without a sound.
    CommandTarget* TargetOf(int commandId) const;

  private:
    struct OfOneSound;

    void PrepareEars(Listener& listener, ProgressFactory& progress);

    SpatialMemory spatialMemory_;
    std::string ears_;  // which the listener has
    SceneMemory sceneMemory_;
    std::shared_ptr<OfOneSound> now_;
    std::vector<std::shared_ptr<OfOneSound>> forgotten_;  // oldest first
};

}  // namespace sonavel
