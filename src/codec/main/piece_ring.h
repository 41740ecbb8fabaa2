// Memory for pieces that are on their way through a pipe, used in turn: more of it than the pipe
// holds, so that a piece has been read by the time its memory is used again.
#pragma once

#include <array>

#include "codec/main/page_block.h"

namespace sonavel {

class PieceRing {
  public:
    static constexpr std::size_t kPieces = 6;

    explicit PieceRing(std::size_t bytesPerPiece) {
        for (PageBlock& piece : pieces_) piece = PageBlock(bytesPerPiece);
    }

    std::span<std::uint8_t> Next() { return pieces_[next_++ % kPieces].Bytes(); }

  private:
    std::array<PageBlock, kPieces> pieces_;
    std::size_t next_ = 0;
};

}  // namespace sonavel
