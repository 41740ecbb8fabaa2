// A listener's responses in the form that moves without steps: spectra and arrival times apart, and
// the triangles between their directions.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/outcome.h"
#include "platform/piece_watch.h"
#include "spatial/analysis_fft.h"
#include "spatial/measured_responses.h"
#include "spatial/sphere_mesh.h"

namespace sonavel {

enum class Ear { kLeft, kRight };
inline constexpr std::array<Ear, 2> kBothEars = {Ear::kLeft, Ear::kRight};
// Of each ear ResponseSet::Taps() values.
using EarTaps = std::array<std::vector<float>, 2>;

// A place in a triangle of measured directions: how many eighths of each corner. Corners of no
// part are 0, and the others rise.
struct FinePlace {
    std::array<std::uint32_t, 3> corners{};
    std::array<std::uint8_t, 3> eighths{};

    auto operator<=>(const FinePlace&) const = default;  // NOLINT(modernize-use-nullptr)
};

struct FineBlend {
    std::array<FinePlace, 3> places{};
    std::array<double, 3> shares{};
};

// The small triangle, an eighth as wide, in which a direction lies. Between its corners responses
// are so alike that they may be added up; between measured directions their notches lie too far
// apart, and whole octaves would come out up to 4 dB too low.
FineBlend Refine(const SphereBlend& blend);

inline constexpr double kLowestResponseRate = 4000;
inline constexpr double kHighestResponseRate = 384000;

class ResponseSet {
  public:
    // At `rate` frames a second, to which the responses are resampled; other rates than those above
    // fail. Directions that lie closer
    // together than a tenth of a degree count once. Around a pole that has no direction within 30
    // degrees the mean of the ring next to it stands for what lies there. Fails without memory and
    // when the directions span no part of the sphere; cancelled when the watch stops it.
    static Result<std::shared_ptr<const ResponseSet>> Make(const MeasuredResponses& measured,
                                                           double rate,
                                                           const PieceWatch& watch = Unwatched);

    double Rate() const { return rate_; }
    // Of every response: a multiple of 4.
    std::size_t Taps() const { return taps_; }
    const SphereMesh& Mesh() const { return mesh_; }

    // When an ear hears it, in frames.
    double DelayAt(const SphereBlend& blend, Ear ear) const;
    // The minimum-phase responses whose power is the mean of their corners'.
    EarTaps TapsAt(const FinePlace& place) const;

  private:
    friend class ResponseSetMaker;
    using EarNumbers = std::array<std::uint32_t, 2>;  // of the responses of a direction

    ResponseSet(double rate, std::size_t transformSize, std::span<const Vector3> directions,
                std::vector<EarNumbers> ears);
    std::uint32_t NumberOf(std::uint32_t corner, Ear ear) const {
        return ears_[corner][static_cast<std::size_t>(ear)];
    }
    std::vector<double> PowerAt(const FinePlace& place, Ear ear) const;

    double rate_;
    AnalysisFft fft_;
    std::size_t taps_ = 0;
    std::vector<std::vector<float>> powers_;  // of each response
    std::vector<double> delays_;
    std::vector<EarNumbers> ears_;  // of each direction
    SphereMesh mesh_;
};

// How far the place farthest from all measured directions is from the nearest of them, in degrees.
double GreatestGap(const MeasuredResponses& measured);

// A unit vector; azimuth and elevation in degrees.
Vector3 VectorOf(double azimuth, double elevation);

}  // namespace sonavel
