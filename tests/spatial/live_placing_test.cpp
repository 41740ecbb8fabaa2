// Placed sources heard live beside what Apply makes of the same sound.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "document/document_fixture.h"
#include "spatial/live_placing.h"
#include "spatial/scene_points.h"
#include "spatial/spatializer.h"

namespace sonavel::testing {
namespace {

constexpr std::uint32_t kPlacedFrames = 5000;
constexpr int kQuiet = 5000;

SourcePosition At(double azimuth, double distance = 0.6) {
    return PositionOf(PolarPosition{azimuth, 0, distance});
}

struct NamedPlacing {
    const char* name;
    Placing placing;
};

std::vector<NamedPlacing> Placings() {
    return {{"point", {.points = {At(70)}}},
            {"path", {.kind = PlacingKind::kPath, .points = {At(0), At(90), At(180)}}},
            {"smooth point", {.points = {At(33)}, .smoothness = Smoothness::kSmooth}},
            {"smooth path",
             {.kind = PlacingKind::kPath,
              .points = {At(0), At(90), At(180, 2)},
              .curve = PathCurve::kSpline,
              .smoothness = Smoothness::kSmooth,
              .doppler = Doppler::kOn}}};
}

class LivePlacingTest : public DocumentTest {
  protected:
    static std::vector<float> Render(LiveRenderer& renderer, std::uint32_t first,
                                     std::uint32_t frames) {
        constexpr std::uint32_t kPiece = 441;
        std::vector<float> pairs(std::size_t{2} * frames);
        for (std::uint32_t done = 0; done < frames; done += kPiece) {
            const std::uint32_t count = std::min(kPiece, frames - done);
            renderer.Render(first + done, std::span(pairs).subspan(std::size_t{2} * done,
                                                                   std::size_t{2} * count));
        }
        return pairs;
    }

    Listener listener_;
};

TEST_F(LivePlacingTest, AFixedPlacingIsHeardAsItIsApplied) {
    constexpr FrameRange kRange{200, kPlacedFrames - 321};
    for (const Format& format : {Format{1, 8}, Format{2, 16}})
        for (const auto& [name, placing] : Placings()) {
            SCOPED_TRACE(std::string(name) + ", " + NameOf(format));
            const auto document = MakeNoise(format, kPlacedFrames, kQuiet);
            LivePlacing live({document->Sound(), kRange}, listener_);
            EXPECT_EQ(live.Range().frames, kRange.Frames());
            live.Set(placing);
            const auto renderer = live.MakeLatest();
            ASSERT_TRUE(renderer);
            const std::vector<float> heard = Render(*renderer, 0, kRange.Frames());
            EXPECT_EQ(Render(*renderer, 0, kRange.Frames()), heard) << "the second time";
            EXPECT_EQ(Render(*renderer, 1234, 500),
                      std::vector<float>(heard.begin() + 2468, heard.begin() + 3468))
                << "from elsewhere";
            ASSERT_TRUE(
                SpatializePlaced({*document, kRange.start, kRange.end, "", SpatialOutcome::kApply},
                                 placing, listener_));
            for (std::uint32_t i = 0; i < kRange.Frames(); ++i)
                for (const unsigned ear : {0u, 1u})
                    ASSERT_NEAR(heard[2 * i + ear] * 32768,
                                document->Sound().GetSample(ear, kRange.start + i), 1)
                        << i;
        }
}

// Around the head within a second, a new place in every piece, as a hand drags it.
TEST_F(LivePlacingTest, ASineThatIsDraggedAroundTheHeadDoesNotClick) {
    constexpr double kAngle = 2 * std::numbers::pi * 440 / 44100;
    const auto document = MakeDocument();
    ASSERT_TRUE(document->Sound().Create(1, 32, 44100, 44100));
    for (std::uint32_t i = 0; i < 44100; ++i)
        document->Sound().SetSample(0, i, static_cast<int>(8000 * std::sin(kAngle * i)));
    for (const Smoothness smoothness : {Smoothness::kStepped, Smoothness::kSmooth}) {
        LivePlacing live({document->Sound(), {0, 44100}}, listener_);
        LiveLoop loop(live.Range(), live.MakeUntouched());
        std::vector<float> piece(std::size_t{2} * loop.PieceFrames());
        std::vector<float> heard;
        for (int step = 0; step < 99; ++step) {
            live.Set({.points = {At(3.6 * step)}, .smoothness = smoothness});
            loop.Change(live.MakeLatest());
            loop.RenderPiece(piece);
            // The sound's own beginning is a step.
            if (step > 2) heard.insert(heard.end(), piece.begin(), piece.end());
        }
        double level = 0;
        for (std::size_t i = 0; i < heard.size(); ++i)
            level = std::max(level, std::abs(double{heard[i]}));
        for (const std::size_t ear : {0u, 1u})
            for (std::size_t i = 4 + ear; i < heard.size(); i += 2) {
                const double bend = double{heard[i]} - 2.0 * heard[i - 2] + heard[i - 4];
                // A click of a twentieth of the level would be many times the sine's own bend.
                ASSERT_LE(std::abs(bend), 4 * level * kAngle * kAngle)
                    << "frame " << i / 2 << ", ear " << ear;
            }
    }
}

TEST_F(LivePlacingTest, WithoutPointsNothingNewIsHeard) {
    const auto document = MakeNoise({1, 16}, kPlacedFrames);
    LivePlacing live({document->Sound(), {0, kPlacedFrames}}, listener_);
    EXPECT_EQ(live.MakeLatest(), nullptr);
    live.Set({});
    EXPECT_EQ(live.MakeLatest(), nullptr);
    live.Set({.points = {At(0)}});
    EXPECT_NE(live.MakeLatest(), nullptr);
}

}  // namespace
}  // namespace sonavel::testing
