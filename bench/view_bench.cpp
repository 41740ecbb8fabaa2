// Block extremes beside a plain sum of the same bytes, and envelope columns at every zoom.
#include <benchmark/benchmark.h>

#include <numeric>

#include "bench_host.h"
#include "view/draw/block_extremes.h"
#include "view/draw/envelope.h"

namespace sonavel::bench {
namespace {

void BM_SumOfSamples(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, 600);
    const auto* samples = reinterpret_cast<const std::int16_t*>(wave->Bytes().data());
    const std::size_t count = wave->GetDataSize() / 2;
    for (auto _ : state) benchmark::DoNotOptimize(std::accumulate(samples, samples + count, 0u));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * wave->GetDataSize()));
}
BENCHMARK(BM_SumOfSamples)->Unit(benchmark::kMillisecond);

void BM_BlockExtremes(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, static_cast<unsigned>(state.range(0)),
                                static_cast<unsigned>(state.range(1)), 600);
    BlockExtremes extremes;
    for (auto _ : state) extremes.Rebuild(*wave, 0);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * wave->GetDataSize()));
}
BENCHMARK(BM_BlockExtremes)->ArgsProduct({{1, 2}, {8, 16}})->Unit(benchmark::kMillisecond);

// Both lanes of a 3840 x 1080 view of an hour of stereo; the argument is the virtual width's factor
// over the window's.
void BM_EnvelopeOfAnHour(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, 3600);
    BlockExtremes extremes;
    extremes.Rebuild(*wave, 0);
    constexpr int kWidth = 3840;
    const std::int64_t virtualWidth =
        std::min<std::int64_t>(kWidth * state.range(0), wave->GetFrameCount());
    ScrollState horizontal;
    horizontal.maximum = virtualWidth;
    horizontal.page = 1;
    horizontal.position = virtualWidth / 2 - kWidth;
    ScrollState vertical;
    vertical.maximum = 540;
    vertical.page = 541;
    EnvelopeRequest request{*wave, extremes, 0, {0, 0, kWidth, 540}, horizontal, vertical, {}};
    for (auto _ : state)
        for (unsigned channel : {0u, 1u}) {
            request.channel = channel;
            benchmark::DoNotOptimize(EnvelopeColumns(request));
        }
}
BENCHMARK(BM_EnvelopeOfAnHour)->RangeMultiplier(4)->Range(2, 65536)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonavel::bench
