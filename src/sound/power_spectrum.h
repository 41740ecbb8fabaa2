// The power spectrum of a windowed stretch of sound, for windows of 256 to 16384 frames: a real
// transform by way of a complex one of half its length (M. C. Pease's and T. G. Stockham's
// ordering, radix 4 with a last step of radix 2).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace sonavel {

enum class WindowShape : std::uint8_t {
    kHann,
    kBlackmanHarris,  // four terms, side lobes at -92 dB (F. J. Harris, 1978)
};

inline constexpr unsigned kLeastSpectrumWindow = 256;
inline constexpr unsigned kGreatestSpectrumWindow = 16384;

// Belongs to one thread: it holds the room that it computes in.
class PowerSpectrum {
  public:
    // A power of two from kLeastSpectrumWindow to kGreatestSpectrumWindow. Throws std::bad_alloc.
    PowerSpectrum(unsigned windowFrames, WindowShape shape);

    unsigned WindowFrames() const { return static_cast<unsigned>(window_.size()); }
    // From 0 Hz to half the sample rate, both among them.
    unsigned Bins() const { return WindowFrames() / 2 + 1; }
    // Of WindowFrames() frames, the power at each bin; a sine of amplitude 1 in the middle of a bin
    // has the power 1 there.
    void Compute(std::span<const float> frames, std::span<float> power);

  private:
    struct Complexes {
        explicit Complexes(std::size_t count) : real(count), imaginary(count) {}
        // Sets a value to e^(-2 pi i part / parts).
        void PutTurn(std::size_t at, std::size_t part, std::size_t parts);

        std::vector<float> real, imaginary;
    };

    std::vector<float> window_;  // of the sum 1
    // Factors of the transform's stages.
    Complexes turns_, first_, second_;
    Complexes data_, scratch_;
};

}  // namespace sonavel
