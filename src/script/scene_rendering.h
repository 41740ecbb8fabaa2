// Mixes the sounds of a scene, had one after the other.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "script/scene_file.h"
#include "sound/sound.h"
#include "spatial/scene_mix.h"

namespace sonavel::script {

using SoundOfScene = Result<std::shared_ptr<const Sound>>;

struct SceneRendering {
    std::function<SoundOfScene(const SceneLine& line)> load;
    Listener& listener;
    ProgressFactory& progress;
    std::optional<std::uint32_t> rate{};  // frames a second; nothing: the first sound's
};

// As SceneMix does; at least one line. Fails for the first line that cannot be had or heard, naming
// it.
Result<Sound> RenderScene(const std::vector<SceneLine>& lines, const SceneRendering& how);

}  // namespace sonavel::script
