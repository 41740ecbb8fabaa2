#include "view/draw/envelope.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "view/random_sound.h"
#include "view/state/zoom.h"

namespace sonavel {
namespace {

// The drawing of a lane told step by step, with a state carried from column to column.
class ReferenceLane {
  public:
    explicit ReferenceLane(const EnvelopeRequest& request) : r_(request) {}

    std::vector<EnvelopeColumn> Columns() {
        std::vector<EnvelopeColumn> columns;
        const std::int64_t frames = r_.wave.GetFrameCount();
        const std::int64_t width = r_.horizontal.maximum;
        if (frames < 1 || width <= 0) return columns;
        const std::int64_t count = r_.lane.Width() <= frames ? r_.lane.Width() : frames;
        for (std::int64_t x = 0; x < count; ++x) {
            const std::int64_t s0 = (x + r_.horizontal.position) * frames / width;
            std::int64_t s1 = (x + r_.horizontal.position + 1) * frames / width;
            while (s0 == s1) {
                if (++x >= count) return columns;
                s1 = (x + r_.horizontal.position + 1) * frames / width;
            }
            Read(s0, s1);
            const bool normal = r_.selection.start == r_.selection.end || s0 < r_.selection.start ||
                                s1 > r_.selection.end;
            columns.push_back({static_cast<int>(x), r_.lane.top + Y(max_), r_.lane.top + Y(min_),
                               normal ? ColumnPen::kNormal : ColumnPen::kSelected});
        }
        return columns;
    }

  private:
    void Read(std::int64_t s0, std::int64_t s1) {
        max_ = -999999;
        min_ = 999999;
        const int half = (r_.wave.GetBits() == 8 ? 256 : 65536) / 2 - 1;
        if (s1 - s0 < 256) {
            for (std::int64_t s = s0; s < s1; ++s) {
                Take(r_.wave.GetSample(r_.channel, static_cast<std::uint32_t>(s)),
                     r_.wave.GetSample(r_.channel, static_cast<std::uint32_t>(s)));
                if (max_ >= half && -min_ >= half) return;
            }
            return;
        }
        for (std::int64_t s = s0; s < s1; s += 256) {
            const auto block = static_cast<std::size_t>(s / 256);
            if (block < r_.extremes.BlockCount()) {
                blockMax_ = r_.extremes.Maxima(r_.channel)[block];
                blockMin_ = r_.extremes.Minima(r_.channel)[block];
            }
            Take(blockMax_, blockMin_);
        }
    }

    void Take(int maximum, int minimum) {
        if (maximum > max_) max_ = maximum;
        if (minimum < min_) min_ = minimum;
    }

    int Y(int v) const {
        const int h = r_.lane.Height();
        const int range = static_cast<int>(r_.vertical.maximum - r_.vertical.minimum);
        const int page = std::min(static_cast<int>(r_.vertical.page), range);
        const double k = double(range) / page;
        const float product = static_cast<float>(-v * k);
        const int full = r_.wave.GetBits() == 8 ? 256 : 65536;
        const int y = static_cast<int>((product / full + 0.5) * h) -
                      static_cast<int>(r_.vertical.position) + (range - page) / 2;
        if (y < 0) return -2;
        return y > h ? h : y;
    }

    const EnvelopeRequest& r_;
    int max_ = 0;
    int min_ = 0;
    int blockMax_ = 0;  // read last, from whichever column
    int blockMin_ = 0;
};

struct Scene {
    RandomSound sound;
    BlockExtremes extremes;
    ZoomContext context;
    ZoomState zoom;
    Selection selection;

    Scene(unsigned channels, unsigned bits, std::uint32_t frames, int width, int height)
        : sound(channels, bits, frames, frames * 3 + bits) {
        sound.Quieten();
        extremes.Rebuild(sound.wave, 0);
        context = ZoomContext::Of(sound.wave, width, height, frames / 3);
        zoom = FitZoom(context);
        selection = {frames / 4, frames / 2};
    }

    EnvelopeRequest Request(unsigned channel) const {
        Rectangle lane{0, 0, context.waveformWidth, context.waveformHeight};
        if (channel == 1) lane.top = 11;
        return {sound.wave, extremes, channel, lane, zoom.horizontal, zoom.vertical, selection};
    }
};

void ExpectAsReference(const Scene& scene) {
    for (unsigned channel = 0; channel < scene.sound.wave.GetChannels(); ++channel) {
        const EnvelopeRequest request = scene.Request(channel);
        EXPECT_EQ(EnvelopeColumns(request), ReferenceLane(request).Columns());
    }
}

TEST(Envelope, DrawsAsTheRulesSayAtEveryZoom) {
    for (const unsigned channels : {1u, 2u}) {
        for (const unsigned bits : {8u, 16u}) {
            for (const std::uint32_t frames : {1u, 50u, 99u, 100u, 101u, 25599u, 25600u, 90001u}) {
                Scene scene(channels, bits, frames, 100, 83);
                SCOPED_TRACE(::testing::Message() << channels << "x" << bits << "x" << frames);
                ExpectAsReference(scene);
                for (int step = 0; step < 12; ++step) {
                    scene.zoom = TimeZoomIn(scene.zoom, scene.context);
                    if (step % 2 == 0) scene.zoom = LevelZoomIn(scene.zoom, scene.context);
                    ExpectAsReference(scene);
                }
                scene.zoom.horizontal = scene.zoom.horizontal.Stepped(ScrollStep::kToEnd);
                scene.zoom.vertical = scene.zoom.vertical.Stepped(ScrollStep::kToStart);
                ExpectAsReference(scene);
            }
        }
    }
}

TEST(Envelope, FloatsAreDrawnAsTheWordsThatTheyEqual) {
    Scene scene(2, 16, 90001, 100, 83);
    for (int step = 0; step < 12; ++step) {
        Scene floats(2, 16, 90001, 100, 83);
        ASSERT_TRUE(floats.sound.wave.ConvertBits(32));
        floats.extremes.Rebuild(floats.sound.wave, 0);
        floats.zoom = scene.zoom;
        EXPECT_EQ(EnvelopeColumns(floats.Request(1)), EnvelopeColumns(scene.Request(1))) << step;
        scene.zoom = LevelZoomIn(TimeZoomIn(scene.zoom, scene.context), scene.context);
    }
}

// The sound on a third of the lane.
ZoomState Shrunk(const Scene& scene) {
    UserZoom third;
    third.type = UserZoom::Type::kPercent;
    third.timePercent = 33;
    third.levelPercent = 100;
    return ApplyUserZoom(scene.zoom, scene.context, third);
}

TEST(Envelope, BehindTheEndTheBlockReadLastIsDrawnAgain) {
    for (const std::uint32_t frames : {25600u, 90001u}) {
        Scene scene(2, 16, frames, 100, 83);
        scene.zoom = Shrunk(scene);
        ASSERT_EQ(scene.zoom.horizontal.maximum, 33);
        ExpectAsReference(scene);
        const std::vector<EnvelopeColumn> columns = EnvelopeColumns(scene.Request(1));
        ASSERT_EQ(columns.size(), 100u);
        EXPECT_LT(columns[99].yMax, columns[99].yMin) << "not silent";
        // A strip of its own shows the same.
        EXPECT_EQ(EnvelopeColumns(scene.Request(1), {50, 51}),
                  std::vector<EnvelopeColumn>(columns.begin() + 49, columns.begin() + 52));
    }
    // Columns of fewer frames than a block read them, and there are none.
    Scene scene(1, 16, 3000, 100, 80);
    scene.zoom = Shrunk(scene);
    ExpectAsReference(scene);
    EXPECT_EQ(EnvelopeColumns(scene.Request(0))[99].yMax, 40);
}

TEST(Envelope, SkipsPixelsBetweenFramesWhenTheWidthExceedsTheSound) {
    Scene scene(1, 16, 40, 100, 80);
    scene.zoom = TimeZoomOut(scene.zoom, scene.context);
    ASSERT_EQ(scene.zoom.horizontal.maximum, 100);
    ExpectAsReference(scene);
    EXPECT_EQ(EnvelopeColumns(scene.Request(0)).size(), 16u);  // 40 columns of 100 for 40 frames
}

TEST(Envelope, AStripHasItsColumnsAndOneNeighbourOnEachSide) {
    for (const std::uint32_t frames : {40u, 25000u}) {
        Scene scene(2, 16, frames, 100, 80);
        scene.zoom = TimeZoomOut(scene.zoom, scene.context);
        const auto all = EnvelopeColumns(scene.Request(1));
        for (int first = 0; first < 100; first += 7) {
            const int last = first + 13;
            // From the last column before the strip to the first one behind it.
            const auto isBefore = [&](const EnvelopeColumn& column) { return column.x < first; };
            const auto isInside = [&](const EnvelopeColumn& column) { return column.x < last; };
            auto begin = std::partition_point(all.begin(), all.end(), isBefore);
            auto end = std::partition_point(all.begin(), all.end(), isInside);
            if (begin != all.begin()) --begin;
            if (end != all.end()) ++end;
            EXPECT_EQ(EnvelopeColumns(scene.Request(1), {first, last}),
                      std::vector<EnvelopeColumn>(begin, end))
                << frames << " frames, strip from " << first;
        }
    }
}

TEST(Envelope, ReadingStopsAtFullScaleOnBothSides) {
    RandomSound sound(1, 16, 300);
    for (std::uint32_t frame = 0; frame < 300; ++frame) sound.wave.SetSample(0, frame, 0);
    sound.wave.SetSample(0, 10, 32767);
    sound.wave.SetSample(0, 20, -32767);
    sound.wave.SetSample(0, 30, -32768);
    EXPECT_EQ(ReadExtremes(sound.wave, 0, 0, 200), (SampleExtremes{32767, -32767}));
    EXPECT_EQ(ReadExtremes(sound.wave, 0, 11, 200), (SampleExtremes{0, -32768}));
    EXPECT_EQ(ReadExtremes(sound.wave, 0, 290, 400), (SampleExtremes{0, 0}));
    EXPECT_EQ(ReadExtremes(sound.wave, 0, 400, 410), (SampleExtremes{0, 0}));
}

TEST(Envelope, EightBitSoundsAreDrawnUpsideDown) {
    for (const unsigned bits : {8u, 16u}) {
        Scene scene(1, bits, 100, 100, 100);
        for (std::uint32_t frame = 0; frame < 100; ++frame)
            scene.sound.wave.SetSample(0, frame, bits == 8 ? -127 : 32767);
        const EnvelopeColumn first = EnvelopeColumns(scene.Request(0)).front();
        EXPECT_EQ(first.yMax, bits == 8 ? 99 : 0);  // the byte 255, the word 32767
        EXPECT_EQ(first.yMin, first.yMax);
    }
}

TEST(Envelope, LinesOfALane) {
    struct Case {
        std::uint32_t frames;
        int count;
        std::optional<int> endX;
        std::optional<int> wideFirstX;  // of the first column when 100 pixels show all frames
    };
    for (const Case& c : {Case{0, 0, {}, {}}, Case{1, 1, 1, {}}, Case{20, 20, 20, 4},
                          Case{60, 60, 60, 0}, Case{100, 100, {}, 0}, Case{500, 100, {}, 0}}) {
        Scene scene(1, 16, c.frames, 100, 81);
        Scene wide(1, 16, c.frames, 100, 81);
        wide.zoom = TimeZoomOut(wide.zoom, wide.context);
        EXPECT_EQ(LinesOfLane(wide.Request(0), LineVisibility::kHidden).firstColumnX, c.wideFirstX)
            << c.frames;
        const LaneLines lines = LinesOfLane(scene.Request(0), LineVisibility::kShown);
        EXPECT_EQ(lines.columnCount, c.count);
        EXPECT_EQ(lines.endOfSoundX, c.endX);
        if (c.frames == 0) continue;
        EXPECT_EQ(lines.centreY, 40);
        EXPECT_EQ(lines.startY, 40);
        EXPECT_EQ(lines.firstColumnX, 0);
        EXPECT_EQ(lines.centreRight, c.count);
        scene.zoom = LevelZoomIn(scene.zoom, scene.context);
        scene.zoom.vertical = scene.zoom.vertical.WithPosition(0);
        EXPECT_EQ(LinesOfLane(scene.Request(0), LineVisibility::kShown).centreY,
                  40 + (121 - 82) / 2);
        EXPECT_FALSE(LinesOfLane(scene.Request(0), LineVisibility::kHidden).centreY);
    }
}

}  // namespace
}  // namespace sonavel
