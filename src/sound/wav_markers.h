// The markers of a WAV file: its chunks "cue " and "LIST" "adtl" with "labl" and "ltxt".
#pragma once

#include <cstdint>
#include <vector>

#include "sound/marker_list.h"
#include "sound/riff.h"

namespace sonavel {

// Searches onward from the current position of `reader`, which stands behind the data. A file
// without "cue " has no markers. False when the list or a label is missing or damaged; the markers
// then keep what was read.
bool ReadMarkers(RiffReader& reader, const RiffChunk& riff, MarkerList& markers);

// The bytes that follow the data: "cue " and "LIST". The first is what the RIFF size counts, the
// list is not.
struct MarkerChunks {
    std::vector<std::uint8_t> cue;
    std::vector<std::uint8_t> list;
};
MarkerChunks BuildMarkerChunks(const MarkerList& markers);

}  // namespace sonavel
