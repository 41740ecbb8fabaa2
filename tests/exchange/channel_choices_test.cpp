#include "exchange/channel_choices.h"

#include <gmock/gmock.h>

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using testing::FloatNear;
using enum Speaker;

const std::vector<Speaker> kSurround = {kFrontLeft,    kFrontRight, kFrontCentre,
                                        kLowFrequency, kSideLeft,   kSideRight};

std::vector<std::string> TextsOf(const std::vector<ChannelChoiceRow>& rows) {
    std::vector<std::string> texts;
    for (const ChannelChoiceRow& row : rows) texts.push_back(row.text);
    return texts;
}

TEST(ChannelChoices, PairsByTheirNamesNeighboursFirst) {
    EXPECT_THAT(TextsOf(ChannelChoices(std::vector{kFrontLeft, kFrontRight, kUnknown}, 3)),
                ElementsAre("Mix down to stereo", "Front left and Front right",
                            "Front left and Channel 3", "Front right and Channel 3"));
    EXPECT_THAT(
        TextsOf(ChannelChoices({}, 4)),
        ElementsAre("Mix down to stereo", "Channel 1 and Channel 2", "Channel 3 and Channel 4",
                    "Channel 1 and Channel 3", "Channel 1 and Channel 4", "Channel 2 and Channel 3",
                    "Channel 2 and Channel 4"));
    EXPECT_EQ(ChannelChoices(kSurround, 6).size(), 16u);
    EXPECT_EQ(ChannelChoices({}, 1024).size(), kMostChannelChoices);
}

TEST(ChannelChoices, APairIsAsItWas) {
    const std::vector<float> frames = {1, 2, 3, 4, 5, 6};
    std::vector<float> pair(4);
    ApplyMatrix(ChannelChoices({}, 3)[3].matrix, frames, pair);
    EXPECT_THAT(pair, ElementsAre(2, 3, 5, 6));
}

TEST(ChannelChoices, MixingDownKeepsSidesAndNeverLeavesTheRange) {
    std::vector<float> out(2);
    const auto mixed = [&](std::vector<float> frame) {
        ApplyMatrix(MixToStereo(kSurround, 6), frame, out);
        return out;
    };
    constexpr float kSum = 1 + 2 * 0.70710678f;
    EXPECT_THAT(mixed({1, 1, 1, 1, 1, 1}), ElementsAre(FloatNear(1, 1e-6f), FloatNear(1, 1e-6f)));
    EXPECT_THAT(mixed({1, 0, 0, 0, 0, 0}), ElementsAre(FloatNear(1 / kSum, 1e-6f), 0));
    EXPECT_THAT(mixed({0, 0, 0, 1, 0, 0}), ElementsAre(0, 0));
    EXPECT_THAT(mixed({0, 0, 0, 0, 0, 1}), ElementsAre(0, FloatNear(0.70710678f / kSum, 1e-6f)));
    const std::vector<float> centre = mixed({0, 0, 1, 0, 0, 0});
    EXPECT_EQ(centre[0], centre[1]);
    std::vector<float> mono(1);
    ApplyMatrix(MixToMono(kSurround, 6), std::vector<float>{1, 0, 0, 0, 0, 0}, mono);
    EXPECT_THAT(mono, ElementsAre(FloatNear(0.5f / kSum, 1e-6f)));
    // Without names channels go left and right in turn.
    ApplyMatrix(MixToStereo({}, 4), std::vector<float>{1, 0, 0.5f, 0}, out);
    EXPECT_THAT(out, ElementsAre(0.75f, 0));
}

}  // namespace
}  // namespace sonavel
