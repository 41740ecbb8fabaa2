#include "script/scene_rendering.h"

#include <string>

#include "script/value_rule.h"

namespace sonavel::script {
namespace {

Outcome FailedAtLine(const SceneLine& line, const Outcome& why) {
    if (why.IsCancelled()) return why;
    return Failed("Line " + std::to_string(line.line) + " of the scene: " + why.Reason());
}

}  // namespace

Result<Sound> RenderScene(const std::vector<SceneLine>& lines, const SceneRendering& how) {
    std::optional<SceneMix> mix;
    std::uint32_t rate = 0;
    for (const SceneLine& line : lines) {
        const SoundOfScene sound = how.load(line);
        if (!sound) return FailedAtLine(line, sound.Ended());
        if (!mix) {
            rate = how.rate.value_or((*sound)->GetSamplesPerSecond());
            mix.emplace(rate, how.listener, how.progress);
        }
        const Outcome added =
            mix->Add({**sound, line.placing, FramesOfTime(line.start, rate), line.gain});
        if (!added) return FailedAtLine(line, added);
    }
    return mix->Finish();
}

}  // namespace sonavel::script
