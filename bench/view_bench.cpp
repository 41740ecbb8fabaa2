// Block extremes beside a plain sum of the same bytes, envelope columns at every zoom, and a
// spectrogram's tiles beside the bare transforms.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <semaphore>
#include <vector>

#include "bench_host.h"
#include "platform/parallel.h"
#include "view/draw/block_extremes.h"
#include "view/draw/envelope.h"
#include "view/draw/spectrogram_tiles.h"

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

// --- A spectrogram of an hour of stereo, two lanes of 300 rows in 1920 columns

constexpr std::int64_t kSpectrogramWidth = 1920;

SpectrogramScene SceneOf(const Sound& sound, std::int64_t virtualWidth, unsigned window) {
    return {.look = {.windowFrames = window},
            .height = 300,
            .channels = 2,
            .samplesPerSecond = 44100,
            .frameCount = sound.GetFrameCount(),
            .virtualWidth = virtualWidth};
}

class ShownTiles {
  public:
    ShownTiles() {
        tiles_.SetListener([this] { told_.release(); });
    }
    ~ShownTiles() { tiles_.SetListener({}); }

    void Show(const Sound& sound, const SpectrogramScene& scene, const ColumnSpan& columns) {
        tiles_.Want(sound, scene, columns);
        while (!tiles_.IsComplete()) {
            told_.acquire();
            benchmark::DoNotOptimize(tiles_.Collect(sound));
        }
    }
    SpectrogramTiles& Tiles() { return tiles_; }

  private:
    std::counting_semaphore<> told_{0};
    SpectrogramTiles tiles_;
};

// The argument is the window's length.
void BM_SpectrogramOfAnHour(benchmark::State& state) {
    Host host;
    const auto wave = MakeNoise(host, 2, 16, 3600);
    const auto scene = SceneOf(*wave, kSpectrogramWidth, static_cast<unsigned>(state.range(0)));
    for (auto _ : state) {
        auto shown = std::make_unique<ShownTiles>();
        shown->Show(*wave, scene, {0, kSpectrogramWidth});
        for (const unsigned channel : {0U, 1U})
            benchmark::DoNotOptimize(shown->Tiles().Show(channel, {0, kSpectrogramWidth}));
        state.PauseTiming();
        shown.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_SpectrogramOfAnHour)
    ->Arg(256)
    ->Arg(2048)
    ->Arg(16384)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// As many transforms of as many frames on as many threads, and nothing else.
void BM_BareTransformsOfAnHour(benchmark::State& state) {
    const auto window = static_cast<unsigned>(state.range(0));
    const unsigned windows = std::clamp(16384 / window, 1U, 2U);
    for (auto _ : state) {
        ComputeParts(60, [&](std::size_t) {
            PowerSpectrum spectrum(window, WindowShape::kHann);
            std::vector<float> frames(window, 0.5F), power(spectrum.Bins());
            for (std::size_t i = 0; i < std::size_t{2} * windows * kSpectrogramWidth / 60; ++i)
                spectrum.Compute(frames, power);
            benchmark::DoNotOptimize(power.data());
        });
    }
}
BENCHMARK(BM_BareTransformsOfAnHour)
    ->Arg(256)
    ->Arg(2048)
    ->Arg(16384)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// What the window's thread does for a step of 8 pixels while the tiles beside what is in sight are
// computed by others: asks, collects, and reads the columns that came into sight.
void BM_SpectrogramScrollStep(benchmark::State& state) {
    constexpr std::int64_t kStep = 8;
    Host host;
    const auto wave = MakeNoise(host, 2, 16, 3600);
    const auto scene = SceneOf(*wave, kSpectrogramWidth * 64, 2048);
    ShownTiles shown;
    shown.Show(*wave, scene, {0, kSpectrogramWidth});
    std::int64_t at = 0;
    for (auto _ : state) {
        at = (at + kStep) % (scene.virtualWidth - kSpectrogramWidth);
        const ColumnSpan seen = {at, at + kSpectrogramWidth};
        shown.Tiles().Want(*wave, scene, seen);
        benchmark::DoNotOptimize(shown.Tiles().Collect(*wave));
        for (const unsigned channel : {0U, 1U})
            benchmark::DoNotOptimize(shown.Tiles().Show(channel, {seen.last - kStep, seen.last}));
    }
}
BENCHMARK(BM_SpectrogramScrollStep)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace sonavel::bench
