#include "spatial/heard_places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

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
    Sending(const Flight& flight, double metresPerUnit)
        : flight_(flight),
          framesPerUnit_(metresPerUnit / kSpeedOfSound * flight.rate),
          start_(Length(flight.PlaceAt(0))) {}

    // To be called for rising frames.
    double FrameSentFor(double heard) {
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
        return sent + (Length(flight_.PlaceAt(sent)) - start_) * framesPerUnit_;
    }

    const Flight& flight_;
    double framesPerUnit_;
    double start_;
    double last_ = 0;
};

// Over how many neighbours on either side a place's delay and its response are rounded.
constexpr std::ptrdiff_t kDelayReach = 8;
constexpr std::ptrdiff_t kBlendReach = kRoundedBlends / 2;

// So many places are found at once.
constexpr std::size_t kStretch = 16;

// Places that follow each other, not rounded yet.
class Neighbours {
  public:
    // `last`: the number of the last place of all.
    Neighbours(std::ptrdiff_t first, std::ptrdiff_t last) : first_(first), last_(last) {}

    void Add(const HeardPlace& place) { places_.push_back(place); }
    // Behind the ends it stays as it is there.
    const HeardPlace& At(std::ptrdiff_t place) const {
        place = std::clamp<std::ptrdiff_t>(place, 0, last_);
        return places_[static_cast<std::size_t>(place - first_)];
    }

  private:
    std::ptrdiff_t first_;
    std::ptrdiff_t last_;
    std::vector<HeardPlace> places_;
};

using DelayWeights = std::array<double, 2 * kDelayReach + 1>;

// Hann's window.
DelayWeights MakeDelayWeights() {
    DelayWeights weights;
    for (std::ptrdiff_t k = -kDelayReach; k <= kDelayReach; ++k) {
        const double angle = std::numbers::pi * static_cast<double>(k) / (kDelayReach + 1);
        weights[static_cast<std::size_t>(k + kDelayReach)] =
            (1 + std::cos(angle)) / (2 * (kDelayReach + 1));
    }
    return weights;
}

// The mean of the delays around a place: the delay has a corner where the source enters another
// triangle, which a sine tells as a click.
double RoundedDelay(const Neighbours& exact, std::ptrdiff_t place, std::size_t ear) {
    static const DelayWeights weights = MakeDelayWeights();
    double sum = 0;
    for (std::ptrdiff_t k = -kDelayReach; k <= kDelayReach; ++k)
        sum += weights[static_cast<std::size_t>(k + kDelayReach)] * exact.At(place + k).delays[ear];
    return sum;
}

// What is heard at a place is the mean of five, the nearer ones weighing more: where the source
// enters another triangle, the level of a sine has a corner otherwise, which is told as a click,
// too. Three are too few for a source that goes around in two seconds.
HeardPlace RoundedPlace(const Neighbours& exact, std::ptrdiff_t place) {
    constexpr double kWeights = (kBlendReach + 1) * (kBlendReach + 1);
    const HeardPlace& middle = exact.At(place);
    HeardPlace rounded = middle;
    // Between places that sound alike, all are.
    if (!exact.At(place - kBlendReach).SoundsLike(middle) ||
        !exact.At(place + kBlendReach).SoundsLike(middle)) {
        rounded.blend = {};
        rounded.gain = 0;
        for (std::ptrdiff_t k = -kBlendReach; k <= kBlendReach; ++k) {
            const double weight = static_cast<double>(kBlendReach + 1 - std::abs(k)) / kWeights;
            rounded.blend.Add(exact.At(place + k).blend, static_cast<float>(weight));
            rounded.gain += weight * exact.At(place + k).gain;
        }
    }
    for (const std::size_t ear : {0u, 1u}) rounded.delays[ear] = RoundedDelay(exact, place, ear);
    return rounded;
}

double FrameOf(std::size_t place) {
    return static_cast<double>(place) * kHopFrames;
}

}  // namespace

HeardPlaces::HeardPlaces(std::shared_ptr<ResponseBank> bank, Flight flight, std::size_t count)
    : bank_(std::move(bank)),
      flight_(std::move(flight)),
      count_(flight_.path.IsAtRest() ? 1 : count),
      stretches_((count_ + kStretch - 1) / kStretch) {
    if (!flight_.metresPerUnit) return;
    Sending sending(flight_, *flight_.metresPerUnit);
    sent_.reserve(count_);
    for (std::size_t i = 0; i < count_; ++i) sent_.push_back(sending.FrameSentFor(FrameOf(i)));
}

Vector3 Flight::PlaceAt(double frame) const {
    return path.At(frame / std::max(1.0, static_cast<double>(frames)));
}

const HeardPlace& HeardPlaces::At(std::size_t place) const {
    place = std::min(place, count_ - 1);
    Stretch& stretch = stretches_[place / kStretch];
    std::call_once(stretch.found, [&] { stretch.places = FindStretch(place / kStretch); });
    return stretch.places[place % kStretch];
}

double HeardPlaces::SentFor(std::size_t place) const {
    return sent_.empty() ? FrameOf(place) : sent_[place];
}

HeardPlace HeardPlaces::FindExact(std::size_t place, std::size_t& nearby) const {
    const ResponseSet& responses = bank_->Responses();
    const Vector3 position = flight_.PlaceAt(SentFor(place));
    const SphereBlend blend = responses.Mesh().Around(DirectionOf(position), nearby);
    HeardPlace found{bank_->At(blend), flight_.law.GainAt(Length(position))};
    for (const std::size_t ear : {0u, 1u})
        found.delays[ear] = responses.DelayAt(blend, kBothEars[ear]);
    return found;
}

std::vector<HeardPlace> HeardPlaces::FindStretch(std::size_t number) const {
    const auto first = static_cast<std::ptrdiff_t>(number * kStretch);
    const auto last = static_cast<std::ptrdiff_t>(count_) - 1;
    const std::ptrdiff_t end = std::min(first + static_cast<std::ptrdiff_t>(kStretch) - 1, last);
    const std::ptrdiff_t exactFirst = std::max<std::ptrdiff_t>(first - kDelayReach, 0);
    const std::ptrdiff_t exactEnd = std::min(end + kDelayReach, last);
    Neighbours exact(exactFirst, last);
    std::size_t nearby = 0;
    for (std::ptrdiff_t i = exactFirst; i <= exactEnd; ++i)
        exact.Add(FindExact(static_cast<std::size_t>(i), nearby));
    std::vector<HeardPlace> places;
    for (std::ptrdiff_t i = first; i <= end; ++i) {
        places.push_back(RoundedPlace(exact, i));
        const auto place = static_cast<std::size_t>(i);
        for (double& delay : places.back().delays) delay += FrameOf(place) - SentFor(place);
    }
    return places;
}

}  // namespace sonavel
