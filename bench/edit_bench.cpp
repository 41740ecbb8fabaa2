// Edits of one second in the middle of an hour of 16-bit stereo, beside the memmove and the memcpy
// of the bytes that they cannot do without.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include "bench_host.h"
#include "document/edit_operations.h"

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

// Times one edit after the other, each on the sound as it was, with an empty history.
template <class Edit>
void TimeEdits(benchmark::State& state, Edit edit) {
    HourDocument hour;
    for (auto _ : state) {
        if (!edit(hour)) return state.SkipWithError("The edit was not done.");
        state.PauseTiming();
        if (!hour.document.Undo()) return state.SkipWithError("The edit was not undone.");
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

// Into memory that is fresh each time, as an undo step's is.
void BM_MemcpyAnHour(benchmark::State& state) {
    HourDocument hour;
    for (auto _ : state) benchmark::DoNotOptimize(hour.document.Sound().Copy());
}
BENCHMARK(BM_MemcpyAnHour)->Unit(benchmark::kMillisecond);

void BM_PasteIntoAnHour(benchmark::State& state) {
    TimeEdits(state, [](HourDocument& hour) {
        return edit::Paste(hour.document, hour.second, kAtMiddle);
    });
}
BENCHMARK(BM_PasteIntoAnHour)->Unit(benchmark::kMillisecond);

void BM_DeleteFromAnHour(benchmark::State& state) {
    TimeEdits(state,
              [](HourDocument& hour) { return edit::Delete(hour.document, kSecondInTheMiddle); });
}
BENCHMARK(BM_DeleteFromAnHour)->Unit(benchmark::kMillisecond);

void BM_OverwriteInAnHour(benchmark::State& state) {
    TimeEdits(state, [](HourDocument& hour) {
        return edit::PasteOverwrite(hour.document, hour.second, kSecondInTheMiddle);
    });
}
BENCHMARK(BM_OverwriteInAnHour)->Unit(benchmark::kMillisecond);

void BM_UndoAndRedoInAnHour(benchmark::State& state) {
    HourDocument hour;
    if (!edit::Delete(hour.document, kSecondInTheMiddle)) return state.SkipWithError("Delete");
    for (auto _ : state)
        if (!hour.document.Undo() || !hour.document.Redo()) return state.SkipWithError("Undo");
}
BENCHMARK(BM_UndoAndRedoInAnHour)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonavel::bench
