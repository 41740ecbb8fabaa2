// A placed source as Live renders it: frame by frame of its range, of the blocks that Apply
// computes.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "audio/live_loop.h"
#include "spatial/block_renderer.h"

namespace sonavel {

class PlacedRange : public LiveRenderer {
  public:
    // The blocks of that range.
    PlacedRange(std::unique_ptr<const BlockRenderer> blocks, const RangeInput& input);

    // The same piece costs nothing once more, for those who fade from one mix to another.
    void Render(std::uint32_t first, std::span<float> pairs) override;
    void Prepare(std::uint32_t first) override;
    // Has the `frames` from `first` on rendered sooner when they are asked for; on all cores.
    void PrepareAhead(std::uint32_t first, std::uint32_t frames) const;

  private:
    struct Block {
        std::optional<std::size_t> number;
        std::array<float, std::size_t{2} * kBlockFrames> pairs;
    };
    const Block& Rendered(std::size_t number);

    std::unique_ptr<const BlockRenderer> renderer_;
    std::uint32_t frames_;
    std::uint32_t framesPerSecond_;
    float share_;
    std::vector<Block> blocks_;  // those of a piece; number i lies at i % size
};

}  // namespace sonavel
