#include "codec/main/piece_reader.h"

namespace sonavel {

PieceReader::PieceReader(SNDFILE* file, const SoundFileDescription& description)
    : samples_(file, description),
      frameBytes_(description.BytesPerFrame()),
      pieces_(WholeFrames(kPieceBytes, frameBytes_)) {}

std::span<const std::uint8_t> PieceReader::Next() {
    const std::span<std::uint8_t> piece = pieces_.Next();
    const SampleReader::Got got = samples_.Read(piece);
    hadError_ = hadError_ || got.hadError;
    silenced_ += got.silenced;
    frames_ += got.frames;
    return piece.first(got.frames * frameBytes_);
}

}  // namespace sonavel
