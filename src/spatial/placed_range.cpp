#include "spatial/placed_range.h"

#include <algorithm>

#include "sound/sample_io.h"

namespace sonavel {

PlacedRange::PlacedRange(std::unique_ptr<const BlockRenderer> blocks, unsigned bits,
                         std::uint32_t framesPerSecond)
    : renderer_(std::move(blocks)),
      share_((bits == ByteSample::kBits ? kEightBitScale : 1) / WordSample::kHalfScale),
      blocks_(LiveLoop::PieceFramesAt(framesPerSecond) / kBlockFrames + 2) {}

const PlacedRange::Block& PlacedRange::Rendered(std::size_t number) {
    Block& block = blocks_[number % blocks_.size()];
    if (block.number == number) return block;
    block.number.reset();
    renderer_->Render(number, block.pairs);
    block.number = number;
    return block;
}

void PlacedRange::Render(std::uint32_t first, std::span<float> pairs) {
    while (!pairs.empty()) {
        const Block& block = Rendered(first / kBlockFrames);
        const std::size_t from = std::size_t{2} * (first % kBlockFrames);
        const std::size_t count = std::min(pairs.size(), block.pairs.size() - from);
        for (std::size_t i = 0; i < count; ++i) pairs[i] = block.pairs[from + i] * share_;
        pairs = pairs.subspan(count);
        first += static_cast<std::uint32_t>(count / 2);
    }
}

}  // namespace sonavel
