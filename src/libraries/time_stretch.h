// Duration and pitch apart from each other, by the SoundTouch library. Frames go in as they come,
// interleaved, full scale being 1.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace sonavel {

class TimeStretch {
  public:
    // channels 1 or 2; tempo and pitch are factors above 0, 1 leaving the sound as it is: tempo 2
    // halves the duration, pitch 2 is an octave up.
    TimeStretch(unsigned channels, std::uint32_t samplesPerSecond, double tempo, double pitch);
    ~TimeStretch();
    TimeStretch(const TimeStretch&) = delete;
    TimeStretch& operator=(const TimeStretch&) = delete;

    // Appends to `stretched` the frames that `frames` make ready. False when memory is short.
    bool Add(std::span<const float> frames, std::vector<float>& stretched);
    // Appends the rest, once; all in all these are the frames added / tempo, give or take a few.
    bool Finish(std::vector<float>& stretched);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace sonavel
