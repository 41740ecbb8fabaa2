#include "view/draw/frequency_ruler.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace sonavel {
namespace {

constexpr double kLeastHighest = 100;  // Hz
constexpr int kLeastTickDistance = 3;

// How early a multiple of a power of ten is labelled.
constexpr int kRanks[] = {0, 0, 2, 3, 3, 1, 3, 3, 3, 3};
constexpr int kLastRank = 4;

int RankAbovePowers(int thousands) {
    if (thousands % 5 == 0) return kRanks[5];
    return thousands % 2 == 0 ? kRanks[3] : kLastRank;
}

struct Place {
    double frequency;
    int y;
    int rank;
};

std::string LabelOf(double frequency) {
    const bool isLarge = frequency >= 1000;
    const auto number = std::lround(isLarge ? frequency / 1000 : frequency);
    return std::to_string(number) + (isLarge ? "k" : "");
}

// The steps of each power of ten, and evenly on above its first one, where the lane ends.
std::vector<Place> PlacesOf(const Rectangle& lane, const FrequencyRulerRequest& request) {
    std::vector<Place> places;
    const double lowest = request.scale == FrequencyScale::kLogarithmic ? kLowestLogFrequency : 0;
    const auto add = [&](double frequency, int rank) {
        if (frequency >= lowest && frequency <= request.highest)
            places.push_back(
                {frequency, RowOfFrequency(lane, request.scale, frequency, request.highest), rank});
    };
    for (double power = 10; power <= request.highest; power *= 10)
        for (int multiple = 1; multiple <= 9; ++multiple) add(multiple * power, kRanks[multiple]);
    for (int thousands = 11; thousands * 1000 <= request.highest; ++thousands)
        if (thousands % 10 != 0) add(thousands * 1000.0, RankAbovePowers(thousands));
    std::ranges::sort(places, {}, &Place::y);
    return places;
}

class LaneTicks {
  public:
    LaneTicks(const Rectangle& lane, int labelHeight) : lane_(lane), labelHeight_(labelHeight) {}

    void Add(const Place& place) {
        const bool touches = std::ranges::any_of(ticks_, [&](const FrequencyTick& tick) {
            return std::abs(tick.y - place.y) < kLeastTickDistance;
        });
        if (touches && !HasRoom(place.y)) return;
        ticks_.push_back({place.y, place.frequency,
                          HasRoom(place.y) ? LabelOf(place.frequency) : std::string()});
    }

    std::vector<FrequencyTick> Sorted() && {
        std::ranges::sort(ticks_, {}, &FrequencyTick::y);
        return std::move(ticks_);
    }

  private:
    bool HasRoom(int y) const {
        if (y - labelHeight_ / 2 < lane_.top || y + (labelHeight_ + 1) / 2 > lane_.bottom)
            return false;
        return std::ranges::none_of(ticks_, [&](const FrequencyTick& tick) {
            return !tick.label.empty() && std::abs(tick.y - y) <= labelHeight_;
        });
    }

    Rectangle lane_;
    int labelHeight_;
    std::vector<FrequencyTick> ticks_;
};

}  // namespace

int RowOfFrequency(const Rectangle& lane, FrequencyScale scale, double frequency, double highest) {
    const double height = HeightOf(scale, frequency, highest);
    return lane.bottom - 1 - static_cast<int>(std::lround(height * std::max(lane.Height() - 1, 0)));
}

double FrequencyOfRow(const Rectangle& lane, FrequencyScale scale, int y, double highest) {
    if (lane.Height() < 2) return 0;
    const double height = double{1} * (lane.bottom - 1 - y) / (lane.Height() - 1);
    return FrequencyAt(scale, std::clamp(height, 0.0, 1.0), highest);
}

std::vector<FrequencyTick> LayOutFrequencyRuler(const FrequencyRulerRequest& request) {
    std::vector<FrequencyTick> all;
    if (request.highest < kLeastHighest) return all;
    for (const Rectangle& lane : request.lanes) {
        if (lane.Empty()) continue;
        LaneTicks ticks(lane, request.labelHeight);
        const std::vector<Place> places = PlacesOf(lane, request);
        for (int rank = 0; rank <= kLastRank; ++rank)
            for (const Place& place : places)
                if (place.rank == rank) ticks.Add(place);
        for (FrequencyTick& tick : std::move(ticks).Sorted()) all.push_back(std::move(tick));
    }
    return all;
}

}  // namespace sonavel
