#include "sound/sample_io.h"

#include <gtest/gtest.h>

#include <vector>

namespace sonavel {
namespace {

constexpr std::uint32_t kFrames = 77;  // no multiple of any vector

float Value(std::uint32_t frame, unsigned channel) {
    return static_cast<float>((frame * 37 + channel * 101) % 256) - 127;
}

class SampleIoTest : public ::testing::TestWithParam<unsigned> {
  protected:
    void SetUp() override {
        ASSERT_TRUE(sound.Create(2, GetParam(), 44100, kFrames));
        std::vector<float> left, right;
        for (std::uint32_t frame = 0; frame < kFrames; ++frame) {
            left.push_back(Value(frame, 0));
            right.push_back(Value(frame, 1));
        }
        WriteBothTruncated(sound, 0, left, right);
    }

    std::vector<float> Channel(unsigned channel, EightBitReading reading) const {
        std::vector<float> values(kFrames + 10, -1);
        ReadChannel(sound, channel, 3, values, reading);
        return values;
    }

    Sound sound;
};

TEST_P(SampleIoTest, BothChannelsAreThoseThatAreReadAlone) {
    for (const auto reading : {EightBitReading::kFull, EightBitReading::kSignedByte}) {
        std::vector<float> left(kFrames + 10, -1), right(kFrames + 10, -1);
        ReadBothChannels(sound, 3, left, right, reading);
        EXPECT_EQ(left, Channel(0, reading));
        EXPECT_EQ(right, Channel(1, reading));
        EXPECT_EQ(left[1], Value(4, 0));
        EXPECT_EQ(right[1], Value(4, 1));
        EXPECT_EQ(right.back(), 0);
    }
}

TEST_P(SampleIoTest, WritingBothLeavesWhatLiesBesideThem) {
    const std::vector<float> left{5.9f, -6.9f, 7}, right{-8.5f, 9.5f, 10};
    WriteBothTruncated(sound, 20, std::span(left).first(2), std::span(right).first(2));
    WriteBothTruncated(sound, kFrames - 1, left, right);
    const auto expect = [&](std::uint32_t frame, float wantedLeft, float wantedRight) {
        EXPECT_EQ(Channel(0, EightBitReading::kFull)[frame - 3], wantedLeft) << frame;
        EXPECT_EQ(Channel(1, EightBitReading::kFull)[frame - 3], wantedRight) << frame;
    };
    expect(19, Value(19, 0), Value(19, 1));
    if (GetParam() < 32) {
        expect(20, 5, -8);
        expect(21, -6, 9);
        expect(kFrames - 1, 5, -8);
    }
    expect(22, Value(22, 0), Value(22, 1));
}

INSTANTIATE_TEST_SUITE_P(Widths, SampleIoTest, ::testing::Values(8u, 16u, 32u));

}  // namespace
}  // namespace sonavel
