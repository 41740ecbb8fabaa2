// Scenes heard live: how many seconds of sound a core renders in a second, and how long a moved
// source takes until it is ready to be heard.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

#include "bench_host.h"
#include "spatial/live_scene.h"
#include "spatial/scene_points.h"

namespace sonavel::bench {
namespace {

constexpr std::uint32_t kRate = 44100;
constexpr std::uint32_t kSeconds = 60;

enum class Motion { kAtRest, kMoving };

Placing PlacingOf(std::size_t number, Motion motion, double turned = 0) {
    const double azimuth = 22.5 * static_cast<double>(number) + turned;
    Placing placing{.smoothness = Smoothness::kSmooth};
    if (motion == Motion::kAtRest) {
        placing.points = {PositionOf(PolarPosition{std::fmod(azimuth, 360), 10, 1})};
        return placing;
    }
    placing.kind = PlacingKind::kPath;
    placing.curve = PathCurve::kSpline;
    for (int i = 0; i < 8; ++i)
        placing.points.push_back(
            PositionOf(PolarPosition{std::fmod(azimuth + 45 * i, 360), 5.0 * i - 20, 1}));
    return placing;
}

class Scene {
  public:
    Scene(std::size_t sources, Motion motion) {
        std::vector<LiveSource> sounds;
        for (std::size_t i = 0; i < sources; ++i) {
            sounds_.push_back(MakeNoise(host_, 1, 16, kSeconds));
            sounds.push_back({{std::shared_ptr<void>(), sounds_.back().get()}, 0});
            settings_.push_back({PlacingOf(i, motion), 0});
        }
        live_ = std::make_unique<LiveScene>(std::move(sounds), kRate, listener_);
        loop_ = std::make_unique<LiveLoop>(live_->Range(), live_->MakeUntouched());
        piece_.resize(std::size_t{2} * loop_->PieceFrames());
        loop_->Change(Made());
    }

    void Move(std::size_t source, const Placing& placing) { settings_[source].placing = placing; }
    std::unique_ptr<LiveRenderer> Made() {
        live_->Set(settings_);
        auto made = live_->MakeLatest();
        made->Prepare(loop_->Position());
        return made;
    }
    LiveLoop& Loop() { return *loop_; }
    void RenderPiece() {
        loop_->RenderPiece(piece_);
        benchmark::DoNotOptimize(piece_.data());
    }

  private:
    Host host_;
    Listener listener_;
    std::vector<std::unique_ptr<CWave>> sounds_;
    std::vector<LiveSetting> settings_;
    std::unique_ptr<LiveScene> live_;
    std::unique_ptr<LiveLoop> loop_;
    std::vector<float> piece_;
};

void CountSound(benchmark::State& state, std::uint32_t pieceFrames) {
    state.counters["seconds_of_sound"] =
        benchmark::Counter(1.0 * static_cast<double>(state.iterations()) * pieceFrames / kRate,
                           benchmark::Counter::kIsRate);
}

// All smooth, each on a way of its own; nobody moves them.
void BM_LiveScene(benchmark::State& state, Motion motion) {
    Scene scene(static_cast<std::size_t>(state.range(0)), motion);
    for (auto _ : state) scene.RenderPiece();
    CountSound(state, scene.Loop().PieceFrames());
}
BENCHMARK_CAPTURE(BM_LiveScene, at_rest, Motion::kAtRest)->Arg(1)->Arg(16);
BENCHMARK_CAPTURE(BM_LiveScene, moving, Motion::kMoving)->Arg(1)->Arg(16);

// One of them is dragged: in every piece it has another place.
void BM_LiveSceneDragged(benchmark::State& state, Motion motion) {
    Scene scene(static_cast<std::size_t>(state.range(0)), motion);
    double turned = 0;
    for (auto _ : state) {
        scene.Move(0, PlacingOf(0, motion, turned += 1));
        scene.Loop().Change(scene.Made());
        scene.RenderPiece();
    }
    CountSound(state, scene.Loop().PieceFrames());
}
BENCHMARK_CAPTURE(BM_LiveSceneDragged, at_rest, Motion::kAtRest)->Arg(16);
BENCHMARK_CAPTURE(BM_LiveSceneDragged, moving, Motion::kMoving)->Arg(16);

// From a new place to what is ready to be heard.
void BM_LiveSourceMade(benchmark::State& state, Motion motion) {
    Scene scene(1, motion);
    double turned = 0;
    for (auto _ : state) {
        scene.Move(0, PlacingOf(0, motion, turned += 1));
        benchmark::DoNotOptimize(scene.Made());
    }
}
BENCHMARK_CAPTURE(BM_LiveSourceMade, at_rest, Motion::kAtRest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_LiveSourceMade, moving, Motion::kMoving)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonavel::bench
