// The commands that the active sound answers: those of its view, its document, its export and its
// 3D effects, in this order.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/document_saver.h"
#include "app/exchange/sound_exporter.h"
#include "spatial/ui/spatial_memory.h"

namespace sonavel {

class ActiveSoundCommands {
  public:
    ActiveSoundCommands();

    // Dialogs stand over `parent`. The sound has to be forgotten before it goes.
    // Null without a sound.
    const DocumentSaver* Saver() const { return saver_ ? &*saver_ : nullptr; }
    void Take(Workspace& workspace, OpenSound& sound, QWidget* parent);
    void Forget();

    // Null when none of them handles the command, as without a sound.
    CommandTarget* TargetOf(int commandId) const;

  private:
    SpatialMemory spatialMemory_;
    std::string ears_;  // which the listener has
    std::unique_ptr<CommandTarget> view_;
    std::optional<DocumentSaver> saver_;
    std::unique_ptr<CommandTarget> document_;
    std::optional<SoundExporter> exporter_;
    std::unique_ptr<CommandTarget> export_;
    std::unique_ptr<CommandTarget> spatial_;
};

}  // namespace sonavel
