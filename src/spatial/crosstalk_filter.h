// Crosstalk cancellation: what two loudspeakers must play so that each ear hears its own channel
// alone (B. S. Atal and M. R. Schroeder; inverted with regularisation, O. Kirkeby and
// P. A. Nelson).
#pragma once

#include <array>
#include <complex>
#include <memory>
#include <span>
#include <vector>

#include "sound/fft.h"
#include "spatial/response_bank.h"

namespace sonavel {

inline constexpr int kCrosstalkBlock = kFftSize / 2;  // frames

// Of one frequency: from the two channels, or the two loudspeakers, to the two ears, left first.
using EarMatrix = std::array<std::array<std::complex<double>, 2>, 2>;  // [to][from]

class CrosstalkFilter {
  public:
    // For loudspeakers at plus and minus `angle` degrees from straight ahead, 1 to 90, and the
    // listener's responses. Throws std::bad_alloc.
    CrosstalkFilter(ResponseBank& bank, double angle);

    // Of each of the four filters, 60 ms or more; half of them lie ahead of the sound.
    int Taps() const { return static_cast<int>(parts_.size()) * kCrosstalkBlock; }
    // How many frames of input Process() looks at: those of the block, and half the taps before and
    // behind them.
    int InputFrames() const { return Taps() + kCrosstalkBlock; }
    // `input`: InputFrames() stereo frames. `output`: the 512 in the middle, filtered.
    void Process(std::span<const float> input, std::span<float, kFftSize> output) const;

    // What the loudspeakers do to the ears, and what the ears hear of the channels in the end, at a
    // frequency in shares of the rate: for measuring.
    EarMatrix SpeakersToEars(double frequency) const;
    EarMatrix ChannelsToEars(double frequency) const;

  private:
    // A stretch of the filters, transformed: of left + i right, and of its mirrored conjugate.
    struct Part {
        Spectrum straight;
        Spectrum mirrored;
    };
    using Taps2x2 = std::array<std::array<std::vector<double>, 2>, 2>;  // [speaker][channel]

    void Invert();
    void LoadSpectra();
    static void Accumulate(const Part& part, const Spectrum& input, Spectrum& sum);

    std::array<std::array<std::vector<float>, 2>, 2> speakerTaps_;  // [ear][speaker]
    std::array<std::array<double, 2>, 2> speakerDelays_{};
    double rate_ = 0;
    Taps2x2 taps_;
    std::vector<Part> parts_;
};

}  // namespace sonavel
