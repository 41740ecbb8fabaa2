// What keeping unsaved work costs the thread that edits: at an edit, and at the next one when it
// follows at once, beside the copy that it does not make. Take the least of five:
// --benchmark_repetitions=5 --benchmark_report_aggregates_only=false
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "bench_host.h"
#include "document/edit_operations.h"
#include "recovery/work_keeper.h"

namespace sonavel::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kRate = 44100;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// A document of so many seconds of 16-bit stereo, and the journal that hears of its changes.
class JournaledDocument {
  public:
    explicit JournaledDocument(std::uint32_t seconds) {
        std::filesystem::create_directories(records_);
        if (!document_.NewDocument({.samplesPerSecond = kRate, .channels = 2, .bits = 16}))
            std::abort();
        if (!document_.Sound().Create(2, 16, kRate, kRate * seconds)) std::abort();
        FillWithNoise(document_.Sound());
        budget_->limitBytes = std::uint64_t{1} << 40;
        journal_.emplace(document_, Host());
    }
    ~JournaledDocument() {
        journal_.reset();
        thread_.Finish(std::chrono::seconds(60));
        std::filesystem::remove_all(records_);
    }
    JournaledDocument(const JournaledDocument&) = delete;
    JournaledDocument& operator=(const JournaledDocument&) = delete;

    // As after an effect on the whole sound.
    void TellChange() {
        EditRecord record;
        record.format = document_.Sound().GetFormat();
        record.bytesThere = record.bytesKept = document_.Sound().GetDataSize();
        journal_->OnHistoryChange({HistoryChange::Kind::kStep, "Effect", &record},
                                  document_.Sound());
    }
    // What an edit of the second in the middle asks before it writes.
    void LetASecondChange() {
        const std::size_t second = std::size_t{kRate} * document_.Sound().GetBlockAlign();
        BlockOf(document_.Sound()).SettleLent(Bytes() / 2, std::min(second, Bytes() / 2));
    }
    // Moves everything behind it.
    void DeleteASecond() {
        const std::uint32_t middle = document_.Sound().GetFrameCount() / 2;
        if (!edit::Delete(document_, {middle, middle + kRate, middle})) std::abort();
    }
    void LetGo() {
        journal_->Discard();
        thread_.Finish(std::chrono::seconds(60));
    }
    std::size_t Bytes() { return document_.Sound().GetDataSize(); }
    const std::uint8_t* Data() { return std::as_const(document_).Sound().Bytes().data(); }

  private:
    recovery::JournalHost Host() {
        return {thread_, budget_, [this] { return records_ / std::to_string(number_++); }, claims_,
                std::make_shared<recovery::SaveLog>(records_)};
    }

    bench::Host host_;
    std::filesystem::path records_ =
        std::filesystem::temp_directory_path() / "sonavel-recovery-bench";
    ProgramFolder folder_{records_};
    CSoundDoc document_{{host_.prompts, host_.progress, host_.clipboard, host_.devices, folder_}};
    recovery::JournalThread thread_;
    std::shared_ptr<recovery::DiskBudget> budget_ = std::make_shared<recovery::DiskBudget>();
    std::shared_ptr<recovery::FileClaims> claims_ =
        std::make_shared<recovery::FileClaims>(records_ / "open");
    std::optional<recovery::DocumentJournal> journal_;
    int number_ = 0;
};

void AtAnEdit(benchmark::State& state) {
    JournaledDocument document(static_cast<std::uint32_t>(state.range(0)));
    for (auto _ : state) {
        const auto start = Clock::now();
        document.TellChange();
        state.SetIterationTime(SecondsSince(start));
        document.LetGo();
    }
    state.counters["MB"] = static_cast<double>(document.Bytes()) / 1e6;
}

void AtTheNextEdit(benchmark::State& state) {
    JournaledDocument document(static_cast<std::uint32_t>(state.range(0)));
    for (auto _ : state) {
        document.TellChange();
        const auto start = Clock::now();
        document.LetASecondChange();
        state.SetIterationTime(SecondsSince(start));
        document.LetGo();
    }
    state.counters["MB"] = static_cast<double>(document.Bytes()) / 1e6;
}

enum class Lending { kNothing, kAll };
void ADeletion(benchmark::State& state, Lending lending) {
    JournaledDocument document(static_cast<std::uint32_t>(state.range(0)));
    for (auto _ : state) {
        if (lending == Lending::kAll) document.TellChange();
        const auto start = Clock::now();
        document.DeleteASecond();
        state.SetIterationTime(SecondsSince(start));
        document.LetGo();
    }
    state.counters["MB"] = static_cast<double>(document.Bytes()) / 1e6;
}
void ADeletionAtOnce(benchmark::State& state) {
    ADeletion(state, Lending::kAll);
}
void TheSameDeletionAlone(benchmark::State& state) {
    ADeletion(state, Lending::kNothing);
}

void CopyOfTheSame(benchmark::State& state) {
    JournaledDocument document(static_cast<std::uint32_t>(state.range(0)));
    for (auto _ : state) {
        const auto start = Clock::now();
        SoundBuffer copy;
        if (!copy.AllocBuffer(document.Bytes())) std::abort();
        std::memcpy(copy.Data(), document.Data(), document.Bytes());
        state.SetIterationTime(SecondsSince(start));
    }
    state.counters["MB"] = static_cast<double>(document.Bytes()) / 1e6;
}

void Rows(benchmark::internal::Benchmark* row) {
    row->Arg(1)->Arg(60)->Arg(600)->Arg(3600)->UseManualTime()->Iterations(1)->Unit(
        benchmark::kMillisecond);
}

BENCHMARK(AtAnEdit)->Apply(Rows);
BENCHMARK(AtTheNextEdit)->Apply(Rows);
BENCHMARK(ADeletionAtOnce)->Apply(Rows);
BENCHMARK(TheSameDeletionAlone)->Apply(Rows);
BENCHMARK(CopyOfTheSame)->Apply(Rows);

}  // namespace
}  // namespace sonavel::bench
