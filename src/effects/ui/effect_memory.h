// What the effect dialogs remember until the program ends. The application owns one and hands it
// down.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace sonavel {

struct EffectMemory {
    // By the effect's name: one value for each of its parameters. Empty before the first dialog.
    std::map<std::string, std::vector<double>> values;
    bool dynamicsLinked = true;
    bool beginsLive = false;  // whether dialogs are heard live as soon as they open
};

}  // namespace sonavel
