// Edits of one second in the middle of an hour of 16-bit stereo, their undo and their redo, beside
// the memmove of the bytes that they cannot do without.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>

#include "bench_host.h"
#include "document/edit_operations.h"
#include "effects/effect_runner.h"
#include "effects/effect_table.h"

namespace sonavel::bench {
namespace {

constexpr std::uint32_t kRate = 44100;
constexpr std::uint32_t kHour = 3600;
constexpr std::uint32_t kMiddle = kRate * kHour / 2;
constexpr std::size_t kFrameBytes = 4;

// A folder whose options turn undo on.
class OptionsFolder {
  public:
    OptionsFolder() : path_(std::filesystem::temp_directory_path() / "sonavel-edit-bench") {
        std::filesystem::create_directories(path_);
        std::ofstream(path_ / "Options.ini")
            << "[__SOUND_GENERAL_OPTIONS]\nSAVE UNDO REDO INFOMATION=1\n";
    }
    ~OptionsFolder() { std::filesystem::remove_all(path_); }
    OptionsFolder(const OptionsFolder&) = delete;
    OptionsFolder& operator=(const OptionsFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

struct HourDocument {
    Host host;
    OptionsFolder options;
    ProgramFolder folder{options.Path()};
    CSoundDoc document{{host.prompts, host.progress, host.clipboard, host.devices, folder}};
    ClipRecord second;
    EffectState effectState;

    HourDocument() {
        if (!document.NewDocument({.samplesPerSecond = kRate, .channels = 2, .bits = 16}))
            std::abort();
        document.Sound().Create(2, 16, kRate, kRate * kHour);
        FillWithNoise(document.Sound());
        second.present = true;
        second.Create(2, 16, kRate, kRate);
        std::memset(second.MutableBytes().data(), 1, second.GetDataSize());
    }
};

constexpr EditSelection kAtMiddle{0, 0, kMiddle};
constexpr EditSelection kSecondInTheMiddle{kMiddle, kMiddle + kRate, kMiddle};

enum class Timed { kEdit, kUndo, kRedo };

bool Check(benchmark::State& state, bool done) {
    if (!done) state.SkipWithError("The edit, its undo or its redo was not done.");
    return done;
}

// Pages of the process that nobody shares.
std::int64_t PrivateBytes() {
    std::ifstream file("/proc/self/statm");
    std::int64_t all = 0, resident = 0, shared = 0;
    file >> all >> resident >> shared;
    return (resident - shared) * 4096;
}

// Times one of the three, each on the sound as it was, with an empty history.
template <class Edit>
void TimeEdits(benchmark::State& state, Timed timed, Edit edit) {
    HourDocument hour;
    const std::function<bool()> steps[] = {[&] { return bool(edit(hour)); },
                                           [&] { return bool(hour.document.Undo()); },
                                           [&] { return bool(hour.document.Redo()); }};
    for (auto _ : state) {
        state.PauseTiming();
        for (std::size_t i = 0; i < std::size(steps); ++i) {
            if (i == static_cast<std::size_t>(timed)) state.ResumeTiming();
            if (!Check(state, steps[i]())) return;
            if (i == static_cast<std::size_t>(timed)) state.PauseTiming();
        }
        if (!Check(state, bool(hour.document.Undo()))) return;
        hour.document.History().Clear();
        state.ResumeTiming();
    }
}

void BM_MemmoveSecondHalfOfAnHour(benchmark::State& state) {
    HourDocument hour;
    const std::span<std::uint8_t> bytes = hour.document.Sound().MutableBytes();
    const std::size_t half = kMiddle * kFrameBytes;
    const std::size_t second = kRate * kFrameBytes;
    for (auto _ : state)
        std::memmove(&bytes[half], &bytes[half + second], bytes.size() - half - second);
}
BENCHMARK(BM_MemmoveSecondHalfOfAnHour)->Unit(benchmark::kMillisecond);

void BM_MemcpyAnHour(benchmark::State& state) {
    HourDocument hour;
    for (auto _ : state) benchmark::DoNotOptimize(hour.document.Sound().Copy());
}
BENCHMARK(BM_MemcpyAnHour)->Unit(benchmark::kMillisecond);

Outcome PasteSecond(HourDocument& hour) {
    return edit::Paste(hour.document, hour.second, kAtMiddle).Ended();
}

Outcome DeleteSecond(HourDocument& hour) {
    return edit::Delete(hour.document, kSecondInTheMiddle).Ended();
}

// 300 ms, which move nothing.
Outcome Fade(HourDocument& hour) {
    const Effect* volume = FindEffect("volume");
    constexpr std::uint32_t kFadeFrames = kRate * 3 / 10;
    const double values[] = {50, 0};
    return ApplyEffect(*volume, {hour.document, kMiddle, kMiddle + kFadeFrames, hour.effectState},
                       values);
}

template <Outcome (*kEdit)(HourDocument&), Timed kTimed>
void BM_Edit(benchmark::State& state) {
    TimeEdits(state, kTimed, kEdit);
}
BENCHMARK(BM_Edit<PasteSecond, Timed::kEdit>)->Name("BM_Paste")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<PasteSecond, Timed::kUndo>)->Name("BM_UndoPaste")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<PasteSecond, Timed::kRedo>)->Name("BM_RedoPaste")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<DeleteSecond, Timed::kEdit>)->Name("BM_Delete")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<DeleteSecond, Timed::kUndo>)
    ->Name("BM_UndoDelete")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<DeleteSecond, Timed::kRedo>)
    ->Name("BM_RedoDelete")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<Fade, Timed::kEdit>)->Name("BM_Fade")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<Fade, Timed::kUndo>)->Name("BM_UndoFade")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Edit<Fade, Timed::kRedo>)->Name("BM_RedoFade")->Unit(benchmark::kMillisecond);

// What 200 edits of a second each leave in the history and in the process, beside what they
// replaced.
void BM_MemoryOfEdits(benchmark::State& state) {
    constexpr unsigned kEdits = 200;
    for (auto _ : state) {
        HourDocument hour;
        const std::int64_t before = PrivateBytes();
        for (unsigned i = 0; i < kEdits; ++i)
            if (!Check(state, bool(i % 2 == 0 ? DeleteSecond(hour) : PasteSecond(hour)))) return;
        constexpr double kMegabyte = 1 << 20;
        state.counters["replacedMB"] = kEdits / 2 * kRate * kFrameBytes / kMegabyte;
        state.counters["historyMB"] =
            static_cast<double>(hour.document.History().MemoryBytes()) / kMegabyte;
        state.counters["grownMB"] = static_cast<double>(PrivateBytes() - before) / kMegabyte;
    }
}
BENCHMARK(BM_MemoryOfEdits)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace sonavel::bench
