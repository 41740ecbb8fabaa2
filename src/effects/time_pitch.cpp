#include "effects/time_pitch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "libraries/time_stretch.h"

namespace sonavel {
namespace {

struct Change {
    double tempo = 1;
    double pitch = 1;
};

// Hands on what comes, and no more frames than there are to be.
class StretchedFrames {
  public:
    StretchedFrames(RangeSink& sink, unsigned channels, std::uint32_t frames)
        : sink_(sink), channels_(channels), frames_(frames) {}

    void PutAll(std::vector<float>& shares) {
        Put(shares);
        shares.clear();
    }
    // Silence where the library gave less.
    void Fill() {
        const std::vector<float> silence(std::size_t{kRangePieceFrames} * channels_);
        while (done_ < frames_) Put(silence);
    }

  private:
    void Put(std::span<const float> shares) {
        const std::size_t room = std::size_t{frames_ - done_} * channels_;
        const auto some = shares.first(std::min(room, shares.size()));
        sink_.Put(done_, some);
        done_ += static_cast<std::uint32_t>(some.size() / channels_);
    }

    RangeSink& sink_;
    unsigned channels_;
    std::uint32_t frames_;
    std::uint32_t done_ = 0;
};

class NoFrames : public RangeSink {
  public:
    void Put(std::uint32_t, std::span<const float>) override {}
};

Outcome CopyFrames(const RangeWork& work, RangeSink& sink) {
    return ChangePieces(work, sink, Cancel::kHeeded, [](const RangePiece&) {});
}

Outcome Stretch(const RangeWork& work, RangeSink& sink, const Change& change,
                std::uint32_t newFrames) {
    if (change.tempo == 1 && change.pitch == 1) return CopyFrames(work, sink);
    TimeStretch stretch(work.Channels(), work.Rate(), change.tempo, change.pitch);
    StretchedFrames stretched(sink, work.Channels(), newFrames);
    std::vector<float> ready;
    bool memory = true;
    NoFrames none;
    Outcome read = ChangeInOrder(work, none, [&](const RangePiece& piece) {
        memory = memory && stretch.Add(piece.shares, ready);
        stretched.PutAll(ready);
    });
    if (!read) return read;
    if (!memory || !stretch.Finish(ready)) return Failed(failure::kMemory);
    stretched.PutAll(ready);
    stretched.Fill();
    return Done();
}

}  // namespace

std::uint32_t FramesAtTempo(std::span<const double> values, std::uint32_t frames) {
    constexpr double kMost = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp(std::round(frames * 100 / values[0]), 1.0, kMost));
}

Outcome ChangeTempo(const RangeWork& work, RangeSink& sink) {
    return Stretch(work, sink, {.tempo = work.values[0] / 100},
                   FramesAtTempo(work.values, work.Frames()));
}

Outcome ChangePitch(const RangeWork& work, RangeSink& sink) {
    return Stretch(work, sink, {.pitch = std::pow(2.0, work.values[0] / 12)}, work.Frames());
}

}  // namespace sonavel
