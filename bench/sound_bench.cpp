// Opening, saving, converting and editing whole sounds, beside memcpy and memmove of the same
// bytes.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "bench_host.h"

namespace sonavel::bench {
namespace {

constexpr std::uint32_t kTenMinutes = 600;

std::filesystem::path TemporaryFile() {
    return std::filesystem::temp_directory_path() / "sonavel-bench.wav";
}

void SetBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

void BM_Memcpy(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, kTenMinutes);
    std::vector<std::uint8_t> copy(wave->GetDataSize());
    for (auto _ : state) {
        std::memcpy(copy.data(), wave->Bytes().data(), copy.size());
        benchmark::ClobberMemory();
    }
    SetBytes(state, copy.size());
}
BENCHMARK(BM_Memcpy)->Unit(benchmark::kMillisecond);

void BM_CopySound(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, kTenMinutes);
    for (auto _ : state) benchmark::DoNotOptimize(wave->Copy());
    SetBytes(state, wave->GetDataSize());
}
BENCHMARK(BM_CopySound)->Unit(benchmark::kMillisecond);

void BM_Save(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, kTenMinutes);
    for (auto _ : state) wave->Save(TemporaryFile(), MarkerSaving::kOn);
    SetBytes(state, wave->GetDataSize());
    std::filesystem::remove(TemporaryFile());
}
BENCHMARK(BM_Save)->Unit(benchmark::kMillisecond);

void BM_Open(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, kTenMinutes);
    wave->Save(TemporaryFile(), MarkerSaving::kOn);
    for (auto _ : state) {
        CWave opened(host.prompts, host.progress);
        opened.Open(TemporaryFile(), WavOpenMode::kReadAll);
    }
    SetBytes(state, wave->GetDataSize());
    std::filesystem::remove(TemporaryFile());
}
BENCHMARK(BM_Open)->Unit(benchmark::kMillisecond);

void BM_ConvertBits(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, kTenMinutes);
    for (auto _ : state) {
        wave->ConvertBits(8);
        wave->ConvertBits(16);
    }
    SetBytes(state, wave->GetDataSize());
}
BENCHMARK(BM_ConvertBits)->Unit(benchmark::kMillisecond);

// The bytes that inserting in the middle must move, there and back.
void BM_MemmoveHalf(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, kTenMinutes);
    const std::span<std::uint8_t> bytes = wave->MutableBytes();
    const std::size_t second = 44100 * 4;
    const std::size_t half = bytes.size() / 2;
    for (auto _ : state) {
        std::memmove(&bytes[half + second], &bytes[half], bytes.size() - half - second);
        std::memmove(&bytes[half], &bytes[half + second], bytes.size() - half - second);
    }
}
BENCHMARK(BM_MemmoveHalf)->Unit(benchmark::kMillisecond);

void BM_InsertAndRemoveOneSecond(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, kTenMinutes);
    const std::vector<std::uint8_t> second(44100 * 4);
    const std::uint32_t middle = wave->GetFrameCount() / 2;
    for (auto _ : state) {
        wave->InsertFrames(middle, second);
        wave->RemoveFrames(middle, middle + 44100);
    }
}
BENCHMARK(BM_InsertAndRemoveOneSecond)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonavel::bench
