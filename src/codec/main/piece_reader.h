// Reads a file from its present place on, a piece after the other.
#pragma once

#include "codec/main/frame_reader.h"
#include "codec/main/piece_ring.h"
#include "codec/main/sample_reader.h"

namespace sonavel {

class PieceReader : public FrameReader {
  public:
    PieceReader(SNDFILE* file, const SoundFileDescription& description);

    std::span<const std::uint8_t> Next() override;
    std::size_t KeptCalls() const override { return PieceRing::kPieces - 1; }

  private:
    SampleReader samples_;
    std::size_t frameBytes_;
    PieceRing pieces_;
};

}  // namespace sonavel
