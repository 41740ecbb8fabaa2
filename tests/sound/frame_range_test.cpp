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

TEST(FrameRangeTest, HoldsItsStartAndNotItsEnd) {
    constexpr FrameRange kRange{10, 30};
    for (const auto& [frame, inside] :
         {std::pair{9u, false}, {10u, true}, {29u, true}, {30u, false}})
        EXPECT_EQ(kRange.Contains(frame), inside) << frame;
}

}  // namespace
}  // namespace sonavel
