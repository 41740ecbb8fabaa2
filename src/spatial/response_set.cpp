#include "spatial/response_set.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>
#include <utility>

#include "spatial/minimum_phase.h"

namespace sonavel {
namespace {

constexpr int kParts = 8;
constexpr std::size_t kFadedTaps = 16;

FinePlace PlaceOf(const SphereBlend& blend, std::array<int, 3> eighths) {
    std::array<std::pair<std::uint32_t, std::uint8_t>, 3> parts{};
    for (int i = 0; i < 3; ++i)
        if (eighths[i] > 0) parts[i] = {blend.corners[i], static_cast<std::uint8_t>(eighths[i])};
    std::sort(parts.begin(), parts.end(), [](const auto& a, const auto& b) {
        return std::pair(a.second == 0, a.first) < std::pair(b.second == 0, b.first);
    });
    FinePlace place;
    for (int i = 0; i < 3; ++i) std::tie(place.corners[i], place.eighths[i]) = parts[i];
    return place;
}

}  // namespace

FineBlend Refine(const SphereBlend& blend) {
    std::array<int, 3> whole{};
    std::array<double, 3> rest{};
    for (int i = 0; i < 3; ++i) {
        const double eighths = std::clamp(kParts * blend.shares[i], 0.0, double{kParts});
        whole[i] = static_cast<int>(eighths);
        rest[i] = eighths - whole[i];
    }
    // How many eighths the whole ones leave to be given: 1 in a small triangle that points where
    // the large one does, 2 in one turned over. All or none is the rounding of a corner.
    const int left = kParts - (whole[0] + whole[1] + whole[2]);
    FineBlend fine;
    if (left == 0 || left == 3) {
        for (int& eighths : whole) eighths += left / 3;
        fine.places.fill(PlaceOf(blend, whole));
        fine.shares = {1, 0, 0};
        return fine;
    }
    for (int i = 0; i < 3; ++i) {
        std::array<int, 3> eighths = whole;
        for (int k = 0; k < 3; ++k) eighths[k] += (k == i) == (left == 1) ? 1 : 0;
        fine.places[i] = PlaceOf(blend, eighths);
        fine.shares[i] = left == 1 ? rest[i] : 1 - rest[i];
    }
    return fine;
}

Vector3 VectorOf(double azimuth, double elevation) {
    const double a = azimuth * std::numbers::pi / 180;
    const double e = elevation * std::numbers::pi / 180;
    return {std::cos(e) * std::sin(a), std::cos(e) * std::cos(a), std::sin(e)};
}

ResponseSet::ResponseSet(double rate, std::size_t transformSize,
                         std::span<const Vector3> directions, std::vector<EarNumbers> ears)
    : rate_(rate), fft_(transformSize), ears_(std::move(ears)), mesh_(directions) {}

double ResponseSet::DelayAt(const SphereBlend& blend, Ear ear) const {
    double delay = 0;
    for (int i = 0; i < 3; ++i) delay += blend.shares[i] * delays_[NumberOf(blend.corners[i], ear)];
    return delay;
}

std::vector<double> ResponseSet::PowerAt(const FinePlace& place, Ear ear) const {
    std::vector<double> power(fft_.Size() / 2 + 1);
    for (int i = 0; i < 3; ++i) {
        if (place.eighths[i] == 0) continue;
        const double share = static_cast<double>(place.eighths[i]) / kParts;
        const std::vector<float>& corner = powers_[NumberOf(place.corners[i], ear)];
        for (std::size_t k = 0; k < power.size(); ++k) power[k] += share * corner[k];
    }
    return power;
}

EarTaps ResponseSet::TapsAt(const FinePlace& place) const {
    const std::array powers = {PowerAt(place, Ear::kLeft), PowerAt(place, Ear::kRight)};
    const auto responses = MinimumPhases(fft_, {powers[0], powers[1]});
    EarTaps taps{std::vector<float>(taps_), std::vector<float>(taps_)};
    for (std::size_t k = 0; k < taps_; ++k) {
        const double fade = std::min(1.0, static_cast<double>(taps_ - k) / kFadedTaps);
        for (const std::size_t ear : {0u, 1u})
            taps[ear][k] = static_cast<float>(fade * responses[ear][k]);
    }
    return taps;
}

}  // namespace sonavel
