// An impulse response taken apart: its spectrum, as the minimum-phase response of the same
// magnitude (by the folded cepstrum: A. V. Oppenheim and R. W. Schafer, Discrete-Time Signal
// Processing), and its arrival time.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "spatial/analysis_fft.h"

namespace sonavel {

// |H|^2 at the bins 0 to size / 2 of the transform, whose size is not below the taps.
std::vector<double> PowerSpectrum(const AnalysisFft& fft, std::span<const float> taps);

// The minimum-phase response with this power at 0 to size / 2; as many taps as the size. What lies
// more than 80 dB below the greatest power is taken for that.
std::vector<double> MinimumPhase(const AnalysisFft& fft, std::span<const double> power);
// Two of them in the time of one.
std::array<std::vector<double>, 2> MinimumPhases(
    const AnalysisFft& fft, const std::array<std::span<const double>, 2>& powers);

// How much later than `minimumPhase` the response arrives, in frames: where both correlate best,
// between frames too, after a low-pass (Gaussian) that lets through half at `cutoff`, a share of
// the rate: it is by low tones that ears tell times apart. The response has at most as many taps.
double ArrivalOf(const AnalysisFft& fft, std::span<const float> taps,
                 std::span<const double> minimumPhase, double cutoff);

}  // namespace sonavel
