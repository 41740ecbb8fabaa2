// Scenes heard live beside what the mix makes of the same sounds.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <thread>

#include "document/document_fixture.h"
#include "spatial/live_scene.h"
#include "spatial/scene_mix.h"
#include "spatial/scene_points.h"

namespace sonavel::testing {
namespace {

constexpr std::uint32_t kSceneRate = 44100;
constexpr double kSineAngle = 2 * std::numbers::pi * 441 / kSceneRate;

SourcePosition HorizonAt(double azimuth, double distance = 0.6) {
    return PositionOf(PolarPosition{azimuth, 0, distance});
}

Placing SmoothAt(double azimuth) {
    return {.points = {HorizonAt(azimuth)}, .smoothness = Smoothness::kSmooth};
}

class LiveSceneTest : public DocumentTest {
  protected:
    LiveSource Add(const Format& format, std::uint32_t frames, std::uint32_t start = 0) {
        documents_.push_back(MakeNoise(format, frames, 3000));
        return {Unowned(*documents_.back()), start};
    }
    // A second of whole periods.
    LiveSource AddSine(double amplitude) {
        documents_.push_back(MakeDocument());
        Sound& sound = documents_.back()->Sound();
        EXPECT_TRUE(sound.Create(1, 32, kSceneRate, kSceneRate));
        for (std::uint32_t i = 0; i < kSceneRate; ++i)
            sound.SetSample(0, i, static_cast<int>(amplitude * 32768 * std::sin(kSineAngle * i)));
        return {Unowned(*documents_.back()), 0};
    }
    static std::shared_ptr<const Sound> Unowned(const CSoundDoc& document) {
        return {std::shared_ptr<void>(), &document.Sound()};
    }
    // The next pieces of the loop, each after `change` has been made.
    static std::vector<float> Play(LiveScene& scene, LiveLoop& loop, int pieces,
                                   const std::function<void(int)>& change = {}) {
        std::vector<float> heard;
        std::vector<float> piece(std::size_t{2} * loop.PieceFrames());
        for (int i = 0; i < pieces; ++i) {
            if (change) change(i);
            if (auto made = scene.MakeLatest()) {
                made->Prepare(loop.Position());
                loop.Change(std::move(made));
            }
            loop.RenderPiece(piece);
            heard.insert(heard.end(), piece.begin(), piece.end());
        }
        return heard;
    }

    std::vector<std::unique_ptr<CSoundDoc>> documents_;
    Listener listener_;
};

TEST_F(LiveSceneTest, AFixedSceneIsHeardAsItIsMixed) {
    const std::vector<LiveSource> sources{Add({1, 16, kSceneRate}, 6000),
                                          Add({2, 8, kSceneRate}, 3000, 2000),
                                          Add({1, 16, 22050}, 1500, 4321)};
    const std::vector<LiveSetting> settings{
        {{.points = {HorizonAt(70)}}, 3},
        {{.kind = PlacingKind::kPath,
          .points = {HorizonAt(0), HorizonAt(90), HorizonAt(180, 2)},
          .smoothness = Smoothness::kSmooth,
          .doppler = Doppler::kOn},
         0},
        {SmoothAt(200), -6}};
    SceneMix mix(kSceneRate, listener_, progress_);
    for (std::size_t i = 0; i < sources.size(); ++i)
        ASSERT_TRUE(
            mix.Add({*sources[i].sound, settings[i].placing, sources[i].start, settings[i].gain}));
    const Result<Sound> mixed = mix.Finish();
    ASSERT_TRUE(mixed);

    LiveScene scene(sources, kSceneRate, listener_);
    EXPECT_EQ(scene.Range().frames, mixed->GetFrameCount());
    scene.Set(settings);
    LiveLoop loop(scene.Range(), scene.MakeUntouched());
    // Beyond the end, where it begins anew.
    const std::vector<float> heard = Play(scene, loop, 30);
    for (std::uint32_t i = 0; i < heard.size() / 2; ++i)
        for (const unsigned ear : {0u, 1u})
            ASSERT_NEAR(heard[2 * i + ear] * 32768,
                        mixed->GetSample(ear, i % mixed->GetFrameCount()), 1)
                << i << ", " << ear;
}

// One source goes around, another one comes and goes, the third one stays.
TEST_F(LiveSceneTest, MovedSourcesAndGainsDoNotClick) {
    LiveScene scene({AddSine(0.2), AddSine(0.2), AddSine(0.1)}, kSceneRate, listener_);
    LiveLoop loop(scene.Range(), scene.MakeUntouched());
    std::vector<float> heard = Play(scene, loop, 60, [&](int step) {
        scene.Set({{SmoothAt(3.6 * step), 0},
                   {SmoothAt(90), step % 10 < 5 ? 0.0 : -12.0},
                   {{.points = {HorizonAt(270)}}, 0}});
    });
    heard.erase(heard.begin(), heard.begin() + 2000);  // the sounds' own beginning is a step
    const double level = *std::ranges::max_element(heard);
    for (std::size_t i = 4; i < heard.size(); ++i) {
        const double bend = double{heard[i]} - 2.0 * heard[i - 2] + heard[i - 4];
        // A click of a twentieth of the level would be many times the sine's own bend.
        ASSERT_LE(std::abs(bend), 4 * level * kSineAngle * kSineAngle) << "frame " << i / 2;
    }
}

TEST_F(LiveSceneTest, WhatIsMovedOrMadeLouderIsHeardInTheNextPiece) {
    LiveScene scene({AddSine(0.2), AddSine(0.2)}, kSceneRate, listener_);
    LiveLoop loop(scene.Range(), scene.MakeUntouched());
    const auto ratio = [&](const LiveSetting& first, const LiveSetting& second) {
        scene.Set({first, second});
        Play(scene, loop, 2);
        const std::vector<float> heard = Play(scene, loop, 10);
        double power[2] = {0, 0};
        for (std::size_t i = 0; i < heard.size(); ++i) power[i % 2] += heard[i] * heard[i];
        return std::sqrt(power[1] / power[0]);
    };
    const double right = ratio({SmoothAt(80), 0}, {SmoothAt(280), -60});
    EXPECT_GT(right, 1.4);
    EXPECT_NEAR(ratio({SmoothAt(80), -60}, {SmoothAt(280), 0}), 1 / right, 0.02);
    EXPECT_NEAR(ratio({SmoothAt(280), 0}, {SmoothAt(280), -60}), 1 / right, 0.02);
    // A source without a point stays where it was.
    EXPECT_NEAR(ratio({{}, 0}, {SmoothAt(80), -60}), 1 / right, 0.02);
}

TEST_F(LiveSceneTest, BypassMixesTheSoundsWithTheirGainsAndStarts) {
    const std::vector<LiveSource> sources{Add({1, 16, kSceneRate}, 2000),
                                          Add({1, 8, kSceneRate}, 1000, 1500)};
    LiveScene scene(sources, kSceneRate, listener_);
    scene.Set({{SmoothAt(0), 20 * std::log10(0.5)}, {SmoothAt(90), 0}});
    const auto untouched = scene.MakeUntouched();
    std::vector<float> heard(2 * scene.Range().frames);
    untouched->Render(0, heard);
    for (std::uint32_t i = 0; i < scene.Range().frames; ++i) {
        double wanted = i < 2000 ? 0.5 * sources[0].sound->GetShare(0, i) : 0;
        if (i >= 1500) wanted += sources[1].sound->GetShare(0, i - 1500);
        for (const unsigned ear : {0u, 1u}) ASSERT_NEAR(heard[2 * i + ear], wanted, 1e-6) << i;
    }
}

// However long its way is: while it is dragged, a whole way would be too much for each place.
TEST_F(LiveSceneTest, OfAMovedSourceOnlyWhatIsHeardSoonIsComputed) {
    LiveScene scene({Add({1, 8, kSceneRate}, 60 * kSceneRate)}, kSceneRate, listener_);
    const auto bytesFor = [&](double raised) {
        Placing around{.kind = PlacingKind::kPath, .smoothness = Smoothness::kSmooth};
        for (int i = 0; i <= 12; ++i)
            around.points.push_back(PositionOf(PolarPosition{30.0 * i, raised, 1}));
        const std::size_t before = (*listener_.At(kSceneRate))->Bytes();
        scene.Set({{around, 0}});
        scene.MakeLatest()->Prepare(0);
        return (*listener_.At(kSceneRate))->Bytes() - before;
    };
    const std::size_t atFirst = bytesFor(3);
    EXPECT_GT(atFirst, 0u);
    EXPECT_LT(bytesFor(23), atFirst / 5);
    EXPECT_EQ(bytesFor(23), 0u);
    EXPECT_EQ(bytesFor(3), 0u) << "what was computed once";
}

// By three threads, as it is in a dialog: a thread sanitizer looks on.
TEST_F(LiveSceneTest, SourcesAreMovedWhileTheyAreHeard) {
    auto owned = std::make_unique<LiveScene>(
        std::vector<LiveSource>{AddSine(0.2), AddSine(0.2), Add({1, 16, 22050}, 20000, 100)},
        kSceneRate, listener_);
    LiveScene& scene = *owned;
    const auto set = [&scene](double azimuth, double gain) {
        scene.Set({{SmoothAt(azimuth), 0}, {{.points = {HorizonAt(90)}}, gain}, {SmoothAt(0), 0}});
    };
    set(0, 0);
    LivePlayer player(std::move(owned), devices_);
    ASSERT_EQ(player.Start(0, {}), kWaveSuccess);
    float greatest = 0;
    const auto hear = [&] {
        for (const float value : devices_.frameOut->Hear(256))
            greatest = std::max(greatest, std::abs(value));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    };
    // The responses come about first.
    for (int i = 0; i < 10000 && greatest == 0; ++i) hear();
    for (int step = 0; step < 100; ++step) {
        set(5.0 * step, step % 7);
        player.MakeAnew();
        hear();
    }
    EXPECT_GT(greatest, 0.1);
    player.Stop();
}

TEST_F(LiveSceneTest, ASceneLongerThanAnySoundEndsWhereSoundsEnd) {
    const LiveSource source = Add({1, 16, kSceneRate}, 1000, 0xFFFFFF00u);
    EXPECT_LT(LiveScene({source}, kSceneRate, listener_).Range().frames, 0x7FFFFFFFu);
}

}  // namespace
}  // namespace sonavel::testing
