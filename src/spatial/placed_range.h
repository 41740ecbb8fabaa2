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
    // `bits` and `framesPerSecond` of the sound that the blocks are made of.
    PlacedRange(std::unique_ptr<const BlockRenderer> blocks, unsigned bits,
                std::uint32_t framesPerSecond);

    // The same piece costs nothing once more, for those who fade from one mix to another.
    void Render(std::uint32_t first, std::span<float> pairs) override;

  private:
    struct Block {
        std::optional<std::size_t> number;
        std::array<float, std::size_t{2} * kBlockFrames> pairs;
    };
    const Block& Rendered(std::size_t number);

    std::unique_ptr<const BlockRenderer> renderer_;
    float share_;
    std::vector<Block> blocks_;  // those of a piece; number i lies at i % size
};

}  // namespace sonavel
