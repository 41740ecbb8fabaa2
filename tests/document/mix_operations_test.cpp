#include <cmath>

#include "document_fixture.h"

namespace sonavel::testing {
namespace {

class MixTest : public DocumentTest {
  protected:
    static double Raw(const Format& format, const Bytes& bytes, std::size_t sample) {
        if (format.bits == 8) return bytes[sample];
        return static_cast<std::int16_t>(bytes[2 * sample] | bytes[2 * sample + 1] << 8);
    }
    static void Put(const Format& format, Bytes& bytes, std::size_t sample, double value) {
        const auto low = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
        const std::size_t width = format.bits / 8;
        for (std::size_t i = 0; i < width; ++i)
            bytes[width * sample + i] = static_cast<std::uint8_t>(low >> 8 * i);
    }
    // The mix written down sample by sample; `gainsAt` by frame of the processed range. The sound
    // holds `heldBytes` from the start of the range on, silence where nothing else is.
    template <class GainsAt>
    static Bytes Expected(const Format& format, const Bytes& sound, const Bytes& clip,
                          const EditSelection& at, std::size_t heldBytes, GainsAt gainsAt) {
        const std::size_t width = format.bits / 8, align = width * format.channels;
        const std::size_t start = (at.IsEmpty() ? at.cursorFrame : at.startFrame) * align;
        const std::size_t length = at.IsEmpty() ? clip.size() : at.Frames() * align;
        Bytes result = sound;
        const std::size_t end = start + std::max(length, heldBytes);
        if (result.size() < end) result.resize(end, format.bits == 8 ? 128 : 0);
        for (std::size_t i = 0; i < length / width; ++i) {
            const edit::MixGains gains = gainsAt(i / format.channels, length / align);
            const std::size_t place = start / width + i;
            double value = 0;
            if (i < clip.size() / width) value += Raw(format, clip, i) * gains.clip;
            if (place < sound.size() / width) value += Raw(format, sound, place) * gains.sound;
            Put(format, result, place, value);
        }
        return result;
    }
};

constexpr EditSelection kPlaces[] = {{0, 0, 0},  {0, 0, 17},  {0, 0, 20}, {2, 8, 0},
                                     {1, 19, 5}, {15, 20, 0}, {7, 8, 0}};

TEST_F(MixTest, AddsBothProductsOverTheRange) {
    const edit::MixGains gainPairs[] = {{1, 1}, {0.5, 0.25}, {0, 1}, {2, 2}, {1, 0}};
    for (const Format& format : kFormats) {
        const unsigned align = format.channels * format.bits / 8;
        const Bytes sound = PatternBytes(20 * align, 1), clip = PatternBytes(9 * align, 2);
        for (const EditSelection& at : kPlaces) {
            for (const edit::MixGains& gains : gainPairs) {
                SCOPED_TRACE(NameOf(format) + " at " + std::to_string(at.startFrame) + ", " +
                             std::to_string(at.cursorFrame));
                auto document = MakeDocument(format, sound);
                const Result<EditSelection> result =
                    edit::Mix(*document, MakeClip(format, clip), at, gains);
                ASSERT_TRUE(result);
                EXPECT_EQ(BytesOf(document->Sound()),
                          Expected(format, sound, clip, at, clip.size(),
                                   [&](std::size_t, std::size_t) { return gains; }));
                EXPECT_EQ(result->cursorFrame, at.IsEmpty() ? at.cursorFrame : at.startFrame);
                EXPECT_EQ(document->History().StepAt(0).name, "Copy Sample");
                ASSERT_TRUE(document->Undo());
                EXPECT_EQ(BytesOf(document->Sound()), sound);
            }
        }
    }
}

TEST_F(MixTest, CrossfadeRunsFromTheStartLevelsToTheEndLevels) {
    const edit::CrossfadeGains gains{{0.25, 1}, {1, 0.5}};
    const auto gainsAt = [&](std::size_t frame, std::size_t frames) -> edit::MixGains {
        const double last = frames > 1 ? static_cast<double>(frames - 1) : 1;
        const double t = static_cast<double>(frame) / last;
        return {0.25 * (1 - t) + t, (1 - t) + 0.5 * t};
    };
    for (const Format& format : kFormats) {
        const unsigned align = format.channels * format.bits / 8;
        const Bytes sound = PatternBytes(20 * align, 1), clip = PatternBytes(9 * align, 2);
        for (const EditSelection& at : kPlaces) {
            auto document = MakeDocument(format, sound);
            ASSERT_TRUE(edit::CrossfadeMix(*document, MakeClip(format, clip), at, gains));
            EXPECT_EQ(BytesOf(document->Sound()), Expected(format, sound, clip, at, 0, gainsAt))
                << NameOf(format) << " at " << at.startFrame << ", " << at.cursorFrame;
        }
    }
}

TEST_F(MixTest, ResultsWrapAndEightBitSilenceIsScaled) {
    auto words = MakeDocument({1, 16}, {0xFF, 0x7F});  // 32767
    ASSERT_TRUE(edit::Mix(*words, MakeClip({1, 16}, {1, 0}), {0, 1, 0}, {1, 1}));
    EXPECT_EQ(words->Sound().GetSample(0, 0), -32768);
    auto bytes = MakeDocument({1, 8}, {128});
    ASSERT_TRUE(edit::Mix(*bytes, MakeClip({1, 8}, {128}), {0, 1, 0}, {1, 1}));
    EXPECT_EQ(BytesOf(bytes->Sound()), Bytes{0});
}

TEST_F(MixTest, FloatsAddUpAsTheyAreAndBeyondFullScale) {
    const Format format{2, 32, 8000};
    const auto document = MakeNoise(format, 20);
    const auto before = MakeNoise(format, 20);
    ClipRecord clip{*MakeNoise(format, 9)->Sound().Copy(), true};
    for (const double gain : {0.3, 2.0}) {
        ASSERT_TRUE(edit::Mix(*document, clip, {0, 0, 5}, {gain, 2}));
        for (std::uint32_t i = 0; i < 20; ++i) {
            const bool both = i >= 5 && i < 14;
            const double value = before->Sound().GetShare(1, i) * (both ? 2 : 1);
            const double added = both ? clip.GetShare(1, i - 5) * gain : 0;
            EXPECT_NEAR(document->Sound().GetShare(1, i), value + added, 1e-6) << i;
        }
        ASSERT_TRUE(document->Undo());
    }
    const edit::CrossfadeGains gains{{0, 1}, {1, 0}};
    ASSERT_TRUE(edit::CrossfadeMix(*document, clip, {0, 0, 11}, gains));
    for (std::uint32_t i = 0; i < 9; ++i) {
        const double t = i / 8.0;
        EXPECT_NEAR(document->Sound().GetShare(0, 11 + i),
                    clip.GetShare(0, i) * t + before->Sound().GetShare(0, 11 + i) * (1 - t), 1e-6);
    }
}

TEST_F(MixTest, SenselessGainsDoNoHarm) {
    for (const double gain : {double{NAN}, double{INFINITY}, -double{INFINITY}, 1e300}) {
        auto document = MakeDocument({2, 16}, PatternBytes(16, 1));
        const ClipRecord clip = MakeClip({2, 16}, PatternBytes(16, 2));
        EXPECT_TRUE(edit::Mix(*document, clip, {}, {gain, gain}));
        if (std::isnan(gain)) {
            EXPECT_EQ(BytesOf(document->Sound()), Bytes(16)) << "no number is no sound";
        }
        EXPECT_TRUE(edit::CrossfadeMix(*document, clip, {}, {{gain, 1}, {1, gain}}));
        EXPECT_EQ(document->Sound().GetFrameCount(), 4u);
    }
}

TEST_F(MixTest, ASoundGrowsToTheMostThatItMayHoldAndNotBeyond) {
    WriteOptions("SAVE UNDO REDO INFOMATION=0\n");
    auto document = MakeDocument();
    constexpr auto kMostFrames = static_cast<std::uint32_t>(kMaxSoundBytes);
    // Memory that nobody has written costs nothing.
    ASSERT_TRUE(document->Sound().Create(1, 8, 8000, kMostFrames - 2));
    const ClipRecord clip = MakeClip({1, 8}, {1, 2, 3, 4});
    EXPECT_FALSE(edit::Mix(*document, clip, {0, 0, kMostFrames - 3}, {1, 0}));
    EXPECT_EQ(document->Sound().GetFrameCount(), kMostFrames - 2);
    EXPECT_TRUE(edit::Mix(*document, clip, {0, 0, kMostFrames - 4}, {1, 0}));
    EXPECT_EQ(document->Sound().GetFrameCount(), kMostFrames);
    EXPECT_EQ(document->Sound().GetSample(0, kMostFrames - 1), 128 - 4);
}

}  // namespace
}  // namespace sonavel::testing
