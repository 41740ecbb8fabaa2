// Markers, tags and foreign chunks of RIFF WAVE, RF64 and W64 files.
#pragma once

#include "exchange/chunk_map.h"
#include "exchange/sound_extras.h"

namespace sonavel {

// Adds what the mapped chunks hold. `rate`, in frames a second, turns the times of chapters into
// frames.
//
// Markers are the points of "cue " by their sample offsets, with labels and lengths by their ids
// wherever these stand; the loops of "smpl" are regions "Loop 1", "Loop 2". Every chunk that
// describes neither the samples nor these markers nor their tags is kept as it is, "smpl" and
// "bext" too.
void ReadWaveExtras(RandomBytes& bytes, const ChunkMap& map, std::uint32_t rate,
                    ExtrasKeeper& keeper);

// The loops of a chunk "smpl", whose ends are their last frames.
void AddSamplerLoops(const ChunkFields& smpl, ExtrasKeeper& keeper);

}  // namespace sonavel
