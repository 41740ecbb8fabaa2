#include "spatial/heard_places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace sonavel {
namespace {

// Within it a source is taken as higher up than it is, so that one that passes through the head
// passes over it and does not change sides at once.
constexpr double kHeadCentre = 0.1;
constexpr double kFastest = 4;

Vector3 DirectionOf(const Vector3& position) {
    const double distance = Length(position);
    const double raised = std::max(0.0, kHeadCentre - distance);
    return Direction(position + Vector3{0, 0, raised});
}

// The frames at which a source sends what is heard at frames that follow each other.
class Sending {
  public:
    explicit Sending(const Flight& flight) : flight_(flight) {
        if (flight.metresPerUnit)
            framesPerUnit_ = *flight.metresPerUnit / kSpeedOfSound * flight.rate;
        start_ = Length(PlaceAt(0));
    }

    Vector3 PlaceAt(double sent) const {
        return flight_.path.At(sent / std::max(1.0, static_cast<double>(flight_.frames)));
    }

    // To be called for rising frames.
    double FrameSentFor(double heard) {
        if (framesPerUnit_ == 0) return heard;
        double low = last_;
        double high = last_ + kFastest * kHopFrames;
        if (HeardAt(high) < heard) return last_ = high;
        for (int step = 0; step < 32 && HeardAt(low) < heard; ++step) {
            const double middle = (low + high) / 2;
            (HeardAt(middle) < heard ? low : high) = middle;
        }
        return last_ = low;
    }

  private:
    double HeardAt(double sent) const {
        return sent + (Length(PlaceAt(sent)) - start_) * framesPerUnit_;
    }

    const Flight& flight_;
    double framesPerUnit_ = 0;
    double start_ = 0;
    double last_ = 0;
};

// The mean of the delays around each place, weighted by Hann's window: the delay has a corner where
// the source enters another triangle, which a sine tells as a click.
std::vector<double> Rounded(const std::vector<double>& delays) {
    constexpr std::ptrdiff_t kReach = 8;
    std::array<double, 2 * kReach + 1> weights;
    for (std::ptrdiff_t k = -kReach; k <= kReach; ++k)
        weights[static_cast<std::size_t>(k + kReach)] =
            (1 + std::cos(std::numbers::pi * static_cast<double>(k) / (kReach + 1))) /
            (2 * (kReach + 1));
    const auto last = static_cast<std::ptrdiff_t>(delays.size()) - 1;
    std::vector<double> rounded(delays.size());
    for (std::ptrdiff_t i = 0; i <= last; ++i)
        for (std::ptrdiff_t k = -kReach; k <= kReach; ++k)
            rounded[static_cast<std::size_t>(i)] +=
                weights[static_cast<std::size_t>(k + kReach)] *
                delays[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(i + k, 0, last))];
    return rounded;
}

// What is heard at a place is the mean of five, the nearer ones weighing more: where the source
// enters another triangle, the level of a sine has a corner otherwise, which is told as a click,
// too. Three are too few for a source that goes around in two seconds.
void RoundBlends(std::vector<HeardPlace>& places) {
    constexpr std::ptrdiff_t kReach = kRoundedBlends / 2;
    constexpr double kWeights = (kReach + 1) * (kReach + 1);
    const std::vector<HeardPlace> exact = places;
    const auto last = static_cast<std::ptrdiff_t>(places.size()) - 1;
    for (std::ptrdiff_t i = 0; i <= last; ++i) {
        const auto near = [&](std::ptrdiff_t k) -> const HeardPlace& {
            return exact[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(i + k, 0, last))];
        };
        // Between places that sound alike, all are.
        if (near(-kReach).SoundsLike(near(0)) && near(kReach).SoundsLike(near(0))) continue;
        HeardPlace& rounded = places[static_cast<std::size_t>(i)];
        rounded.blend = {};
        rounded.gain = 0;
        for (std::ptrdiff_t k = -kReach; k <= kReach; ++k) {
            const double weight = static_cast<double>(kReach + 1 - std::abs(k)) / kWeights;
            rounded.blend.Add(near(k).blend, static_cast<float>(weight));
            rounded.gain += weight * near(k).gain;
        }
    }
}

}  // namespace

std::vector<HeardPlace> HeardPlaces(ResponseBank& bank, const Flight& flight, std::size_t count) {
    const ResponseSet& responses = bank.Responses();
    std::vector<HeardPlace> places(count);
    std::array<std::vector<double>, 2> delays;
    Sending sending(flight);
    std::size_t nearby = 0;
    for (std::size_t i = 0; i < count; ++i) {
        HeardPlace& place = places[i];
        const double sent = sending.FrameSentFor(static_cast<double>(i * kHopFrames));
        const Vector3 position = sending.PlaceAt(sent);
        const SphereBlend blend = responses.Mesh().Around(DirectionOf(position), nearby);
        place.blend = bank.Note(blend);
        place.gain = flight.law.GainAt(Length(position));
        place.readAt.fill(sent);
        for (const std::size_t ear : {0u, 1u})
            delays[ear].push_back(responses.DelayAt(blend, kBothEars[ear]));
    }
    RoundBlends(places);
    for (const std::size_t ear : {0u, 1u}) {
        const std::vector<double> rounded = Rounded(delays[ear]);
        for (std::size_t i = 0; i < count; ++i) places[i].readAt[ear] -= rounded[i];
    }
    return places;
}

}  // namespace sonavel
