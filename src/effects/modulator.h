// Modulator: the sound times a gain curve that two sine oscillators form.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "effects/effect_processor.h"
#include "effects/running_sum.h"

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

// One oscillator over the frames of a run. It does nothing when its frequency or amplitude is 0.
class CModOscillator {
  public:
    CModOscillator(const OscillatorParameters& parameters, std::uint32_t samplesPerSecond,
                   std::uint32_t runFrames);

    // Multiplies the gains of the piece that begins at this frame of the run; at most kPieceFrames
    // of them.
    void Run(std::uint32_t firstFrame, std::span<float> gains) const;

  private:
    bool active_;
    std::uint32_t delayFrames_;
    float amplitude_;
    std::vector<RunningSum> phases_;  // at the start of each piece
};

// Values: 1/20 Hz, ms and percent of the first oscillator and of the second one.
std::unique_ptr<EffectProcessor> MakeModulator(std::span<const double> values,
                                               const EffectRun& run);

}  // namespace sonavel
