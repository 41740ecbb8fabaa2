// A scene as text, in the grammar of scripts: a sound a line, with its place and when it starts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"
#include "spatial/placing.h"

namespace sonavel::script {

struct SceneLine {
    int line = 1;
    std::string path;
    Placing placing;
    std::string start;  // a time; only the scene's rate says how many frames it is
    double gain = 0;    // dB
};

// `sound PATH point X Y Z` or `sound PATH path X0 Y0 Z0 X1 Y1 Z1 ...` and keys. Fails for the first
// line that is none, naming it, and for a scene without sounds.
Result<std::vector<SceneLine>> ParseScene(std::string_view text);
// The same as text. Of what the grammar has no word for, times, loops and the distance law, nothing
// is written.
std::string SceneText(const std::vector<SceneLine>& lines);

}  // namespace sonavel::script
