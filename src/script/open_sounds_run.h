// Runs a script on the open sounds of an editor as one undoable whole. The commands work on copies;
// once the last of them has succeeded, each sound takes over what became of its copy, as one edit.
// Until then nothing of the editor changes.
#pragma once

#include <filesystem>
#include <string>

#include "codec/client/child_codecs.h"
#include "effects/effect_table.h"
#include "workspace/workspace.h"

namespace sonavel::script {

struct OpenSoundsScript {
    std::string text;
    // What relative paths in it are taken from.
    std::filesystem::path folder;
};

struct OpenSoundsRun {
    // Failed with the line and the reason, or cancelled; then the sounds, their histories and their
    // views are as they were. Files that commands wrote before stay.
    Outcome outcome;
    // What the commands reported and the messages that came up, whatever the outcome.
    std::string printed = {};
    std::size_t commands = 0;
    std::size_t changedSounds = 0;
    std::size_t newSounds = 0;
};

// The name of the undo step.
inline constexpr const char* kScriptStep = "Script";

// The active sound is the script's first; `activate` counts them as the workspace does. Sounds that
// the script makes or opens are opened in the workspace. Questions are answered as in a script that
// runs by itself. `effects` is what effects have learned until now; what the script learns stays
// with it.
OpenSoundsRun RunOnOpenSounds(const OpenSoundsScript& script, Workspace& sounds,
                              const ChildCodecs& codecs, const EffectState& effects);

}  // namespace sonavel::script
