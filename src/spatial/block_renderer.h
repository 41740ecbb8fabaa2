// What renders a range block by block: the filters over a sound, and the run over all blocks.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "platform/progress_window.h"
#include "spatial/range_input.h"

namespace sonavel {

class BlockRenderer {
  public:
    virtual ~BlockRenderer() = default;

    // The 768 stereo frames from block * 768 on, of any block and beside others. Throws
    // std::bad_alloc alone.
    virtual void Render(std::size_t block, BlockOutput output) const = 0;
    // Does now what rendering the block then need not do; likewise.
    virtual void Prepare(std::size_t /*block*/) const {}
};

class FilteredBlocks : public BlockRenderer {
  public:
    FilteredBlocks(const RangeInput& input, std::unique_ptr<const BlockFilter> filter);

    void Render(std::size_t block, BlockOutput output) const override;

  private:
    RangeInput input_;
    std::unique_ptr<const BlockFilter> filter_;
};

enum class RenderEnd { kWhole, kCancelled };

struct RenderedBlocks {
    float peak = 0;
    RenderEnd end = RenderEnd::kWhole;
};

// Fills the pairs as far as the person lets it; the rest stays silent. On all cores, unless they
// last less than a second. Without memory for a block it throws std::bad_alloc.
RenderedBlocks RenderBlocks(const BlockRenderer& renderer, std::uint32_t framesPerSecond,
                            std::span<float> pairs, ProgressWindow& progress);

}  // namespace sonavel
