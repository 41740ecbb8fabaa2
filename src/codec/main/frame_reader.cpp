#include "codec/main/frame_reader.h"

#include "codec/main/packed24_reader.h"
#include "codec/main/piece_reader.h"
#include "codec/main/split_reader.h"

namespace sonavel {

std::unique_ptr<FrameReader> MakeFrameReader(const char* path, const LibraryFile& file,
                                             const SoundFileDescription& description) {
    if (Packed24Reader::CanRead(file))
        return std::make_unique<Packed24Reader>(file.handle.get(), description.channels);
    if (SplitReader::CanRead(file, description))
        return std::make_unique<SplitReader>(path, file, description);
    return std::make_unique<PieceReader>(file.handle.get(), description);
}

}  // namespace sonavel
