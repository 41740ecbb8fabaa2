// Modulator: the sound times a gain curve that two sine oscillators form.
#pragma once

#include <cstdint>
#include <span>

namespace sonavel {

struct OscillatorParameters {
    int frequency = 0;         // 1/20 Hz, 0 to 2000
    int delayMs = 0;           // 0 to 10000
    int amplitudePercent = 0;  // 0 to 100
};

struct ModulatorParameters {
    OscillatorParameters first;
    OscillatorParameters second;
};

// One oscillator over the pieces of one range in order. It does nothing when its frequency or
// amplitude is 0.
class CModOscillator {
  public:
    CModOscillator(const OscillatorParameters& parameters, std::uint32_t samplesPerSecond);

    // Multiplies the gains of the next frames; at most kMaxPieceFrames of them.
    void Run(std::span<float> gains);

  private:
    bool active_;
    std::uint32_t delayFrames_;
    float amplitude_;
    double step_;
    float phase_ = 0;
    std::uint32_t frame_ = 0;
};

}  // namespace sonavel
