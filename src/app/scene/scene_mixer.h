// The command "Scene": several sounds around the listener become a new stereo sound.
#pragma once

#include <QPointer>
#include <QWidget>
#include <span>
#include <vector>

#include "platform/command_table.h"
#include "script/open_scene.h"
#include "spatial/ui/spatial_memory.h"

namespace sonavel {

// The scene that was put together last; empty before the first.
using SceneMemory = std::vector<script::SceneEntry>;

class SceneMixer {
  public:
    // The dialog stands over `parent`.
    SceneMixer(Workspace& sounds, OpenSound& active, SpatialMemory& memory, SceneMemory& scene,
               QWidget* parent)
        : sounds_(sounds), active_(active), memory_(memory), scene_(scene), parent_(parent) {}

    // Begins with all open sounds. The new sound becomes the active one.
    Outcome AskAndMix();
    bool HasSound() const;

  private:
    Workspace& sounds_;
    OpenSound& active_;
    SpatialMemory& memory_;
    SceneMemory& scene_;
    QPointer<QWidget> parent_;
};

std::span<const Command<SceneMixer>> SceneCommands();

}  // namespace sonavel
