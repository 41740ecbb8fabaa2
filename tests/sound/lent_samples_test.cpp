#include "sound/lent_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <random>
#include <thread>
#include <vector>

namespace sonavel {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kPiece = std::size_t{256} << 10;

Bytes Numbered(std::size_t bytes, unsigned seed = 31) {
    Bytes all(bytes);
    for (std::size_t i = 0; i < bytes; ++i)
        all[i] = static_cast<std::uint8_t>(i * seed ^ (i >> 11));
    return all;
}

SoundBuffer BlockOf(const Bytes& bytes) {
    SoundBuffer block;
    EXPECT_TRUE(block.AllocBuffer(bytes.size()));
    if (!bytes.empty()) std::memcpy(block.Data(), bytes.data(), bytes.size());
    return block;
}

// Whoever settles, and however many at once: the copy is whole before anybody goes on.
TEST(LentSamplesTest, IsWholeForAllWhoSettleIt) {
    for (const std::size_t bytes :
         {std::size_t{0}, std::size_t{1}, kPiece, kPiece + 1, 9 * kPiece}) {
        SCOPED_TRACE(bytes);
        const Bytes expected = Numbered(bytes);
        Bytes owned = expected;
        const auto lent = LentSamples::Of(owned);
        ASSERT_TRUE(lent);
        EXPECT_EQ(lent->Size(), bytes);
        std::thread other([&] { EXPECT_TRUE(std::ranges::equal(lent->Bytes(), expected)); });
        lent->Settle();
        std::ranges::fill(owned, 0xFF);
        EXPECT_TRUE(std::ranges::equal(lent->Bytes(), expected));
        other.join();
    }
}

// An edit copies what it destroys and no more: what was not copied shows when the block is spoiled
// behind the loan's back.
TEST(LentSamplesTest, ChangesCopyOnlyWhatTheyDestroy) {
    constexpr std::size_t kBytes = 40 * kPiece, kMiddle = 20 * kPiece + 5, kSome = 1000;
    const auto insert = [](SoundBuffer& block, SoundBuffer&) {
        EXPECT_TRUE(block.ReAllocBuffer(kBytes + kSome));
        block.MoveWithin(kMiddle, kBytes - kMiddle, kMiddle + kSome);
    };
    const auto remove = [](SoundBuffer& block, SoundBuffer&) {
        block.MoveWithin(kMiddle + kSome, kBytes - kMiddle - kSome, kMiddle);
        EXPECT_TRUE(block.ReAllocBuffer(kBytes - kSome));
    };
    // As Undo does, of an edit that had made the sound shorter or longer.
    const auto exchange = [](SoundBuffer& block, SoundBuffer& other) {
        EXPECT_TRUE(block.ExchangePiece(kMiddle, 10 * kPiece, other));
    };
    const struct {
        const char* name;
        std::function<void(SoundBuffer& block, SoundBuffer& other)> change;
        std::size_t otherBytes, mostPieces;
    } cases[] = {
        {"overwriting", [](auto& block, auto&) { block.SettleLent(kMiddle, kSome); }, 0, 1},
        {"growing", [](auto& block, auto&) { EXPECT_TRUE(block.ReAllocBuffer(9 * kBytes)); }, 0, 0},
        {"inserting", insert, 0, 1},
        {"removing", remove, 0, 1},
        {"cutting the end off",
         [](auto& block, auto&) { EXPECT_TRUE(block.ReAllocBuffer(kBytes - kSome)); }, 0, 1},
        {"exchanging as many", exchange, 10 * kPiece, 2},
        {"exchanging fewer", exchange, 4 * kPiece, 3},
        {"exchanging more", exchange, 20 * kPiece, 2},
        {"exchanging all",
         [](auto& block, auto& other) { EXPECT_TRUE(block.ExchangePiece(0, kBytes, other)); }, 7,
         0},
    };
    const Bytes expected = Numbered(kBytes), spoiled(kBytes, 0xEE);
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        SoundBuffer block = BlockOf(expected), other = BlockOf(Bytes(one.otherBytes, 0xDD));
        const auto lent = block.Lend(0, kBytes);
        ASSERT_TRUE(lent);
        one.change(block, other);
        std::ranges::fill(block.Bytes(), 0xEE);
        std::ranges::fill(other.Bytes(), 0xEE);
        const auto copy = lent->Bytes();
        std::size_t copied = 0;
        for (std::size_t at = 0; at < kBytes; at += kPiece) {
            const auto isAsIn = [&](const Bytes& wanted) {
                return std::memcmp(copy.data() + at, wanted.data() + at, kPiece) == 0;
            };
            const bool isAsLent = isAsIn(expected);
            copied += isAsLent;
            EXPECT_TRUE(isAsLent || isAsIn(spoiled));
        }
        EXPECT_EQ(copied, one.mostPieces);
    }
}

TEST(LentSamplesTest, WhatWasCopiedElsewhereIsReadThere) {
    const Bytes expected = Numbered(8 * kPiece);
    SoundBuffer block = BlockOf(expected), kept;
    const auto lent = block.Lend(0, expected.size());
    ASSERT_TRUE(kept.CopyPiece(block, 0, expected.size()));
    // Nothing is left here to be waited for.
    block.SettleLent(0, expected.size());
    std::ranges::fill(block.Bytes(), 0xEE);
    std::swap(block, kept);
    kept.FreeBuffer();
    block.FreeBuffer();
    EXPECT_TRUE(std::ranges::equal(lent->Bytes(), expected));
}

// Random changes of a block, each as an edit makes it, and what has been lent meanwhile.
class ChangingBlock {
  public:
    explicit ChangingBlock(unsigned seed) : random_(seed), block_(BlockOf(Numbered(5 * kPiece))) {}

    void Change() {
        const std::size_t size = block_.Size();
        const std::size_t start = Number(size), length = Number(size - start);
        switch (Number(7)) {
            case 0:
                return Overwrite(start, length);
            case 1:
                return Insert(start, 1 + Number(kPiece));
            case 2:
                return Remove(start, std::min(length, size / 4));
            case 3:
                return Keep(start, length);
            case 4:
                return Exchange(start, length);
            case 5:
                return kept_[Number(kept_.size())].FreeBuffer();
            default:
                return Lend(start, length);
        }
    }
    void ExpectAllAsLent() const {
        for (const Lent& one : lent_)
            EXPECT_TRUE(std::ranges::equal(one.lent->Bytes(), one.expected));
    }
    std::vector<std::shared_ptr<LentSamples>> AllLent() const {
        std::vector<std::shared_ptr<LentSamples>> all;
        for (const Lent& one : lent_) all.push_back(one.lent);
        return all;
    }

  private:
    struct Lent {
        std::shared_ptr<LentSamples> lent;
        Bytes expected;
    };

    std::size_t Number(std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(
            0, std::max<std::size_t>(below, 1) - 1)(random_);
    }
    void Fill(std::size_t start, std::size_t length) {
        const Bytes fresh = Numbered(length, 1 + static_cast<unsigned>(Number(200)));
        std::ranges::copy(fresh, block_.Data() + start);
    }
    void Overwrite(std::size_t start, std::size_t length) {
        block_.SettleLent(start, length);
        Fill(start, length);
    }
    void Insert(std::size_t start, std::size_t length) {
        const std::size_t size = block_.Size();
        ASSERT_TRUE(block_.ReAllocBuffer(size + length));
        block_.MoveWithin(start, size - start, start + length);
        Fill(start, length);
    }
    void Remove(std::size_t start, std::size_t length) {
        block_.MoveWithin(start + length, block_.Size() - start - length, start);
        ASSERT_TRUE(block_.ReAllocBuffer(block_.Size() - length));
    }
    // As the history does before an edit overwrites.
    void Keep(std::size_t start, std::size_t length) {
        ASSERT_TRUE(kept_[Number(kept_.size())].CopyPiece(block_, start, length));
        Overwrite(start, length);
    }
    void Exchange(std::size_t start, std::size_t length) {
        ASSERT_TRUE(block_.ExchangePiece(start, length, kept_[Number(kept_.size())]));
        if (block_.Size() < kPiece) Insert(0, 3 * kPiece);
    }
    void Lend(std::size_t start, std::size_t length) {
        const auto bytes = std::as_const(block_).Bytes().subspan(start, length);
        lent_.push_back({block_.Lend(start, length), {bytes.begin(), bytes.end()}});
        ASSERT_TRUE(lent_.back().lent);
    }

    std::mt19937 random_;
    SoundBuffer block_;
    std::array<SoundBuffer, 3> kept_;
    std::vector<Lent> lent_;
};

TEST(LentSamplesTest, RandomChangesLeaveWhatWasLent) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(seed);
        ChangingBlock block(seed);
        for (int i = 0; i < 40; ++i) block.Change();
        block.ExpectAllAsLent();
    }
}

TEST(LentSamplesTest, RandomChangesDoNotDisturbThoseWhoCopyMeanwhile) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        SCOPED_TRACE(seed);
        ChangingBlock block(seed);
        for (int i = 0; i < 6; ++i) block.Change();
        const auto all = block.AllLent();
        std::thread copier([&all] {
            for (const auto& lent : all) lent->Settle();
        });
        for (int i = 0; i < 10; ++i) block.Change();
        copier.join();
        block.ExpectAllAsLent();
    }
}

}  // namespace
}  // namespace sonavel
