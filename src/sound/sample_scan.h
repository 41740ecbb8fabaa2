// The extremes of runs of stored samples: the loops that drawing spends its time in.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace sonavel {

// The greatest and least stored value of each channel; both channels the same for a mono run.
template <typename Stored>
struct StoredExtremes {
    std::array<Stored, 2> maximum;
    std::array<Stored, 2> minimum;
};

// Scans `count` stored values, interleaved when `channels` is 2 (then an even count). At least one
// frame.
StoredExtremes<std::uint8_t> ScanStored(const std::uint8_t* values, std::size_t count,
                                        unsigned channels);
StoredExtremes<std::int16_t> ScanStored(const std::int16_t* values, std::size_t count,
                                        unsigned channels);

// The value that a stored sample stands for: bytes are read as 128 - byte.
inline std::int32_t SampleValue(std::uint8_t stored) {
    return 128 - stored;
}
inline std::int32_t SampleValue(std::int16_t stored) {
    return stored;
}

}  // namespace sonavel
