#include "effects/echo.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace sonavel {
namespace {

constexpr double kPercent = 0.01;

// What was heard one delay ago, frame by frame.
class EchoLines {
  public:
    EchoLines(std::uint32_t delay, unsigned channels, float feedback)
        : channels_(channels), feedback_(feedback), lines_(std::size_t{delay} * channels) {}

    // Both take in a frame and give what of the past is to be heard with it.
    std::array<float, 2> Repeat(const float* frame) {
        std::array<float, 2> heard{};
        for (unsigned channel = 0; channel < channels_; ++channel) {
            float& kept = lines_[at_ + channel];
            heard[channel] = kept;
            kept = frame[channel] + feedback_ * kept;
        }
        Step();
        return heard;
    }
    std::array<float, 2> PingPong(const float* frame) {
        float* kept = lines_.data() + at_;
        const std::array<float, 2> heard = {kept[0], kept[1]};
        kept[0] = 0.5f * (frame[0] + frame[1]) + feedback_ * heard[1];
        kept[1] = feedback_ * heard[0];
        Step();
        return heard;
    }

  private:
    void Step() {
        at_ += channels_;
        if (at_ == lines_.size()) at_ = 0;
    }

    unsigned channels_;
    float feedback_;
    std::vector<float> lines_;
    std::size_t at_ = 0;
};

// Delays beyond the range are not heard, and take no memory whatever rate a file claims.
std::uint32_t DelayFrames(double milliseconds, const RangeWork& work) {
    const double frames = milliseconds * work.Rate() / 1000;
    return static_cast<std::uint32_t>(
        std::clamp(std::round(frames), 1.0, static_cast<double>(work.Frames())));
}

}  // namespace

Outcome Echo(const RangeWork& work, RangeSink& sink) {
    const unsigned channels = work.Channels();
    const auto level = static_cast<float>(work.values[2] * kPercent);
    const bool pingPong = work.values[3] != 0 && channels == 2;
    EchoLines lines(DelayFrames(work.values[0], work), channels,
                    static_cast<float>(work.values[1] * kPercent));
    return ChangeInOrder(work, sink, [&](const RangePiece& piece) {
        for (std::size_t i = 0; i < piece.shares.size(); i += channels) {
            float* frame = piece.shares.data() + i;
            const auto heard = pingPong ? lines.PingPong(frame) : lines.Repeat(frame);
            for (unsigned channel = 0; channel < channels; ++channel)
                frame[channel] += level * heard[channel];
        }
    });
}

}  // namespace sonavel
