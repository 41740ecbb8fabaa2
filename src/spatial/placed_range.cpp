#include "spatial/placed_range.h"

#include <algorithm>
#include <new>

#include "platform/parallel.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

// As much as is heard until another setting may be.
constexpr double kPreparedSeconds = 0.1;

}  // namespace

PlacedRange::PlacedRange(std::unique_ptr<const BlockRenderer> blocks, const RangeInput& input)
    : renderer_(std::move(blocks)),
      frames_(input.range.Frames()),
      framesPerSecond_(input.sound.GetSamplesPerSecond()),
      share_((input.sound.GetBits() == ByteSample::kBits ? kEightBitScale : 1) /
             WordSample::kHalfScale),
      blocks_(LiveLoop::PieceFramesAt(framesPerSecond_) / kBlockFrames + 2) {}

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

void PlacedRange::Prepare(std::uint32_t first) {
    LiveRenderer::Prepare(first);
    PrepareAhead(first, static_cast<std::uint32_t>(kPreparedSeconds * framesPerSecond_));
}

void PlacedRange::PrepareAhead(std::uint32_t first, std::uint32_t frames) const {
    if (first >= frames_ || frames == 0) return;
    const std::uint32_t last = first + std::min(frames, frames_ - first) - 1;
    const std::size_t firstBlock = first / kBlockFrames;
    const WorkEnd end = ComputeParts(last / kBlockFrames - firstBlock + 1, [&](std::size_t part) {
        renderer_->Prepare(firstBlock + part);
    });
    if (end == WorkEnd::kOutOfMemory) throw std::bad_alloc();
}

}  // namespace sonavel
