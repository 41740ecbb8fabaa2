// Each effect's processor over pieces as the runner hands them out, beside a copy of the same
// floats.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "effects/effect_table.h"

namespace sonavel::bench {
namespace {

constexpr std::uint32_t kFrames = 1u << 20;

std::vector<float> Samples() {
    std::vector<float> samples(kFrames);
    for (std::uint32_t i = 0; i < kFrames; ++i)
        samples[i] = static_cast<float>(i * 7919 % 40000) - 20000;
    return samples;
}

// Values that leave no effect without work.
std::vector<double> BusyValues(const EffectForm& form) {
    std::vector<double> values;
    for (const EffectParameter& parameter : form.effect.parameters)
        values.push_back(parameter.decimals == kSwitch || !form.Asks(parameter)
                             ? form.StartOf(parameter)
                             : parameter.least + 0.3 * (parameter.greatest - parameter.least));
    return values;
}

void RunEffect(benchmark::State& state, const EffectForm& form) {
    EffectState kept;
    const std::vector<double> values = BusyValues(form);
    const std::vector<float> in = Samples();
    for (auto _ : state) {
        const auto processor = form.effect.make(values, {44100, 16, 2, kFrames, kept});
        const std::uint32_t history = processor->HistoryFrames();
        std::vector<float> left, right;
        for (std::uint32_t first = 0; first < kFrames; first += processor->PieceFrames()) {
            const std::uint32_t frames = std::min(kFrames - first, processor->PieceFrames());
            const std::uint32_t before = std::min(history, first);
            left.assign(history - before, 0);
            left.insert(left.end(), in.begin() + (first - before), in.begin() + first + frames);
            right = left;
            processor->Process({first, frames, {left, right}});
            benchmark::DoNotOptimize(left.data());
            benchmark::DoNotOptimize(right.data());
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kFrames);
}

void CopySamples(benchmark::State& state) {
    const std::vector<float> in = Samples();
    std::vector<float> left(kPieceFrames), right(kPieceFrames);
    for (auto _ : state)
        for (std::uint32_t first = 0; first < kFrames; first += kPieceFrames) {
            std::copy_n(in.begin() + first, kPieceFrames, left.begin());
            right = left;
            benchmark::DoNotOptimize(left.data());
            benchmark::DoNotOptimize(right.data());
        }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kFrames);
}
BENCHMARK(CopySamples);

const bool kRegistered = [] {
    for (const EffectForm& form : EffectForms())
        benchmark::RegisterBenchmark(form.name, RunEffect, form);
    return true;
}();

}  // namespace
}  // namespace sonavel::bench
