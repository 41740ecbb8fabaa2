// Pauses are found where all channels stay quiet, in every type of samples.
#include "sound/pauses.h"

#include <gtest/gtest.h>

#include "sound/sample_types.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kRate = 1000;

struct Loud {
    FrameRange frames;
    std::int32_t value;
    unsigned channel = 0;
};

Sound SoundWith(unsigned channels, unsigned bits, std::uint32_t frames,
                const std::vector<Loud>& parts) {
    Sound sound;
    EXPECT_TRUE(sound.Create(channels, bits, kRate, frames));
    FillWithSilence(sound.MutableBytes(), bits);
    for (const Loud& part : parts)
        for (std::uint32_t frame = part.frames.start; frame < part.frames.end; ++frame)
            sound.SetSample(part.channel, frame, frame % 2 == 0 ? part.value : -part.value);
    return sound;
}

using Ranges = std::vector<FrameRange>;

TEST(PausesTest, QuietAndSoundCountWhenTheyLastLongEnough) {
    const std::vector<Loud> parts = {
        {{100, 200}, 20000}, {{210, 300}, 20000}, {{500, 510}, 20000}, {{700, 800}, 20000}};
    const Sound sound = SoundWith(1, 16, 1000, parts);
    const struct {
        const char* what;
        PauseRule rule;
        Ranges sounds, pauses;
    } cases[] = {
        {"all of it",
         {-40, 1, 1},
         {{100, 200}, {210, 300}, {500, 510}, {700, 800}},
         {{0, 100}, {200, 210}, {300, 500}, {510, 700}, {800, 1000}}},
        {"a gap one frame too short",
         {-40, 11, 1},
         {{100, 300}, {500, 510}, {700, 800}},
         {{0, 100}, {300, 500}, {510, 700}, {800, 1000}}},
        {"a click is no sound",
         {-40, 11, 11},
         {{100, 300}, {700, 800}},
         {{0, 100}, {300, 700}, {800, 1000}}},
        {"no pause long enough", {-40, 500, 1}, {{100, 800}}, {}},
        {"all below the threshold", {-3, 10, 1}, {}, {{0, 1000}}},
    };
    for (const auto& one : cases) {
        const PausesFound found = FindPauses(sound, {0, 1000}, one.rule);
        EXPECT_EQ(found.sounds, one.sounds) << one.what;
        EXPECT_EQ(found.pauses, one.pauses) << one.what;
    }
}

TEST(PausesTest, LooksAtTheRangeAlone) {
    const Sound sound = SoundWith(1, 16, 1000, {{{100, 300}, 20000}, {{600, 700}, 20000}});
    const PausesFound found = FindPauses(sound, {200, 650}, {-40, 50, 1});
    EXPECT_EQ(found.sounds, (Ranges{{200, 300}, {600, 650}}));
    EXPECT_EQ(found.pauses, (Ranges{{300, 600}}));
    EXPECT_TRUE(FindPauses(sound, {2000, 3000}, {}).pauses.empty());
}

TEST(PausesTest, AnyChannelOfAnyTypeEndsAPause) {
    for (const unsigned bits : {8u, 16u, 32u}) {
        const std::int32_t loud = bits == 8 ? 64 : 16384;  // half of full scale
        const Sound sound = SoundWith(2, bits, 300, {{{100, 150}, loud, 1}});
        EXPECT_EQ(FindPauses(sound, {0, 300}, {-7, 1, 1}).sounds, (Ranges{{100, 150}})) << bits;
        EXPECT_EQ(FindPauses(sound, {0, 300}, {-6, 1, 1}).sounds, Ranges{}) << bits;
    }
}

// Seams of the parts that are looked at side by side neither split a sound nor a pause.
TEST(PausesTest, LongSoundsHaveNoSeams) {
    constexpr std::uint32_t kSeam = 1 << 20;
    const Sound sound = SoundWith(1, 16, 3 * kSeam, {{{kSeam - 500, kSeam + 500}, 20000}});
    const PausesFound found = FindPauses(sound, {0, 3 * kSeam}, {-40, 600, 600});
    EXPECT_EQ(found.sounds, (Ranges{{kSeam - 500, kSeam + 500}}));
    EXPECT_EQ(found.pauses, (Ranges{{0, kSeam - 500}, {kSeam + 500, 3 * kSeam}}));
}

}  // namespace
}  // namespace sonavel
