// What the effect dialogs remember until the program ends. The application owns one and hands it
// down.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "document/sound_doc.h"
#include "effects/panpot.h"

namespace sonavel {

struct EffectMemory {
    // By the effect's name: one value for each of its parameters. Empty before the first dialog.
    std::map<std::string, std::vector<double>> values;
    PanMode panMode = PanMode::kPan;
    bool dynamicsLinked = true;
    // Of each document's preview: what a new document made from it is titled with.
    std::map<const CSoundDoc*, std::string> previewPrefixes;
};

}  // namespace sonavel
