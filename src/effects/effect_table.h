// The effects as rows of a table: what they are called, what a person sets, and how they run on a
// document. Dialogs, menus and the batch tool are made from it.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "document/sound_doc.h"
#include "effects/equalizer.h"

namespace sonavel {

// Stands in the place of the decimals of a parameter that is a switch, 0 or 1.
inline constexpr int kSwitch = -1;

struct EffectParameter {
    const char* key;  // of a script
    const char* label;
    const char* unit;
    double least;
    double start;
    double greatest;
    double step;
    int decimals;  // shown, or kSwitch
    // What it does, where the label leaves that open.
    const char* explanation = nullptr;
};

// What keeps its state from one run to the next, for as long as the program runs. The application
// owns one and hands it down.
struct EffectState {
    EqualizerFilters equalizer;
};

// Where an effect runs.
struct EffectTarget {
    CSoundDoc& document;
    std::uint32_t selectionStart = 0;
    std::uint32_t selectionEnd = 0;
    EffectState& state;
};

using PreviewPlay = CSoundDoc::PreviewPlay;

namespace effect_command {
enum Id : int {
    kReverb = 32874,
    kFlanger = 32880,
    kDynamics = 32881,
    kEqualizer = 32882,
    kModulator = 32883,
    kVolume = 32884,
    kPanpot = 32885,
};
}  // namespace effect_command

struct Effect {
    int commandId;
    const char* name;  // of a script
    const char* menuText;
    const char* prompt;
    const char* titlePrefix;  // of a document made from its preview
    std::span<const EffectParameter> parameters;
    // Both get one value for each parameter, in the table's order and inside its range. They return
    // false when nothing was done: refused, cancelled or out of memory; the document's last error
    // says which.
    bool (*apply)(const EffectTarget& target, std::span<const double> values);
    // Null where the effect has no preview.
    bool (*preview)(const EffectTarget& target, std::span<const double> values, PreviewPlay play);
};

// Pan and crossfade are two rows that share one dialog and one command.
std::span<const Effect> Effects();
// Null when there is none of that name.
const Effect* FindEffect(std::string_view name);

}  // namespace sonavel
