#include "spatial/crosstalk.h"

#include <cmath>
#include <numbers>

#include "document/document_fixture.h"
#include "spatial/crosstalk_filter.h"

namespace sonavel::testing {
namespace {

using CrosstalkTest = DocumentTest;

double LevelOf(double powerRatio) {
    return 10 * std::log10(powerRatio);
}

TEST_F(CrosstalkTest, EachEarHearsItsOwnChannelWithoutColour) {
    Listener listener;
    const struct {
        std::uint32_t rate;
        std::vector<double> angles;
    } cases[] = {{44100, {3, 5, 10, 15, 30, 90}}, {48000, {10, 60}}};
    for (const auto& [rate, angles] : cases)
        for (const double angle : angles) {
            const CrosstalkFilter filter(**listener.At(rate), angle);
            double quietest = 100, loudest = -100;
            for (double hertz = 200; hertz <= 8000; hertz *= 1.03) {
                const EarMatrix bare = filter.SpeakersToEars(hertz / rate);
                const EarMatrix heard = filter.ChannelsToEars(hertz / rate);
                for (const int ear : {0, 1}) {
                    const double own = std::norm(heard[ear][ear]);
                    EXPECT_LT(LevelOf(std::norm(heard[ear][1 - ear]) / own), -15)
                        << angle << ", " << hertz;
                    quietest = std::min(quietest, LevelOf(own));
                    loudest = std::max(loudest, LevelOf(own));
                    // Without the filter the wrong ear hears it well.
                    if (hertz > 1000 || angle > 60) continue;
                    EXPECT_GT(LevelOf(std::norm(bare[ear][1 - ear]) / std::norm(bare[ear][ear])),
                              -15);
                }
            }
            EXPECT_LT(loudest - quietest, 3) << angle;
            // About as loud as the loudspeakers are without it.
            EXPECT_NEAR(loudest, 5, 3) << angle;
        }
}

// What the loudspeakers play of a click in one channel is what the filter says of it.
TEST_F(CrosstalkTest, TheSoundBecomesWhatTheFilterSays) {
    constexpr std::uint32_t kFrames = 9000;
    constexpr std::uint32_t kClick = 4321;
    for (const unsigned channel : {0u, 1u}) {
        const auto document = MakeDocument({2, 16, 44100}, Bytes(std::size_t{4} * kFrames));
        ASSERT_TRUE(document->Sound().ConvertBits(32));
        document->Sound().SetSample(channel, kClick, 8192);
        Listener listener;
        ASSERT_TRUE(CancelCrosstalk(*document, 0, 0, 30, listener));
        ASSERT_EQ(document->Sound().GetFormat(), MakeSoundFormat(2, 32, 44100));
        const CrosstalkFilter filter(**listener.At(44100), 30);
        for (const double hertz : {300.0, 1000.0, 5000.0}) {
            std::array<std::complex<double>, 2> played;
            for (std::uint32_t i = 0; i < kFrames; ++i)
                for (const unsigned speaker : {0u, 1u})
                    played[speaker] += 4 * document->Sound().GetShare(speaker, i) *
                                       std::polar(1.0, -2 * std::numbers::pi * hertz / 44100 *
                                                           (double{1} * i - kClick));
            const EarMatrix speakers = filter.SpeakersToEars(hertz / 44100);
            const EarMatrix heard = filter.ChannelsToEars(hertz / 44100);
            for (const int ear : {0, 1})
                EXPECT_NEAR(std::abs(speakers[ear][0] * played[0] + speakers[ear][1] * played[1] -
                                     heard[ear][channel]),
                            0, 1e-3);
        }
        ASSERT_TRUE(document->Undo());
        EXPECT_EQ(document->Sound().GetSample(channel, kClick), 8192);
    }
}

TEST_F(CrosstalkTest, TouchesTheSelectionAloneAndRefusesMono) {
    Listener listener;
    const auto mono = MakeNoise({1, 16, 44100}, 100);
    EXPECT_EQ(CancelCrosstalk(*mono, 0, 0, 30, listener),
              Failed("Cross Talk needs a stereo sound."));
    EXPECT_FALSE(mono->CanUndo());
    for (const unsigned bits : {8u, 16u}) {
        const auto before = MakeNoise({2, bits, 44100}, 5000);
        const auto document = MakeNoise({2, bits, 44100}, 5000);
        ASSERT_TRUE(CancelCrosstalk(*document, 1000, 3000, 30, listener));
        const CWave& sound = document->Sound();
        EXPECT_EQ(sound.GetBits(), bits);
        int changed = 0;
        for (std::uint32_t i = 0; i < 5000; ++i) {
            const bool same = sound.GetSample(0, i) == before->Sound().GetSample(0, i);
            if (i < 1000 || i >= 3000) {
                ASSERT_TRUE(same) << i;
            }
            changed += same ? 0 : 1;
        }
        EXPECT_GT(changed, 1500);
        EXPECT_LE(PeakOf(sound), bits == 8 ? 128 : 32768);
    }
    progress_.cancelAtPoll = progress_.polls + 1;
    const auto cancelled = MakeNoise({2, 16, 44100}, 5000);
    EXPECT_TRUE(CancelCrosstalk(*cancelled, 0, 0, 30, listener).IsCancelled());
    EXPECT_FALSE(cancelled->CanUndo());
}

}  // namespace
}  // namespace sonavel::testing
