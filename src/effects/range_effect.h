// Effects that make the frames of a range anew, as shares of full scale: what they are given, and
// where their frames go. They know neither a document nor a window.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "platform/outcome.h"
#include "platform/progress_window.h"
#include "sound/frame_range.h"
#include "sound/sound.h"

namespace sonavel {

struct EffectState;

struct RangeWork {
    const Sound& sound;
    FrameRange range;                // inside the sound, not empty
    std::span<const double> values;  // of the parameters
    EffectState& state;
    ProgressWindow& progress;

    unsigned Channels() const { return sound.GetChannels(); }
    std::uint32_t Frames() const { return range.Frames(); }
    std::uint32_t Rate() const { return sound.GetSamplesPerSecond(); }
    // Whole frames, interleaved, from `first` frames into the range on; silence behind its end.
    void Read(std::uint32_t first, std::span<float> shares) const;
};

// Takes the new frames. Several threads may put different ones at once.
class RangeSink {
  public:
    virtual ~RangeSink() = default;
    // Whole frames, interleaved, `first` of the new range on; what lies beyond its end is dropped.
    virtual void Put(std::uint32_t first, std::span<const float> shares) = 0;
};

// Puts every frame once, or says why not; throws std::bad_alloc alone.
using ComputeRange = Outcome (*)(const RangeWork& work, RangeSink& sink);
// How many frames those of a range become.
using CountFrames = std::uint32_t (*)(std::span<const double> values, std::uint32_t frames);

// The frames of one piece where pieces are computed one by one.
inline constexpr std::uint32_t kRangePieceFrames = 8192;

struct RangePiece {
    std::uint32_t first;      // frames of the range before it
    std::span<float> shares;  // its own, interleaved
};

// Which part of the progress is this one.
struct PercentPart {
    int from = 0;
    int to = 100;
};

// Reads the range piece by piece, lets `change` work on each in place, on all cores, and puts what
// comes out at its old place. Nothing is put while the window is polled. A cancel is heeded unless
// the frames go straight into the sound.
enum class Cancel { kHeeded, kIgnored };
Outcome ChangePieces(const RangeWork& work, RangeSink& sink, Cancel cancel,
                     const std::function<void(const RangePiece&)>& change, PercentPart part = {});

// Likewise one after the other on this thread, where a piece needs those before it; a cancel is
// heeded.
Outcome ChangeInOrder(const RangeWork& work, RangeSink& sink,
                      const std::function<void(const RangePiece&)>& change, PercentPart part = {});

}  // namespace sonavel
