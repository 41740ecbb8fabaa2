// Where a smoothly moving source is heard from, every 128 frames.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
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
    // How many frames before they are heard each ear's frames of the range are, between frames too.
    std::array<double, 2> delays{};

    bool SoundsLike(const HeardPlace& other) const {
        return blend == other.blend && gain == other.gain;
    }
};

struct Flight {
    ExactPath path;
    std::uint32_t frames = 0;  // of the range, in which the path is run through
    double rate = 44100;       // frames a second
    // With a length for a scene's unit, the changing distance bends the pitch: what is heard left
    // the source as much earlier as the way takes it, counted from the path's beginning on. A
    // source faster than sound is heard at four times its speed at most, and never backwards.
    std::optional<double> metresPerUnit{};
    DistanceLaw law{};

    // Where it is, `frame` frames after the range's beginning.
    Vector3 PlaceAt(double frame) const;
};

// The places at the frames 0, 128, 256 ... of the range. They are found when they are asked for,
// some at once, with what the bank has to compute for them; by several threads at once.
class HeardPlaces {
  public:
    // `count` of them, at least one. Throws std::bad_alloc.
    HeardPlaces(std::shared_ptr<ResponseBank> bank, Flight flight, std::size_t count);

    // place < count. Throws std::bad_alloc.
    const HeardPlace& At(std::size_t place) const;

  private:
    struct Stretch {
        std::once_flag found;
        std::vector<HeardPlace> places;
    };
    std::vector<HeardPlace> FindStretch(std::size_t number) const;
    double SentFor(std::size_t place) const;
    // Not rounded yet, and without the way from the source.
    HeardPlace FindExact(std::size_t place, std::size_t& nearby) const;

    std::shared_ptr<ResponseBank> bank_;
    Flight flight_;
    std::size_t count_;         // 1 for a source at rest, whose places are all alike
    std::vector<double> sent_;  // the frames at which it sends what is heard; empty: at that time
    mutable std::vector<Stretch> stretches_;
};

}  // namespace sonavel
