#include "spatial/minimum_phase.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include "spatial/analysis_fft.h"

namespace sonavel {
namespace {

constexpr double kPowerFloor = 1e-8;
constexpr double kNoPower = 1e-30;

template <class Number>
ComplexSeries SpectrumOf(const AnalysisFft& fft, std::span<const Number> taps) {
    ComplexSeries series(fft.Size());
    std::copy(taps.begin(), taps.end(), series.real.begin());
    fft.Transform(series);
    return series;
}

// The logarithm of the magnitude over all bins, its mirror image included.
void PutLogMagnitude(std::span<const double> power, std::vector<double>& logs) {
    const std::size_t size = logs.size();
    const double floor =
        std::max(kPowerFloor * *std::max_element(power.begin(), power.end()), kNoPower);
    for (std::size_t k = 0; k <= size / 2; ++k) {
        logs[k] = 0.5 * std::log(std::max(power[k], floor));
        logs[(size - k) % size] = logs[k];
    }
}

void Fold(std::vector<double>& cepstrum) {
    const std::size_t half = cepstrum.size() / 2;
    for (std::size_t n = 1; n < half; ++n) cepstrum[n] *= 2;
    std::fill(cepstrum.begin() + static_cast<std::ptrdiff_t>(half) + 1, cepstrum.end(), 0.0);
}

// The series is the transform of two real ones, the second one times i: what each of them gives
// alone is exponentiated.
void ExponentiateBoth(ComplexSeries& series) {
    using Complex = std::complex<double>;
    constexpr Complex kI{0, 1};
    const std::size_t size = series.Size();
    for (std::size_t k = 0; k <= size / 2; ++k) {
        const std::size_t mirrored = (size - k) % size;
        const Complex at{series.real[k], series.imaginary[k]};
        const Complex there{series.real[mirrored], -series.imaginary[mirrored]};
        const Complex first = std::exp(0.5 * (at + there));
        const Complex second =
            std::exp(0.5 * Complex(at.imag() - there.imag(), there.real() - at.real()));
        const Complex sum = first + kI * second;
        const Complex sumThere = std::conj(first) + kI * std::conj(second);
        series.real[k] = sum.real();
        series.imaginary[k] = sum.imag();
        series.real[mirrored] = sumThere.real();
        series.imaginary[mirrored] = sumThere.imag();
    }
}

// The vertex of the parabola through three equidistant values, from the middle one on.
double VertexOf(double before, double at, double behind) {
    const double bend = before - 2 * at + behind;
    return bend < 0 ? 0.5 * (before - behind) / bend : 0;
}

}  // namespace

std::vector<double> PowerSpectrum(const AnalysisFft& fft, std::span<const float> taps) {
    const ComplexSeries spectrum = SpectrumOf(fft, taps);
    std::vector<double> power(fft.Size() / 2 + 1);
    for (std::size_t k = 0; k < power.size(); ++k)
        power[k] =
            spectrum.real[k] * spectrum.real[k] + spectrum.imaginary[k] * spectrum.imaginary[k];
    return power;
}

std::array<std::vector<double>, 2> MinimumPhases(
    const AnalysisFft& fft, const std::array<std::span<const double>, 2>& powers) {
    ComplexSeries series(fft.Size());
    PutLogMagnitude(powers[0], series.real);
    PutLogMagnitude(powers[1], series.imaginary);
    // Of what is real and even, the transform is too: the two stay apart.
    fft.TransformBack(series);
    Fold(series.real);
    Fold(series.imaginary);
    fft.Transform(series);
    ExponentiateBoth(series);
    fft.TransformBack(series);
    return {std::move(series.real), std::move(series.imaginary)};
}

std::vector<double> MinimumPhase(const AnalysisFft& fft, std::span<const double> power) {
    return std::move(MinimumPhases(fft, {power, power})[0]);
}

double ArrivalOf(const AnalysisFft& fft, std::span<const float> taps,
                 std::span<const double> minimumPhase, double cutoff) {
    const std::size_t size = fft.Size();
    ComplexSeries product = SpectrumOf(fft, taps);
    const ComplexSeries other = SpectrumOf(fft, minimumPhase);
    for (std::size_t k = 0; k < size; ++k) {
        const double frequency =
            static_cast<double>(std::min(k, size - k)) / static_cast<double>(size);
        const double weight = std::exp2(-std::pow(frequency / cutoff, 2));
        const double re = weight * product.real[k];
        const double im = weight * product.imaginary[k];
        product.real[k] = re * other.real[k] + im * other.imaginary[k];
        product.imaginary[k] = im * other.real[k] - re * other.imaginary[k];
    }
    fft.TransformBack(product);
    const std::vector<double>& c = product.real;
    const auto peak = static_cast<std::size_t>(
        std::max_element(c.begin(), c.begin() + static_cast<std::ptrdiff_t>(size / 2)) - c.begin());
    return static_cast<double>(peak) +
           VertexOf(c[(peak + size - 1) % size], c[peak], c[(peak + 1) % size]);
}

}  // namespace sonavel
