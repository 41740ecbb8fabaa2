// Sound at another sample rate, by the soxr library at its very high quality. Pieces go in as they
// come, and the resampled frames come out as soon as the filter has seen enough around them;
// nothing is delayed in the end, so a sound of N frames gives N * toRate / fromRate frames, to the
// nearest one.
#pragma once

#include <memory>
#include <span>
#include <vector>

namespace sonavel {

class Resampler {
  public:
    // channels at least 1; rates in frames a second, above 0.
    Resampler(unsigned channels, double fromRate, double toRate);
    ~Resampler();
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    // Appends to `resampled` the frames that `frames` make ready. Both are interleaved, full scale
    // being 1, whole frames only. False when memory is short; the resampler is of no use then.
    bool Add(std::span<const float> frames, std::vector<float>& resampled);
    // Appends the rest, once, after the last piece.
    bool Finish(std::vector<float>& resampled);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace sonavel
