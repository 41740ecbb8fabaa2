// Frames on their way to an encoder, at another sample rate.
#pragma once

#include <vector>

#include "libraries/resampler.h"
#include "sound/codec_values.h"
#include "sound/sound_codecs.h"

namespace sonavel {

class ResampledFrames : public FrameSource {
  public:
    // `from` gives the frames of the request as it is. What is given on are floats.
    ResampledFrames(FrameSource& from, const EncodeRequest& request, std::uint32_t toRate);

    // The request for what is given on: its rate, samples and number of frames, to the nearest one.
    EncodeRequest Request() const;

    GoOn Watch() override { return from_.Watch(); }
    Outcome Give(std::span<std::uint8_t> to) override;

  private:
    Outcome Refill();

    FrameSource& from_;
    EncodeRequest request_;
    std::uint32_t toRate_;
    Resampler resampler_;
    std::uint64_t left_;  // frames that were not taken from the source yet
    bool isFinished_ = false;
    std::vector<std::uint8_t> piece_;
    std::vector<float> floats_;
    std::vector<float> ready_;
    std::size_t given_ = 0;  // samples of `ready_`
};

}  // namespace sonavel
