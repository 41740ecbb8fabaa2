#include "sound/frame_range.h"

#include <gtest/gtest.h>

namespace sonavel {
namespace {

TEST(FrameRangeTest, WorkTakesTheSelectionOrTheWholeSoundAndStaysInside) {
    EXPECT_EQ(RangeToWorkOn(5, 5, 100), (FrameRange{0, 100}));
    EXPECT_EQ(RangeToWorkOn(10, 30, 100), (FrameRange{10, 30}));
    EXPECT_EQ(RangeToWorkOn(30, 10, 100), (FrameRange{10, 30}));
    EXPECT_EQ(RangeToWorkOn(90, 300, 100), (FrameRange{90, 100}));
    EXPECT_TRUE(RangeToWorkOn(200, 300, 100).IsEmpty());
}

}  // namespace
}  // namespace sonavel
