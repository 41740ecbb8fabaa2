// The Fourier transform beside a plain radix-2 loop, and a block through both ears.
#include <benchmark/benchmark.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "spatial/convolution.h"

namespace sonavel::bench {
namespace {

// Textbook decimation in time, with a twiddle computed for every butterfly by recurrence.
void PlainFft(std::vector<std::complex<float>>& data) {
    const std::size_t size = data.size();
    for (std::size_t i = 1, j = 0; i < size; ++i) {
        std::size_t bit = size >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(data[i], data[j]);
    }
    for (std::size_t length = 2; length <= size; length *= 2) {
        const float angle = -2 * std::numbers::pi_v<float> / static_cast<float>(length);
        const std::complex<float> step(std::cos(angle), std::sin(angle));
        for (std::size_t start = 0; start < size; start += length) {
            std::complex<float> twiddle(1);
            for (std::size_t k = 0; k < length / 2; ++k, twiddle *= step) {
                const auto odd = data[start + k + length / 2] * twiddle;
                data[start + k + length / 2] = data[start + k] - odd;
                data[start + k] += odd;
            }
        }
    }
}

void BM_PlainFft1024(benchmark::State& state) {
    std::vector<std::complex<float>> data(kFftSize);
    for (auto _ : state) {
        PlainFft(data);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_PlainFft1024);

void BM_Fft1024(benchmark::State& state) {
    Spectrum data{}, result;
    for (auto _ : state) {
        Fft(data, result);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_Fft1024);

void BM_ConvolveBlock(benchmark::State& state) {
    Spectrum left, right;
    LoadResponseSpectrum(left, 141);
    LoadResponseSpectrum(right, 159);
    std::array<float, kBlockInput> input{};
    std::array<float, 2 * kBlockFrames> output;
    for (auto _ : state) {
        ConvolveBlock(input, left, right, output);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ConvolveBlock);

}  // namespace
}  // namespace sonavel::bench
