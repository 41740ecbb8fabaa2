// The block filters of a source at rest and of one that moves: a block of input in, 768 stereo
// frames with the distance's gain out.
#pragma once

#include <array>
#include <memory>
#include <span>

#include "spatial/convolution.h"
#include "spatial/direction.h"
#include "spatial/source_path.h"

namespace sonavel {

using BlockInput = std::span<const float, kBlockInput>;
using BlockOutput = std::span<float, 2 * kBlockFrames>;

class BlockFilter {
  public:
    virtual ~BlockFilter() = default;

    // `t`: how much of the range lies before the block, 0 to 1.
    virtual void Process(BlockInput input, float t, BlockOutput output) = 0;
};

// The responses of both ears, transformed.
struct EarSpectra {
    explicit EarSpectra(const SourceDirection& direction);

    Spectrum left;
    Spectrum right;
};

class FixedSourceFilter : public BlockFilter {
  public:
    explicit FixedSourceFilter(const SourcePosition& position);

    void Process(BlockInput input, float t, BlockOutput output) override;

  private:
    EarSpectra ears_;
    float gain_;
};

// Changes the responses when the source has moved more than ten degrees, fading from the old ones
// to the new ones within one block; the gain glides from block to block.
class MovingSourceFilter : public BlockFilter {
  public:
    explicit MovingSourceFilter(const SourcePath& path);

    void Process(BlockInput input, float t, BlockOutput output) override;

  private:
    const SourcePath& path_;
    SourceDirection direction_;
    std::unique_ptr<EarSpectra> ears_;
    float gain_;
    std::array<float, 2 * kBlockFrames> former_;
};

// Whether a source that moved from one direction to the other keeps its responses.
bool KeepsResponses(const SourceDirection& from, const SourceDirection& to);

}  // namespace sonavel
