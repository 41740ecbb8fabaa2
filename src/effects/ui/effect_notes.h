// What a person should know before pressing a button of an effect dialog: where OK will change
// nothing, where samples will wrap around, and where a preview plays something other than what OK
// would leave.
#pragma once

#include <QStringList>

#include "effects/effect_table.h"
#include "view/draw/block_extremes.h"

namespace sonavel {

struct NotedSound {
    unsigned channels = 2;
    unsigned bits = 16;
    SampleExtremes extremes;  // of the range
};

// One sentence a line; empty when there is nothing to say.
QStringList EffectNotes(const Effect& effect, const NotedSound& sound);

}  // namespace sonavel
