// Tiles hold what the picture of the same columns shows, come by themselves, stay within their
// bound, and are made anew where the sound has changed and nowhere else.
#include "view/draw/spectrogram_tiles.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <numbers>
#include <semaphore>
#include <utility>

#include "sound/sample_types.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kTileRate = 8000;
constexpr std::uint32_t kTileFrames = 40 * kTileRate;

double ToneAt(double frequency, std::uint32_t frame) {
    return std::sin(2 * std::numbers::pi * frequency * frame / kTileRate);
}

// A tone that rises by steps on the left, and another one on the right.
Sound SteppingSound(std::uint32_t frames = kTileFrames) {
    Sound sound;
    EXPECT_TRUE(sound.Create(2, 16, kTileRate, frames));
    for (std::uint32_t frame = 0; frame < frames; ++frame) {
        const double step = std::floor(frame / 4000.0);
        sound.SetSample(0, frame, std::lround(12000 * ToneAt(300 + 20 * step, frame)));
        sound.SetSample(1, frame, std::lround(9000 * ToneAt(2500, frame)));
    }
    return sound;
}

SpectrogramScene SceneOf(const Sound& sound, std::int64_t virtualWidth, unsigned height = 50) {
    return {.look = {.windowFrames = 256},
            .height = height,
            .channels = sound.GetChannels(),
            .samplesPerSecond = sound.GetSamplesPerSecond(),
            .frameCount = sound.GetFrameCount(),
            .virtualWidth = virtualWidth};
}

class SpectrogramTilesTest : public ::testing::Test {
  protected:
    static constexpr std::size_t kRoom = std::size_t{4} << 20;

    explicit SpectrogramTilesTest(std::size_t budget = kRoom) : tiles_(budget) {
        tiles_.SetListener([this] { told_.release(); });
    }
    ~SpectrogramTilesTest() override { tiles_.SetListener({}); }

    // As a window does: asks, and collects whenever it is told to.
    void ShowAll(const Sound& sound, const SpectrogramScene& scene, const ColumnSpan& columns) {
        tiles_.Want(sound, scene, columns);
        while (!tiles_.IsComplete()) CollectOnce(sound);
    }
    void CollectOnce(const Sound& sound) {
        ASSERT_TRUE(told_.try_acquire_for(std::chrono::seconds(20)));
        for (const ColumnSpan& span : tiles_.Collect(sound)) collected_.push_back(span);
    }
    // Until nothing is being computed.
    void Settle(const Sound& sound) {
        while (told_.try_acquire_for(std::chrono::milliseconds(300)))
            for (const ColumnSpan& span : tiles_.Collect(sound)) collected_.push_back(span);
    }

    std::counting_semaphore<> told_{0};
    std::vector<ColumnSpan> collected_;
    SpectrogramTiles tiles_;
};

// What the columns show, computed at once.
SpectrogramPicture LaneOf(const Sound& sound, const SpectrogramScene& scene, unsigned channel,
                          const ColumnSpan& columns) {
    const double step =
        static_cast<double>(scene.frameCount) / static_cast<double>(scene.virtualWidth);
    SpectrogramMaker maker(scene.look, scene.samplesPerSecond, scene.height);
    return maker.Lanes(
        ReadSpectrogramFrames(sound,
                              {.firstFrame = static_cast<double>(columns.first) * step,
                               .framesPerColumn = step,
                               .columns = static_cast<unsigned>(columns.Count()),
                               .mostWindows = 2},
                              scene.look))[channel];
}

TEST_F(SpectrogramTilesTest, AreWhatThePictureOfTheirColumnsIs) {
    const Sound sound = SteppingSound();
    for (const std::int64_t virtualWidth : {300, 1000, 40000}) {
        const SpectrogramScene scene = SceneOf(sound, virtualWidth);
        const ColumnSpan seen = {virtualWidth / 3, virtualWidth / 3 + 150};
        ShowAll(sound, scene, seen);
        for (const unsigned channel : {0U, 1U})
            ASSERT_EQ(tiles_.Show(channel, seen).levels, LaneOf(sound, scene, channel, seen).levels)
                << virtualWidth << " " << channel;
        EXPECT_NE(tiles_.Show(0, seen).levels, tiles_.Show(1, seen).levels);
    }
}

TEST_F(SpectrogramTilesTest, WhatIsInSightComesFirst) {
    const Sound sound = SteppingSound();
    const SpectrogramScene scene = SceneOf(sound, 4000);
    tiles_.Want(sound, scene, {640, 1280});
    ShowAll(sound, scene, {640, 1280});
    // Those in sight, but for the few that are computed at the same time.
    std::size_t outside = 0;
    for (const ColumnSpan& span : collected_) outside += span.last <= 640 || span.first >= 1280;
    EXPECT_LE(outside, 8U);
    Settle(sound);
    EXPECT_GT(collected_.size(), 10U) << "and what lies beside it, later";
}

TEST_F(SpectrogramTilesTest, ScrollingReusesThem) {
    const Sound sound = SteppingSound();
    const SpectrogramScene scene = SceneOf(sound, 6400);
    ShowAll(sound, scene, {1280, 1920});
    Settle(sound);
    const std::uint64_t computed = tiles_.Computed();
    EXPECT_EQ(computed, 30U);  // 10 in sight, as many on both sides
    for (std::int64_t first = 1280; first >= 640; first -= 7) {
        tiles_.Want(sound, scene, {first, first + 640});
        ASSERT_TRUE(tiles_.IsComplete()) << first;
    }
    Settle(sound);
    // Ten more on the left, none twice; on the right one came into reach for a while.
    EXPECT_GE(tiles_.Computed(), computed + 10);
    EXPECT_LE(tiles_.Computed(), computed + 11);
}

TEST_F(SpectrogramTilesTest, AnEditMakesThoseAnewThatReachBehindItsFirstFrame) {
    Sound sound = SteppingSound();
    const SpectrogramScene scene = SceneOf(sound, 640);  // 500 frames a column
    ShowAll(sound, scene, {0, 640});
    const auto before = tiles_.Show(0, {0, 640});
    // The windows of tile 3 end at frame 127878, those of tile 4 begin at 127872.
    std::uint64_t computed = 10;
    for (const auto& [changed, firstTile] : {std::pair{127880U, 4}, {127870U, 3}}) {
        for (std::uint32_t frame = changed; frame < kTileFrames; ++frame)
            sound.SetSample(0, frame, 0);
        tiles_.NoteChange(changed);
        EXPECT_FALSE(tiles_.IsComplete());
        const auto outdated = tiles_.Show(0, {0, 640});
        EXPECT_EQ(outdated.At(100, 20), before.At(100, 20)) << "the old ones, meanwhile";
        collected_.clear();
        ShowAll(sound, scene, {0, 640});
        EXPECT_EQ(tiles_.Computed(), computed += 10U - static_cast<unsigned>(firstTile));
        for (const ColumnSpan& span : collected_) EXPECT_GE(span.first, firstTile * 64);
        EXPECT_EQ(tiles_.Show(0, {0, 640}).levels, LaneOf(sound, scene, 0, {0, 640}).levels);
    }
}

TEST_F(SpectrogramTilesTest, WhatWasBegunBeforeAnEditIsNotShownAsIfItWereNew) {
    Sound sound = SteppingSound();
    const SpectrogramScene scene = SceneOf(sound, 6400);
    tiles_.Want(sound, scene, {0, 6400});
    FillWithSilence(sound.MutableBytes(), 16);
    tiles_.NoteChange(0);
    ShowAll(sound, scene, {0, 6400});
    for (const std::uint8_t level : tiles_.Show(0, {0, 6400}).levels) ASSERT_EQ(level, 0);
}

TEST_F(SpectrogramTilesTest, AnotherZoomStandsInForWhatIsNotThereYet) {
    const Sound sound = SteppingSound();
    const SpectrogramScene fine = SceneOf(sound, 640);
    ShowAll(sound, fine, {0, 640});
    const auto shown = tiles_.Show(1, {0, 640});
    const SpectrogramScene coarse = SceneOf(sound, 320, 25);
    tiles_.SetListener({});  // nothing comes meanwhile
    tiles_.Want(sound, coarse, {0, 320});
    const auto standIn = tiles_.Show(1, {0, 320});
    ASSERT_EQ(standIn.levels.size(), 320U * 25);
    for (unsigned row = 0; row < 25; ++row)
        for (unsigned column = 0; column < 320; ++column)
            ASSERT_EQ(standIn.At(column, row), shown.At(2 * column + 1, 2 * row)) << column;
}

TEST(SpectrogramCacheTest, StaysWithinItsBoundAndKeepsWhatIsInUse) {
    const Sound sound = SteppingSound();
    const SpectrogramScene scene = SceneOf(sound, 64000);
    const std::size_t tile = scene.BytesOfTile();
    SpectrogramCache cache(10 * tile);
    const SpectrogramPicture lane{kTileColumns, 50,
                                  std::vector<std::uint8_t>(std::size_t{64} * 50, 7)};
    for (std::int64_t number = 0; number < 40; ++number) {
        cache.Touch(scene, {number - 3, number + 1});
        cache.Insert(scene, number, {lane, lane});
        EXPECT_LE(cache.Bytes(), 10 * tile);
        for (std::int64_t used = std::max<std::int64_t>(number - 3, 0); used <= number; ++used)
            EXPECT_EQ(cache.StateOf(scene, used), TileState::kCurrent) << used;
    }
    EXPECT_EQ(cache.Bytes(), 10 * tile);
    EXPECT_EQ(cache.StateOf(scene, 29), TileState::kMissing);
    // What is in sight stays, even where it is more than the bound.
    cache.Touch(scene, {0, 20});
    for (std::int64_t number = 0; number < 20; ++number) cache.Insert(scene, number, {lane, lane});
    EXPECT_EQ(cache.Bytes(), 20 * tile);
    cache.Touch(scene, {0, 2});
    cache.Insert(scene, 20, {lane, lane});
    EXPECT_LE(cache.Bytes(), 10 * tile);
    // Zooms of before leave with their tiles.
    for (std::int64_t width = 100; width < 140; ++width) {
        cache.Touch(SceneOf(sound, width), {0, 1});
        cache.Insert(SceneOf(sound, width), 0, {lane, lane});
    }
    EXPECT_LE(cache.Bytes(), 10 * tile);
}

}  // namespace
}  // namespace sonavel
