// Loudness as EBU R 128 and ITU-R BS.1770 define it, by the libebur128 library. Frames go in as
// they come, interleaved, full scale being 1; what is asked for can be asked at any time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace sonavel {

class LoudnessMeter {
  public:
    // What it finds out, each at a cost.
    enum class Finds { kLoudness, kTruePeak };

    // 1 or 2 channels; a mono sound counts as one channel, not as two alike.
    LoudnessMeter(Finds finds, unsigned channels, std::uint32_t samplesPerSecond);
    ~LoudnessMeter();
    LoudnessMeter(const LoudnessMeter&) = delete;
    LoudnessMeter& operator=(const LoudnessMeter&) = delete;

    // False when memory is short, or the rate is one that the library does not measure (below 16
    // or above 2822400).
    bool Add(std::span<const float> frames);

    // Of kLoudness: LUFS over all that is not pause; nothing where all of it is, or where there is
    // less than 0.4 seconds.
    std::optional<double> Integrated() const;
    // Of kLoudness: LU between the quiet and the loud parts; 0 where there is too little.
    double Range() const;
    // Of kTruePeak: the greatest magnitude between the samples too, of all channels.
    double TruePeak() const;
    // Likewise of what was added last, which what was added before it reaches into.
    double TruePeakOfLast() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace sonavel
