// Effects heard live beside what Apply makes of the same sound.
#include <algorithm>
#include <cmath>
#include <string>

#include "effect_fixture.h"
#include "effects/live_effect.h"

namespace sonavel::testing {
namespace {

struct LiveCase {
    const char* name;
    std::vector<double> values;
    bool whole = false;  // a whole result, of 16 bits
};

// Quiet sounds stay below what would be brought down as a whole.
constexpr int kQuiet = 9000;

const LiveCase kLiveCases[] = {{"volume", {180, 1}},
                               {"volume", {500, 0}},
                               {"panpot", {0, -300, 0, 0, 0}},
                               {"panpot", {1, 0, -900, 700, 0}},
                               {"reverb", {50, 900, 6, 60, 20}, true},
                               {"flanger", {3.5, 1.5}, true},
                               {"modulator", {500, 20, 80, 1300, 0, 60}},
                               {"dynamics", {20, 2, 4, 15, 0.5, 3}}};

class LiveEffectTest : public EffectTest {
  protected:
    struct Heard {
        std::vector<float> pairs;

        float At(unsigned channel, std::uint32_t frame) const { return pairs[2 * frame + channel]; }
    };

    // The frames [first, first + frames), in pieces that fit no processor's.
    static Heard Render(LiveRenderer& renderer, std::uint32_t first, std::uint32_t frames) {
        constexpr std::uint32_t kPiece = 441;
        Heard heard{std::vector<float>(std::size_t{2} * frames)};
        for (std::uint32_t done = 0; done < frames; done += kPiece) {
            const std::uint32_t count = std::min(kPiece, frames - done);
            renderer.Render(
                first + done,
                std::span(heard.pairs).subspan(std::size_t{2} * done, std::size_t{2} * count));
        }
        return heard;
    }
    static std::unique_ptr<LiveRenderer> Made(const char* name, const CSoundDoc& document,
                                              FrameRange range, const std::vector<double>& values,
                                              std::uint32_t at = 0) {
        LiveEffect live(*FindEffect(name), document.Sound(), range);
        live.Set(values);
        auto made = live.MakeLatest();
        if (made) made->Prepare(at);
        return made;
    }
};

TEST_F(LiveEffectTest, FixedValuesAreHeardAsTheyAreApplied) {
    constexpr std::uint32_t kHeardFrames = 3 * kPieceFrames + 500;
    constexpr FrameRange kRange{300, kHeardFrames - 100};
    for (const Format& format : {Format{1, 8}, Format{2, 8}, Format{1, 16}, Format{2, 16}})
        for (const LiveCase& effect : kLiveCases) {
            if (LiveRefusal(*FindEffect(effect.name), MakeNoise(format, 1)->Sound())) continue;
            SCOPED_TRACE(std::string(effect.name) + ", " + NameOf(format));
            const auto document = MakeNoise(format, kHeardFrames, kQuiet);
            const auto renderer = Made(effect.name, *document, kRange, effect.values);
            ASSERT_TRUE(renderer);
            const Heard heard = Render(*renderer, 0, kRange.Frames());
            const Heard again = Render(*renderer, 0, kRange.Frames());
            EXPECT_EQ(heard.pairs, again.pairs) << "the second time is another";
            ASSERT_TRUE(ApplyEffect(*FindEffect(effect.name),
                                    Target(*document, kRange.start, kRange.end), effect.values,
                                    Applying::kAlways));
            const double unit = format.bits == 16 ? 32768 : effect.whole ? 127.0 : 128.0;
            for (std::uint32_t i = 0; i < kRange.Frames(); ++i)
                for (const unsigned slot : {0u, 1u}) {
                    const unsigned channel = std::min(slot, format.channels - 1u);
                    ASSERT_NEAR(heard.At(slot, i) * unit,
                                document->Sound().GetSample(channel, kRange.start + i),
                                effect.whole ? 1 : 0.01)
                        << "frame " << i << " of channel " << channel;
                }
        }
}

TEST_F(LiveEffectTest, FloatsAreHeardAsTheyAreApplied) {
    constexpr std::uint32_t kHeardFrames = 5000;
    for (const LiveCase& effect : kLiveCases) {
        SCOPED_TRACE(effect.name);
        const auto document = MakeDocument();
        ASSERT_TRUE(document->Sound().Create(2, 32, 44100, kHeardFrames));
        for (std::uint32_t i = 0; i < kHeardFrames; ++i)
            for (const unsigned channel : {0u, 1u})
                document->Sound().SetSample(channel, i,
                                            static_cast<int>(6000 * std::sin(i * (0.1 + channel))));
        const auto renderer = Made(effect.name, *document, {0, kHeardFrames}, effect.values);
        ASSERT_TRUE(renderer);
        const Heard heard = Render(*renderer, 0, kHeardFrames);
        ASSERT_TRUE(ApplyEffect(*FindEffect(effect.name), Target(*document), effect.values,
                                Applying::kAlways));
        for (std::uint32_t i = 0; i < kHeardFrames; ++i)
            for (const unsigned channel : {0u, 1u})
                ASSERT_NEAR(heard.At(channel, i), document->Sound().GetShare(channel, i), 1e-5)
                    << i;
    }
}

// The equalizer's result is brought to the peak of before, channel by channel.
TEST_F(LiveEffectTest, TheEqualizerDiffersFromItsPreviewInLevelAlone) {
    constexpr std::uint32_t kHeardFrames = 9000;
    const std::vector<double> values{6, -12, 3, 0, -20, 8, 2};
    const auto document = MakeNoise({2, 16}, kHeardFrames, kQuiet);
    const auto renderer = Made("equalizer", *document, {0, kHeardFrames}, values);
    ASSERT_TRUE(renderer);
    const Heard heard = Render(*renderer, 0, kHeardFrames);
    ASSERT_TRUE(Preview("equalizer", Target(*document), values));
    double product = 0;
    double square = 0;
    for (std::uint32_t i = 0; i < kHeardFrames; ++i) {
        product += double{heard.At(0, i)} * document->Preview().GetSample(0, i);
        square += double{heard.At(0, i)} * heard.At(0, i);
    }
    const double level = product / square;
    for (std::uint32_t i = 0; i < kHeardFrames; ++i)
        ASSERT_NEAR(heard.At(0, i) * level, document->Preview().GetSample(0, i), 1.5) << i;
    EXPECT_NE(LiveNote(*FindEffect("equalizer")), nullptr);
    EXPECT_NE(LiveNote(*FindEffect("reverb")), nullptr);
    EXPECT_EQ(LiveNote(*FindEffect("flanger")), nullptr);
}

// A change in the middle of the range goes on as if it had been so from the beginning.
TEST_F(LiveEffectTest, ASettingThatComesLaterIsInFullSwingAtOnce) {
    constexpr std::uint32_t kHeardFrames = 8 * 44100;
    constexpr std::uint32_t kHeard = 4000;
    const auto document = MakeNoise({2, 16}, kHeardFrames, kQuiet);
    std::vector<LiveCase> cases(std::begin(kLiveCases), std::end(kLiveCases));
    cases.push_back({"equalizer", {6, -12, 3, 0, -20, 8, 2}});
    for (const LiveCase& effect : cases) {
        SCOPED_TRACE(effect.name);
        const bool remembers = FindEffect(effect.name)->traits.spread != Spread::kPieces;
        const auto early = Made(effect.name, *document, {0, kHeardFrames}, effect.values);
        if (remembers)
            for (std::uint32_t first = 0; first < kHeardFrames - kHeard; first += kHeard)
                Render(*early, first, kHeard);
        const std::uint32_t at = kHeardFrames - kHeard - (kHeardFrames - kHeard) % kHeard;
        const auto late = Made(effect.name, *document, {0, kHeardFrames}, effect.values, at - 1000);
        const Heard wanted = Render(*early, at, kHeard);
        const Heard heard = Render(*late, at, kHeard);
        double apart = 0;
        double whole = 0;
        for (std::size_t i = 0; i < heard.pairs.size(); ++i) {
            apart += std::pow(double{heard.pairs[i]} - wanted.pairs[i], 2);
            whole += std::pow(double{wanted.pairs[i]}, 2);
        }
        EXPECT_LE(apart, (remembers ? 1e-4 : 0) * whole) << std::sqrt(apart / whole);
    }
}

TEST_F(LiveEffectTest, WhatCannotBeHeardLiveSaysWhy) {
    struct Case {
        const char* name;
        unsigned channels;
        const char* part;  // of the reason; null when it can
    };
    const Case cases[] = {{"volume", 1, nullptr},   {"equalizer", 2, nullptr},
                          {"panpot", 2, nullptr},   {"panpot", 1, "Mono File"},
                          {"tempo", 2, "how long"}, {"noise-reduce", 2, "whole range"}};
    for (const Case& effect : cases) {
        const auto document = MakeNoise({effect.channels, 16}, 10);
        const char* const why = LiveRefusal(*FindEffect(effect.name), document->Sound());
        if (effect.part) {
            ASSERT_TRUE(why) << effect.name;
            EXPECT_NE(std::string(why).find(effect.part), std::string::npos) << effect.name;
        } else {
            EXPECT_EQ(why, nullptr) << effect.name;
        }
    }
}

TEST_F(LiveEffectTest, NothingIsMadeAnewBeforeSomethingIsSet) {
    const auto document = MakeNoise({2, 16}, 100);
    LiveEffect live(*FindEffect("volume"), document->Sound(), {0, 100});
    EXPECT_EQ(live.MakeLatest(), nullptr);
    live.Set({50, 0});
    EXPECT_NE(live.MakeLatest(), nullptr);
    EXPECT_EQ(live.MakeLatest(), nullptr);
}

}  // namespace
}  // namespace sonavel::testing
