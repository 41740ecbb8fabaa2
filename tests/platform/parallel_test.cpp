// Work spread over threads: every unit once, in an order that its lanes allow, and the same answers
// whatever the number of threads.
#include "platform/parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <thread>
#include <vector>

#include "support/address_space_limit.h"

namespace sonavel::testing {
namespace {

constexpr std::size_t kUnits = 997;

TEST(ParallelTest, EveryUnitIsComputedOnceAndAnnouncedInOrder) {
    for (const unsigned threads : {1u, 2u, 3u, 16u})
        for (const std::size_t lanes :
             {UnitsOfWork::kEachAlone, std::size_t{1}, std::size_t{2}, std::size_t{3}}) {
            std::vector<std::atomic<int>> computed(kUnits);
            std::vector<std::size_t> announced;
            std::vector<bool> doneWhenAnnounced;
            const auto before = [&](std::size_t unit) {
                announced.push_back(unit);
                doneWhenAnnounced.push_back(unit == 0 || computed[unit - 1] == 1);
                return Onward::kGoOn;
            };
            const auto compute = [&](std::size_t unit) { ++computed[unit]; };
            EXPECT_EQ(ComputeUnits({kUnits, lanes, compute, before}, threads),
                      (WorkDone{WorkEnd::kFinished, kUnits}));
            for (const auto& times : computed) ASSERT_EQ(times, 1);
            ASSERT_EQ(announced.size(), kUnits);
            for (std::size_t i = 0; i < kUnits; ++i) ASSERT_EQ(announced[i], i);
            EXPECT_EQ(doneWhenAnnounced, std::vector<bool>(kUnits, true));
        }
}

TEST(ParallelTest, ALaneGoesOnFromItsUnitBefore) {
    for (const unsigned threads : {1u, 2u, 3u, 4u}) {
        std::vector<std::vector<std::size_t>> lanes(3);
        ComputeUnits({kUnits, 3, [&](std::size_t unit) { lanes[unit % 3].push_back(unit); },
                      [](std::size_t) { return Onward::kGoOn; }},
                     threads);
        for (std::size_t lane = 0; lane < 3; ++lane)
            for (std::size_t i = 0; i < lanes[lane].size(); ++i)
                ASSERT_EQ(lanes[lane][i], lane + 3 * i) << threads;
    }
}

TEST(ParallelTest, AStopTellsHowManyUnitsCount) {
    for (const unsigned threads : {1u, 4u})
        for (const std::size_t lanes : {UnitsOfWork::kEachAlone, std::size_t{2}}) {
            std::vector<std::atomic<int>> computed(kUnits);
            const auto before = [](std::size_t unit) {
                return unit == 10 ? Onward::kStop : Onward::kGoOn;
            };
            EXPECT_EQ(
                ComputeUnits({kUnits, lanes, [&](std::size_t unit) { ++computed[unit]; }, before},
                             threads),
                (WorkDone{WorkEnd::kStopped, 10}));
            for (std::size_t unit = 0; unit < 10; ++unit) EXPECT_EQ(computed[unit], 1);
            // One thread does not run ahead.
            EXPECT_LE(computed[10], threads == 1 ? 0 : 1);
        }
}

TEST(ParallelTest, AUnitWithoutMemoryEndsTheWork) {
    for (const unsigned threads : {1u, 2u, 4u})
        for (const std::size_t lanes : {UnitsOfWork::kEachAlone, std::size_t{1}, std::size_t{3}}) {
            const auto compute = [](std::size_t unit) {
                if (unit >= 10) throw std::bad_alloc();
            };
            const auto before = [](std::size_t) { return Onward::kGoOn; };
            const WorkDone done = ComputeUnits({kUnits, lanes, compute, before}, threads);
            EXPECT_EQ(done.end, WorkEnd::kOutOfMemory) << threads << " " << lanes;
            EXPECT_LE(done.units, 10u);
            EXPECT_EQ(ComputeParts(kUnits, compute), WorkEnd::kOutOfMemory);
        }
}

#ifndef __SANITIZE_ADDRESS__
TEST(ParallelTest, WhereThreadsCannotBeStartedFewerDoTheWork) {
    for (const std::size_t lanes : {UnitsOfWork::kEachAlone, std::size_t{60}}) {
        std::vector<std::atomic<int>> computed(kUnits);
        const AddressSpaceLimit noRoomForStacks(1 << 20);
        ComputeUnits({kUnits, lanes, [&](std::size_t unit) { ++computed[unit]; },
                      [](std::size_t) { return Onward::kGoOn; }},
                     60);
        for (const auto& times : computed) ASSERT_EQ(times, 1);
    }
}
#endif

TEST(ParallelTest, UnitsAreComputedBesideEachOther) {
    // Each unit waits for the other: one thread alone would wait forever.
    std::atomic<int> begun = 0;
    const auto compute = [&](std::size_t) {
        ++begun;
        while (begun < 2) std::this_thread::yield();
    };
    for (const std::size_t lanes : {UnitsOfWork::kEachAlone, std::size_t{2}}) {
        begun = 0;
        ComputeUnits({2, lanes, compute, [](std::size_t) { return Onward::kGoOn; }}, 2);
        EXPECT_EQ(begun, 2);
    }
}

TEST(ParallelTest, TheEnvironmentSaysHowManyThreads) {
    const std::pair<const char*, unsigned> cases[] = {{"1", 1}, {"3", 3}, {"1000000", 64}};
    for (const auto& [said, wanted] : cases) {
        setenv("SONAVEL_THREADS", said, 1);
        EXPECT_EQ(ThreadsToUse(), wanted);
    }
    for (const char* nothing : {"", "0", "-2", "many"}) {
        setenv("SONAVEL_THREADS", nothing, 1);
        EXPECT_GE(ThreadsToUse(), 1u);
        EXPECT_LE(ThreadsToUse(), 64u);
    }
    unsetenv("SONAVEL_THREADS");
}

}  // namespace
}  // namespace sonavel::testing
