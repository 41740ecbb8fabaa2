#include "exchange/read_extras.h"

#include <new>
#include <string_view>

#include "exchange/aiff_extras.h"
#include "exchange/au_annotation.h"
#include "exchange/chunk_map.h"
#include "exchange/id3_tags.h"
#include "exchange/vorbis_comments.h"
#include "exchange/wave_extras.h"

namespace sonavel {
namespace {

void ReadUnchunked(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper) {
    const std::vector<std::uint8_t> head = bytes.Part(0, 4);
    const std::string_view magic(reinterpret_cast<const char*>(head.data()), head.size());
    if (magic == ".snd") return ReadAuExtras(bytes, keeper);
    if (magic == "OggS") return ReadOggExtras(bytes, rate, keeper);
    ReadFlacExtras(bytes, rate, keeper);
    // Frames of MP3 begin with 11 set bits.
    const bool isMpeg = head.size() > 1 && head[0] == 0xFF && (head[1] & 0xE0) == 0xE0;
    if (isMpeg || magic.starts_with("ID3")) ReadMp3Extras(bytes, rate, keeper);
}

}  // namespace

Result<SoundExtras> ReadExtras(RandomBytes& bytes, std::uint32_t rate) try {
    ExtrasKeeper keeper;
    const ChunkMap map = MapChunks(bytes);
    if (map.container == ChunkContainer::kNone)
        ReadUnchunked(bytes, rate, keeper);
    else if (map.container == ChunkContainer::kAiff)
        ReadAiffExtras(bytes, map, rate, keeper);
    else
        ReadWaveExtras(bytes, map, rate, keeper);
    return keeper.Take();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
