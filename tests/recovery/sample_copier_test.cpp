#include "recovery/sample_copier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace sonavel::recovery {
namespace {

TEST(SampleCopierTest, WhatNobodyWaitsForEndsWithTheCopier) {
    const std::vector<std::uint8_t> owned(3u << 20, 7);
    const auto lent = LentSamples::Of(owned);
    {
        SampleCopier copier;
        for (int i = 0; i < 50; ++i) copier.Add(LentSamples::Of(owned));
        copier.Add(lent);
    }
    EXPECT_TRUE(std::ranges::equal(lent->Bytes(), owned));
}

}  // namespace
}  // namespace sonavel::recovery
