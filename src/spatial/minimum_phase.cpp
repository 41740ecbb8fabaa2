#include "spatial/minimum_phase.h"

#include <algorithm>
#include <cmath>

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
ComplexSeries LogMagnitude(std::span<const double> power, std::size_t size) {
    const double floor =
        std::max(kPowerFloor * *std::max_element(power.begin(), power.end()), kNoPower);
    ComplexSeries logs(size);
    for (std::size_t k = 0; k < size; ++k)
        logs.real[k] = 0.5 * std::log(std::max(power[std::min(k, size - k)], floor));
    return logs;
}

void Fold(ComplexSeries& cepstrum) {
    const std::size_t half = cepstrum.Size() / 2;
    for (std::size_t n = 1; n < half; ++n) cepstrum.real[n] *= 2;
    std::fill(cepstrum.real.begin() + static_cast<std::ptrdiff_t>(half) + 1, cepstrum.real.end(),
              0.0);
    std::fill(cepstrum.imaginary.begin(), cepstrum.imaginary.end(), 0.0);
}

void Exponentiate(ComplexSeries& logs) {
    for (std::size_t k = 0; k < logs.Size(); ++k) {
        const double magnitude = std::exp(logs.real[k]);
        const double phase = logs.imaginary[k];
        logs.real[k] = magnitude * std::cos(phase);
        logs.imaginary[k] = magnitude * std::sin(phase);
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

std::vector<double> MinimumPhase(const AnalysisFft& fft, std::span<const double> power) {
    ComplexSeries series = LogMagnitude(power, fft.Size());
    fft.TransformBack(series);
    Fold(series);
    fft.Transform(series);
    Exponentiate(series);
    fft.TransformBack(series);
    return std::move(series.real);
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
