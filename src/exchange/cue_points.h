// The points of a chunk "cue " put together with the labels and lengths of its "adtl" lists, which
// may stand before it or behind it.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "exchange/chunk_map.h"
#include "exchange/sound_extras.h"

namespace sonavel {

class CuePoints {
  public:
    // The points that are there; fewer than the chunk says are remarked upon.
    void AddPoints(const ChunkFields& cue, ExtrasKeeper& keeper);
    // The content of a "LIST" of the form "adtl": "labl", "note" and "ltxt".
    void AddTexts(std::span<const std::uint8_t> list, ByteOrder order, ExtrasKeeper& keeper);
    void HandOver(ExtrasKeeper& keeper);

  private:
    struct Text {
        std::string label;
        std::string note;  // stands in for a label that is missing, as does the text of a region
        std::uint32_t frames = 0;
    };
    struct Point {
        std::uint32_t id;
        std::uint32_t frame;
    };

    void AddText(FourCc id, const ChunkFields& content);

    std::vector<Point> points_;
    std::map<std::uint32_t, Text> texts_;
};

}  // namespace sonavel
