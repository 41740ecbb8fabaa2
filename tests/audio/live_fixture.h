// Sines that are heard live, and how far what is heard jumps.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <numbers>
#include <span>
#include <vector>

#include "audio/live_loop.h"

namespace sonavel::testing {

inline constexpr std::uint32_t kRate = 44100;
inline constexpr std::uint32_t kFrames = 44100;  // whole periods of the sines

// amplitude * sin(2 pi frame / period + phase) on the left, half of it on the right.
struct SineSetting {
    double amplitude = 0.5;
    double period = 100;
    double phase = 0;
};

inline float SineAt(const SineSetting& sine, std::uint32_t frame) {
    return static_cast<float>(sine.amplitude *
                              std::sin(2 * std::numbers::pi * frame / sine.period + sine.phase));
}

class SineRenderer : public LiveRenderer {
  public:
    explicit SineRenderer(const SineSetting& sine) : sine_(sine) {}

    void Render(std::uint32_t first, std::span<float> pairs) override {
        for (std::uint32_t i = 0; i < pairs.size() / 2; ++i) {
            pairs[2 * i] = SineAt(sine_, first + i);
            pairs[2 * i + 1] = pairs[2 * i] / 2;
        }
    }

  private:
    SineSetting sine_;
};

inline std::unique_ptr<LiveRenderer> Sine(const SineSetting& sine) {
    return std::make_unique<SineRenderer>(sine);
}

// The greatest change of slope from frame to frame of the left side: a sine's own is its amplitude
// times the square of its angle a frame.
inline double GreatestBend(std::span<const float> pairs) {
    double most = 0;
    for (std::size_t i = 4; i + 1 < pairs.size(); i += 2)
        most = std::max(most, std::abs(double{pairs[i]} - 2.0 * pairs[i - 2] + pairs[i - 4]));
    return most;
}

inline double RootMeanSquare(std::span<const float> values) {
    double sum = 0;
    for (const float value : values) sum += double{value} * value;
    return std::sqrt(sum / static_cast<double>(values.size()));
}

}  // namespace sonavel::testing
