// The block filters of a source at rest and of one that moves: a block of input in, 768 stereo
// frames with the distance's gain out. What a block needs of those before it is found out when the
// filter is made, so that blocks are computed in any order and beside each other.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "spatial/convolution.h"
#include "spatial/direction.h"
#include "spatial/source_path.h"

namespace sonavel {

using BlockInput = std::span<const float, kBlockInput>;
using BlockOutput = std::span<float, 2 * kBlockFrames>;

class BlockFilter {
  public:
    virtual ~BlockFilter() = default;

    // `block`: how many blocks of the range lie before it.
    virtual void Process(BlockInput input, std::size_t block, BlockOutput output) const = 0;
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

    void Process(BlockInput input, std::size_t block, BlockOutput output) const override;

  private:
    EarSpectra ears_;
    float gain_;
};

// Changes the responses when the source has moved more than ten degrees, fading from the old ones
// to the new ones within one block; the gain glides from block to block.
class MovingSourceFilter : public BlockFilter {
  public:
    // Along the path within `rangeFrames` frames.
    MovingSourceFilter(const SourcePath& path, std::uint32_t rangeFrames);

    void Process(BlockInput input, std::size_t block, BlockOutput output) const override;

  private:
    struct Passing {
        const EarSpectra* from;
        const EarSpectra* to;
        float fromGain;
        float toGain;
    };
    const EarSpectra* EarsOf(const SourceDirection& direction);

    std::map<std::pair<int, int>, EarSpectra> ears_;  // by the responses of both ears
    std::vector<Passing> passings_;                   // of each block
};

// Whether a source that moved from one direction to the other keeps its responses.
bool KeepsResponses(const SourceDirection& from, const SourceDirection& to);

}  // namespace sonavel
