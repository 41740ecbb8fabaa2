#include "recovery/lent_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace sonavel::recovery {
namespace {

std::vector<std::uint8_t> Numbered(std::size_t bytes) {
    std::vector<std::uint8_t> all(bytes);
    for (std::size_t i = 0; i < bytes; ++i) all[i] = static_cast<std::uint8_t>(i * 31 ^ (i >> 11));
    return all;
}

// Whoever settles, and however many at once: the copy is whole before anybody goes on.
TEST(LentSamplesTest, IsWholeForAllWhoSettleIt) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    for (const std::size_t bytes :
         {std::size_t{0}, std::size_t{1}, kPiece, kPiece + 1, 9 * kPiece}) {
        SCOPED_TRACE(bytes);
        const std::vector<std::uint8_t> expected = Numbered(bytes);
        std::vector<std::uint8_t> owned = expected;
        const auto lent = LentSamples::Of(owned);
        ASSERT_TRUE(lent);
        EXPECT_EQ(lent->Size(), bytes);
        SampleCopier copier;
        copier.Add(lent);
        std::thread other([&] { EXPECT_TRUE(std::ranges::equal(lent->Bytes(), expected)); });
        lent->Settle();
        std::ranges::fill(owned, 0xFF);
        EXPECT_TRUE(std::ranges::equal(lent->Bytes(), expected));
        other.join();
    }
}

TEST(LentSamplesTest, WhatNobodyWaitsForEndsWithTheCopier) {
    const std::vector<std::uint8_t> owned = Numbered(3u << 20);
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
