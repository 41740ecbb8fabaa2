// Markers, tags and foreign chunks of AIFF and AIFC files.
#pragma once

#include "exchange/chunk_map.h"
#include "exchange/sound_extras.h"

namespace sonavel {

// Adds what the mapped chunks hold. Markers are those of "MARK"; the loops of "INST" are regions
// "Loop 1" (sustain) and "Loop 2" (release), and markers without a name of their own that only mark
// their ends are left out. `rate`, in frames a second, turns chapters' times into frames.
void ReadAiffExtras(RandomBytes& bytes, const ChunkMap& map, std::uint32_t rate,
                    ExtrasKeeper& keeper);

}  // namespace sonavel
