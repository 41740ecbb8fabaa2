#include "sound/decibels.h"

#include <gtest/gtest.h>

namespace sonavel {
namespace {

TEST(LevelInDecibelsTest, SilenceHasNone) {
    EXPECT_NEAR(LevelInDecibels(-16384, 32768).value(), -6.0206, 1e-4);
    EXPECT_EQ(LevelInDecibels(0, 32768), std::nullopt);
    EXPECT_EQ(LevelInDecibels(5, 0), std::nullopt);
}

}  // namespace
}  // namespace sonavel
