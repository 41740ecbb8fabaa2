// Copies of blocks so long that all cores share them.
#include "sound/sound_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace sonavel {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

// Every eight bytes say where they stand.
SoundBuffer Numbered(std::size_t bytes) {
    SoundBuffer block;
    EXPECT_TRUE(block.AllocBuffer(bytes));
    for (std::uint64_t at = 0; at + sizeof at <= bytes; at += sizeof at)
        std::memcpy(block.Data() + at, &at, sizeof at);
    return block;
}

TEST(SoundBufferTest, CopiesOfAnyLengthAreWholeAndBeginWhereTheyShould) {
    const SoundBuffer block = Numbered(41 * kMegabyte);
    struct Case {
        std::size_t start, length;
    };
    for (const auto& [start, length] : {Case{0, 0}, Case{5, 1}, Case{3, 32 * kMegabyte - 1},
                                        Case{0, 32 * kMegabyte}, Case{7, 40 * kMegabyte + 13}}) {
        SoundBuffer piece;
        ASSERT_TRUE(piece.CopyPiece(block, start, length));
        EXPECT_TRUE(
            std::ranges::equal(std::as_const(piece).Bytes(), block.Bytes().subspan(start, length)))
            << start << ' ' << length;
    }
    SoundBuffer all;
    ASSERT_TRUE(all.CopyFrom(block));
    EXPECT_TRUE(std::ranges::equal(std::as_const(all).Bytes(), block.Bytes()));
}

}  // namespace
}  // namespace sonavel
