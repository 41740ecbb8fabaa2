// Where a smoothly moving source is heard from, every 128 frames.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "spatial/distance_law.h"
#include "spatial/exact_path.h"
#include "spatial/response_bank.h"

namespace sonavel {

inline constexpr std::uint32_t kHopFrames = 128;
inline constexpr double kSpeedOfSound = 343;  // metres a second

struct HeardPlace {
    BankBlend blend;
    double gain = 1;
    // The frame of the range that reaches each ear there, between frames too.
    std::array<double, 2> readAt{};

    bool SoundsLike(const HeardPlace& other) const {
        return blend == other.blend && gain == other.gain;
    }
};

struct Flight {
    const ExactPath& path;
    std::uint32_t frames = 0;  // of the range, in which the path is run through
    double rate = 44100;       // frames a second
    // With a length for a scene's unit, the changing distance bends the pitch: what is heard left
    // the source as much earlier as the way takes it, counted from the path's beginning on. A
    // source faster than sound is heard at four times its speed at most, and never backwards.
    std::optional<double> metresPerUnit;
    DistanceLaw law{};
};

// At the frames 0, 128, 256 ... of the range, `count` of them. Notes in the bank what they need.
std::vector<HeardPlace> HeardPlaces(ResponseBank& bank, const Flight& flight, std::size_t count);

}  // namespace sonavel
