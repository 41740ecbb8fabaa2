// The power spectrum of a windowed stretch of sound, for windows of 256 to 16384 frames: a real
// transform by way of a complex one of half its length (decimation in frequency by radix 4, in
// place; the last stages sort the bins).
#pragma once

#include <array>
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

    unsigned WindowFrames() const { return static_cast<unsigned>(2 * points_); }
    // From 0 Hz to half the sample rate, both among them.
    unsigned Bins() const { return WindowFrames() / 2 + 1; }
    // Of WindowFrames() frames, the power at each bin; a sine of amplitude 1 in the middle of a bin
    // has the power 1 there.
    void Compute(std::span<const float> frames, std::span<float> power);

  private:
    // Floats that begin where a processor's vectors are read fastest.
    class Floats {
      public:
        explicit Floats(std::size_t count) : lines_((count + kOfLine - 1) / kOfLine) {}

        float* Data() { return lines_.data()->data(); }

      private:
        static constexpr std::size_t kOfLine = 16;
        struct alignas(kOfLine * sizeof(float)) Line : std::array<float, kOfLine> {};

        std::vector<Line> lines_;
    };
    struct Complexes {
        explicit Complexes(std::size_t count) : real(count), imaginary(count) {}
        // Sets a value to e^(-2 pi i part / parts).
        void PutTurn(std::size_t at, std::size_t part, std::size_t parts);

        Floats real, imaginary;
    };

    void PutWindow(WindowShape shape);
    void PutFactors();
    void PutBlockBins();

    std::size_t points_;  // of the complex transform
    Floats window_;       // of the sum 1
    Complexes turns_;     // e^(-i pi k / points_)
    Complexes factors_;   // of the stages
    Complexes quarters_, bins_;
    std::vector<std::uint16_t> blockBins_;
};

}  // namespace sonavel
