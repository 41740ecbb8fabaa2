// The greatest and least sample of every 256 frames, per channel: what columns of many frames are
// drawn from.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "sound/sample_scan.h"
#include "sound/sound.h"

namespace sonavel {

class BlockExtremes {
  public:
    static constexpr std::int64_t kFramesPerBlock = 256;

    // Reads the blocks anew from the one that holds `firstChangedFrame` to the end, the last,
    // partial block included; all of them when channel count or sample width are others than
    // before.
    void Rebuild(const Sound& wave, std::int64_t firstChangedFrame);
    // Remembers that frames from this one on have changed, without a look at them.
    void NoteChange(std::int64_t firstChangedFrame);
    // Rebuilds what was noted as changed since, if anything.
    void Refresh(const Sound& wave);

    // Counts the rebuilds: another number than before means another content.
    std::uint64_t Revision() const { return revision_; }
    std::size_t BlockCount() const { return blockCount_; }
    unsigned Channels() const { return channels_; }
    // One level a block. Empty for a channel the sound lacks.
    std::span<const std::int32_t> Maxima(unsigned channel) const;
    std::span<const std::int32_t> Minima(unsigned channel) const;

    // Over the blocks in which the frames startFrame, startFrame + 256, ... below endFrame lie; in
    // place of a block behind the last the last one counts, silence where there is none. At least
    // one frame.
    SampleExtremes Over(unsigned channel, std::int64_t startFrame, std::int64_t endFrame) const;

  private:
    struct ChannelBlocks {
        std::vector<std::int32_t> maxima;
        std::vector<std::int32_t> minima;
    };

    void Resize(std::size_t count);
    // Scans the blocks from `firstBlock` on.
    template <class Type>
    void RebuildFrom(std::span<const typename Type::Stored> samples, std::size_t firstBlock);

    static constexpr std::int64_t kNothing = std::numeric_limits<std::int64_t>::max();

    std::int64_t changedFrom_ = kNothing;
    std::uint64_t revision_ = 0;
    unsigned channels_ = 0;
    unsigned bits_ = 0;
    std::size_t blockCount_ = 0;
    std::array<ChannelBlocks, 2> blocks_;
};

}  // namespace sonavel
