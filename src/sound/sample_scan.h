// The extremes of runs of stored samples: the loops that drawing spends its time in.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <span>

#include "sound/sample_types.h"

namespace sonavel {

// The greatest and least stored value of each channel; both channels the same for a mono run.
template <typename Stored>
struct StoredExtremes {
    std::array<Stored, 2> maximum;
    std::array<Stored, 2> minimum;
};

namespace scan {

inline constexpr std::size_t kVectorBytes = 16;
// Two accumulators hide the latency of one.
inline constexpr std::size_t kUnrolled = 2;

template <typename Stored>
struct VectorOf {
    typedef Stored Type __attribute__((vector_size(kVectorBytes)));
};

template <typename Stored>
inline constexpr std::size_t kLanes = kVectorBytes / sizeof(Stored);

// Lanes of even number hold the left channel, those of odd number the right one.
template <typename Stored>
struct LaneExtremes {
    std::array<Stored, kLanes<Stored>> maximum;
    std::array<Stored, kLanes<Stored>> minimum;
};

// Scans the first `count` values, a multiple of kUnrolled vectors. Explicit vectors, because the
// compiler keeps arrays of accumulators in memory.
template <typename Stored>
LaneExtremes<Stored> ScanVectors(const Stored* values, std::size_t count) {
    using Vector = typename VectorOf<Stored>::Type;
    constexpr std::size_t kStep = kLanes<Stored> * kUnrolled;
    Vector maximum[kUnrolled], minimum[kUnrolled];
    for (std::size_t u = 0; u < kUnrolled; ++u) {
        maximum[u] = Vector{} + std::numeric_limits<Stored>::lowest();
        minimum[u] = Vector{} + std::numeric_limits<Stored>::max();
    }
    for (std::size_t i = 0; i < count; i += kStep) {
        for (std::size_t u = 0; u < kUnrolled; ++u) {
            Vector value;
            std::memcpy(&value, values + i + u * kLanes<Stored>, kVectorBytes);
            maximum[u] = value > maximum[u] ? value : maximum[u];
            minimum[u] = value < minimum[u] ? value : minimum[u];
        }
    }
    maximum[0] = maximum[1] > maximum[0] ? maximum[1] : maximum[0];
    minimum[0] = minimum[1] < minimum[0] ? minimum[1] : minimum[0];
    LaneExtremes<Stored> lanes;
    std::memcpy(lanes.maximum.data(), &maximum[0], kVectorBytes);
    std::memcpy(lanes.minimum.data(), &minimum[0], kVectorBytes);
    return lanes;
}

template <typename Stored>
StoredExtremes<Stored> FoldLanes(const LaneExtremes<Stored>& lanes) {
    StoredExtremes<Stored> result{{lanes.maximum[0], lanes.maximum[1]},
                                  {lanes.minimum[0], lanes.minimum[1]}};
    for (std::size_t i = 2; i < kLanes<Stored>; ++i) {
        result.maximum[i & 1] = std::max(result.maximum[i & 1], lanes.maximum[i]);
        result.minimum[i & 1] = std::min(result.minimum[i & 1], lanes.minimum[i]);
    }
    return result;
}

template <typename Stored>
void MergeChannels(StoredExtremes<Stored>& extremes) {
    extremes.maximum.fill(std::max(extremes.maximum[0], extremes.maximum[1]));
    extremes.minimum.fill(std::min(extremes.minimum[0], extremes.minimum[1]));
}

}  // namespace scan

// Scans stored values, interleaved when `channels` is 2 (then an even count). At least one frame.
template <typename Stored>
StoredExtremes<Stored> ScanStored(std::span<const Stored> samples, unsigned channels) {
    const Stored* values = samples.data();
    const std::size_t count = samples.size();
    constexpr std::size_t kStep = scan::kLanes<Stored> * scan::kUnrolled;
    const std::size_t vectorCount = count / kStep * kStep;
    StoredExtremes<Stored> result;
    result.maximum.fill(std::numeric_limits<Stored>::lowest());
    result.minimum.fill(std::numeric_limits<Stored>::max());
    if (vectorCount > 0) result = scan::FoldLanes(scan::ScanVectors(values, vectorCount));
    for (std::size_t i = vectorCount; i < count; ++i) {
        result.maximum[i & 1] = std::max(result.maximum[i & 1], values[i]);
        result.minimum[i & 1] = std::min(result.minimum[i & 1], values[i]);
    }
    if (channels != 2) scan::MergeChannels(result);
    return result;
}

// A range of levels, which for whole numbers are the values that GetSample gives.
struct SampleExtremes {
    std::int32_t maximum = 0;
    std::int32_t minimum = 0;

    bool operator==(const SampleExtremes&) const = default;
};

// The levels that the stored extremes of a channel stand for; bytes count down while the levels
// that they stand for count up.
template <class Type>
SampleExtremes LevelsOf(const StoredExtremes<typename Type::Stored>& stored, std::size_t channel) {
    const auto [least, greatest] = std::minmax(
        {Type::LevelOf(stored.minimum[channel]), Type::LevelOf(stored.maximum[channel])});
    return {greatest, least};
}

}  // namespace sonavel
