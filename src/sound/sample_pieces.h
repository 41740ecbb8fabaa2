// Samples that are computed in pieces, each by itself: on all cores, with a watch that is told how
// far they are and may end them.
#pragma once

#include <cstddef>
#include <functional>

#include "platform/outcome.h"
#include "platform/piece_watch.h"

namespace sonavel {

// No more samples than this, of one channel or two, are computed between two words.
inline constexpr std::size_t kPieceSamples = std::size_t{1} << 17;

// Computes `count` samples from `first` on; on any thread.
using SamplePiece = std::function<void(std::size_t first, std::size_t count)>;
// All pieces of so many samples. Fails when the memory cannot be had; throws nothing.
Outcome ComputePieces(std::size_t samples, const PieceWatch& watch, const SamplePiece& compute);

}  // namespace sonavel
