// Spreads work over the cores. What is computed does not depend on how many threads there are.
#pragma once

#include <cstddef>
#include <functional>

namespace sonavel {

// The cores of the machine, or what the environment's SONAVEL_THREADS says, 1 to 64.
unsigned ThreadsToUse();

enum class Onward { kGoOn, kStop };

// Units of work, numbered from 0.
struct UnitsOfWork {
    // Every unit may be computed at any time, beside any other.
    static constexpr std::size_t kEachAlone = 0;

    std::size_t count = 0;
    // Else unit u follows unit u - lanes, and units of different lanes may be computed beside each
    // other; 1 is one unit after the other.
    std::size_t lanes = kEachAlone;
    // Computes a unit, on any thread; throws std::bad_alloc alone.
    std::function<void(std::size_t unit)> compute;
    // Called for every unit on the calling thread, in their order and when the units before it are
    // done: progress is shown and a cancel noticed here.
    std::function<Onward(std::size_t unit)> before;
};

enum class WorkEnd { kFinished, kStopped, kOutOfMemory };

struct WorkDone {
    WorkEnd end = WorkEnd::kFinished;
    // How many units count: all, or those before the one at which `before` stopped or the memory
    // could not be had. Units behind it may have been computed too, and are not to be used.
    std::size_t units = 0;

    bool operator==(const WorkDone&) const = default;
};

// Computes all units on up to `threads` threads, the calling one among them; on fewer where no more
// can be started.
WorkDone ComputeUnits(const UnitsOfWork& work, unsigned threads);

// Computes parts that stand alone, as ComputeUnits() with all threads; without progress or cancel.
// A single part starts no thread.
WorkEnd ComputeParts(std::size_t count, std::function<void(std::size_t part)> compute);

}  // namespace sonavel
