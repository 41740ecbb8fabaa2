// Reads little-endian 24-bit samples as they lie in the file and makes floats of them, which takes
// half the time of the library's own way.
#pragma once

#include <vector>

#include "codec/main/frame_reader.h"
#include "codec/main/piece_ring.h"

namespace sonavel {

class Packed24Reader : public FrameReader {
  public:
    // True for a file that this reader reads.
    static bool CanRead(const LibraryFile& file);

    Packed24Reader(SNDFILE* file, std::size_t channels);

    std::span<const std::uint8_t> Next() override;
    std::size_t KeptCalls() const override { return PieceRing::kPieces - 1; }

  private:
    SNDFILE* file_;
    std::size_t channels_;
    std::size_t framesPerPiece_;
    std::vector<std::uint8_t> packed_;
    PieceRing pieces_;
};

}  // namespace sonavel
