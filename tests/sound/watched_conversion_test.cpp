// Conversions of bits and channels in pieces: they give what they give at once, tell how far they
// are, and end where they are not wanted any more.
#include "sound/watched_conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "sound/rounding.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

using ToldShares = std::vector<double>;  // what a watch was told
using WatchedMaking = std::function<Result<Sound>(const Sound&, const PieceWatch&)>;

constexpr std::uint32_t kLongFrames = 3 * kPieceSamples + 1001;

// Of whole numbers every value, of floats such as fit 16 bits and in the end some that do not.
Sound LongSound(unsigned channels, unsigned bits, std::uint32_t frames) {
    Sound sound;
    EXPECT_TRUE(sound.Create(channels, bits, 8000, frames));
    const std::span<std::uint8_t> bytes = sound.MutableBytes();
    if (bits == FloatSample::kBits) {
        const std::span<float> samples = SamplesOf<FloatSample>(bytes);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<float>(static_cast<int>(i * 31 % 65536) - 32768) / 32768;
        if (frames > 1000) samples[samples.size() - 500] = 0.3f;
    } else {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>(i * 37 + i / 256);
    }
    sound.Markers().Add(5, "kept", 0);
    return sound;
}

struct WatchedCase {
    std::string name;
    unsigned channels, bits;  // before
    WatchedMaking make;
};

std::vector<WatchedCase> AllConversions() {
    const auto to = [](unsigned channels, unsigned bits) {
        return [=](const Sound& sound, const PieceWatch& watch) {
            return Converted(sound, channels, ChannelChoice::kBothOrMix, bits, watch);
        };
    };
    const auto rounded = [](unsigned bits, Rounding rounding) {
        return [=](const Sound& sound, const PieceWatch& watch) {
            return Rounded(sound, bits, rounding, watch);
        };
    };
    return {{"8 to 16", 2, 8, to(2, 16)},
            {"16 to 8", 1, 16, to(1, 8)},
            {"16 to floats", 2, 16, to(2, 32)},
            {"floats to 16", 2, 32, to(2, 16)},
            {"mono", 2, 16, to(1, 16)},
            {"stereo", 1, 32, to(2, 32)},
            {"both", 2, 16, to(1, 32)},
            {"dithered", 2, 16, rounded(8, Rounding::kDithered)},
            {"dithered floats", 1, 32, rounded(16, Rounding::kDithered)},
            {"plain floats", 1, 32, rounded(8, Rounding::kPlain)},
            {"plain", 1, 16, rounded(8, Rounding::kPlain)}};
}

TEST(WatchedConversionTest, TellsItsSharesInTheirOrderAndStopsAtAnyOfThem) {
    for (const WatchedCase& one : AllConversions()) {
        SCOPED_TRACE(one.name);
        const Sound before = LongSound(one.channels, one.bits, kLongFrames);
        ToldShares told;
        const auto listen = [&](double done) { return told.push_back(done), Onward::kGoOn; };
        ASSERT_TRUE(one.make(before, listen));
        EXPECT_GE(told.size(), 4u) << "a piece holds no more than its number of samples";
        EXPECT_TRUE(std::ranges::is_sorted(told));
        EXPECT_EQ(told.front(), 0);
        EXPECT_GT(told.back(), 0.7);
        EXPECT_LT(told.back(), 1);
        for (std::size_t stopAt = 0; stopAt < told.size(); ++stopAt) {
            std::size_t words = 0;
            const auto stop = [&](double) {
                return words++ == stopAt ? Onward::kStop : Onward::kGoOn;
            };
            EXPECT_TRUE(one.make(before, stop).Ended().IsCancelled()) << stopAt;
            EXPECT_EQ(words, stopAt + 1) << "nothing goes on behind the end";
        }
    }
}

// Noise depends on the samples' numbers, so that parts of a sound cannot be compared with it.
TEST(WatchedConversionTest, PiecesGiveWhatPartsGiveAlone) {
    for (const WatchedCase& one : AllConversions()) {
        if (one.name.starts_with("dithered") || one.name == "floats to 16") continue;
        SCOPED_TRACE(one.name);
        const Sound before = LongSound(one.channels, one.bits, kLongFrames);
        const auto whole = one.make(before, Unwatched);
        ASSERT_TRUE(whole);
        EXPECT_EQ(whole->Markers().Count(), 1u);
        for (std::uint32_t start = 0; start < kLongFrames; start += 50000) {
            const std::uint32_t frames = std::min(50000u, kLongFrames - start);
            Sound part;
            ASSERT_TRUE(part.Create(one.channels, one.bits, 8000, frames));
            const auto from = before.Bytes().subspan(before.ByteOffset(start), part.GetDataSize());
            std::ranges::copy(from, part.MutableBytes().begin());
            const auto alone = one.make(part, Unwatched);
            ASSERT_TRUE(alone);
            ASSERT_TRUE(std::ranges::equal(
                alone->Bytes(),
                whole->Bytes().subspan(whole->ByteOffset(start), alone->GetDataSize())))
                << start;
        }
    }
}

// One sample of the last piece that does not fit gives all of them their noise.
TEST(WatchedConversionTest, NoiseIsForAllSamplesOrNone) {
    Sound floats = LongSound(1, 32, kLongFrames);
    const auto dithered = Converted(floats, 1, ChannelChoice::kBothOrMix, 16, Unwatched);
    SamplesOf<FloatSample>(floats.MutableBytes())[kLongFrames - 500] = 0.25f;
    const auto exact = Converted(floats, 1, ChannelChoice::kBothOrMix, 16, Unwatched);
    ASSERT_TRUE(dithered && exact);
    std::uint32_t noisy = 0;
    for (std::uint32_t i = 0; i < kLongFrames; ++i) {
        const int value = static_cast<int>(i * std::uint64_t{31} % 65536) - 32768;
        if (i != kLongFrames - 500) {
            ASSERT_EQ(exact->GetSample(0, i), value) << i;
        }
        noisy += i < kPieceSamples && dithered->GetSample(0, i) != value ? 1 : 0;
    }
    EXPECT_GT(noisy, kPieceSamples / 8);
}

}  // namespace
}  // namespace sonavel
