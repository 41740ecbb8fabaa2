// A complex Fourier transform of any power of two in double precision, for what is analysed once
// and not while a sound is rendered.
#pragma once

#include <cstddef>
#include <vector>

namespace sonavel {

struct ComplexSeries {
    explicit ComplexSeries(std::size_t size) : real(size), imaginary(size) {}

    std::size_t Size() const { return real.size(); }

    std::vector<double> real;
    std::vector<double> imaginary;
};

// Transforms of one size, a power of two; usable on several threads at once.
class AnalysisFft {
  public:
    explicit AnalysisFft(std::size_t size);

    std::size_t Size() const { return 2 * cosines_.size(); }
    // Forward (e^-i), unscaled, in place; of Size() values.
    void Transform(ComplexSeries& data) const;
    // The inverse, scaled by 1 / size.
    void TransformBack(ComplexSeries& data) const;

  private:
    std::vector<double> cosines_;  // of half a turn in Size() / 2 steps
    std::vector<double> sines_;
};

}  // namespace sonavel
