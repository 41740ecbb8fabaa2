#include "spatial/analysis_fft.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace sonavel {
namespace {

void SortByReversedBits(ComplexSeries& data) {
    const std::size_t size = data.Size();
    for (std::size_t i = 1, reversed = 0; i < size; ++i) {
        std::size_t bit = size >> 1;
        for (; (reversed & bit) != 0; bit >>= 1) reversed ^= bit;
        reversed ^= bit;
        if (i >= reversed) continue;
        std::swap(data.real[i], data.real[reversed]);
        std::swap(data.imaginary[i], data.imaginary[reversed]);
    }
}

}  // namespace

AnalysisFft::AnalysisFft(std::size_t size) : cosines_(size / 2), sines_(size / 2) {
    for (std::size_t k = 0; k < size / 2; ++k) {
        const double angle =
            -2 * std::numbers::pi * static_cast<double>(k) / static_cast<double>(size);
        cosines_[k] = std::cos(angle);
        sines_[k] = std::sin(angle);
    }
}

void AnalysisFft::Transform(ComplexSeries& data) const {
    SortByReversedBits(data);
    double* re = data.real.data();
    double* im = data.imaginary.data();
    const std::size_t size = data.Size();
    for (std::size_t half = 1; half < size; half *= 2) {
        const std::size_t stride = size / 2 / half;
        for (std::size_t first = 0; first < size; first += 2 * half)
            for (std::size_t k = 0; k < half; ++k) {
                const std::size_t a = first + k;
                const std::size_t b = a + half;
                const double wr = cosines_[k * stride];
                const double wi = sines_[k * stride];
                const double tr = re[b] * wr - im[b] * wi;
                const double ti = re[b] * wi + im[b] * wr;
                re[b] = re[a] - tr;
                im[b] = im[a] - ti;
                re[a] += tr;
                im[a] += ti;
            }
    }
}

void AnalysisFft::TransformBack(ComplexSeries& data) const {
    std::swap(data.real, data.imaginary);
    Transform(data);
    std::swap(data.real, data.imaginary);
    const double scale = 1 / static_cast<double>(data.Size());
    for (double& value : data.real) value *= scale;
    for (double& value : data.imaginary) value *= scale;
}

}  // namespace sonavel
