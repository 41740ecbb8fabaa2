#include "spatial/response_set_maker.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>
#include <numbers>

#include "libraries/resampler.h"
#include "platform/parallel.h"
#include "spatial/minimum_phase.h"

namespace sonavel {
namespace {

// Silence before a response that is resampled, so that the filter's ringing ahead of a response's
// beginning is kept.
constexpr std::size_t kRunIn = 64;
constexpr double kSameDirection = 0.1;
constexpr double kOpenPole = 30;
constexpr double kRingWidth = 2;
constexpr double kLowTones = 1500;  // Hz
// The share of its energy that a response may lose with its tail.
constexpr double kTailEnergy = 3e-5;
constexpr std::size_t kFadedTaps = 16;
constexpr std::size_t kLeastDirections = 4;
// Of the table's responses: the mean power, and when the first of them arrives, in seconds.
constexpr double kTablePower = 2.1965;
constexpr double kTableArrival = 35.85 / 44100;

std::vector<float> Resampled(std::span<const float> taps, double fromRate, double toRate) {
    std::vector<float> padded(kRunIn + taps.size() + kRunIn);
    // A filter's taps are worth less the more of them there are in a second.
    const auto scale = static_cast<float>(fromRate / toRate);
    std::transform(taps.begin(), taps.end(), padded.begin() + kRunIn,
                   [scale](float tap) { return scale * tap; });
    std::vector<float> resampled;
    Resampler resampler(1, fromRate, toRate);
    if (!resampler.Add(padded, resampled) || !resampler.Finish(resampled)) throw std::bad_alloc();
    return resampled;
}

// Three times as long as the responses become, so that the cepstrum's ends do not meet.
std::size_t TransformSizeFor(const MeasuredResponses& measured, double rate) {
    const double longest =
        static_cast<double>(measured.taps + 2 * kRunIn) * std::max(1.0, rate / measured.rate);
    return std::bit_ceil(static_cast<std::size_t>(3 * longest));
}

std::size_t LastTap(std::span<const double> taps) {
    double energy = 0;
    for (const double tap : taps) energy += tap * tap;
    std::size_t last = taps.size() / 2;
    for (double tail = 0; last > kFadedTaps; --last) {
        tail += taps[last - 1] * taps[last - 1];
        if (tail > kTailEnergy * energy) break;
    }
    return last;
}

}  // namespace

ResponseSetMaker::ResponseSetMaker(const MeasuredResponses& measured, double rate)
    : measured_(measured), rate_(rate), fft_(TransformSizeFor(measured, rate)) {}

ResponseSetMaker::Parts ResponseSetMaker::PartsOf(std::size_t response) const {
    std::span<const float> taps = measured_.Response(response);
    std::vector<float> resampled;
    double before = 0;
    if (rate_ != measured_.rate) {
        resampled = Resampled(taps, measured_.rate, rate_);
        taps = std::span(resampled).first(std::min(resampled.size(), fft_.Size() / 2));
        before = static_cast<double>(kRunIn) * rate_ / measured_.rate;
    }
    const std::vector<double> power = PowerSpectrum(fft_, taps);
    const std::vector<double> minimumPhase = MinimumPhase(fft_, power);
    Parts parts;
    parts.power.assign(power.begin(), power.end());
    parts.delay = ArrivalOf(fft_, taps, minimumPhase, kLowTones / rate_) - before +
                  measured_.DelayOf(response) * rate_ / measured_.rate;
    parts.lastTap = LastTap(minimumPhase);
    return parts;
}

Outcome ResponseSetMaker::Analyse(const PieceWatch& watch) {
    const std::size_t count = measured_.Count();
    parts_.resize(count);
    const auto tell = [&](std::size_t i) {
        return watch(static_cast<double>(i) / static_cast<double>(count));
    };
    const WorkDone done = ComputeUnits(
        {.count = count, .compute = [&](std::size_t i) { parts_[i] = PartsOf(i); }, .before = tell},
        ThreadsToUse());
    if (done.end == WorkEnd::kStopped) return Cancelled();
    return DoneIf(done.end == WorkEnd::kFinished, failure::kMemory);
}

// Of all responses, from 200 to 8000 Hz.
double ResponseSetMaker::MeanPower() const {
    const double binsPerHertz = static_cast<double>(fft_.Size()) / rate_;
    const auto from = static_cast<std::size_t>(200 * binsPerHertz);
    const auto to = std::min(static_cast<std::size_t>(8000 * binsPerHertz), fft_.Size() / 2);
    double sum = 0;
    for (const Parts& parts : parts_)
        for (std::size_t k = from; k <= to; ++k) sum += parts.power[k];
    return sum / static_cast<double>(parts_.size() * (to - from + 1));
}

// As loud as the table on the whole, and as early.
void ResponseSetMaker::MatchTable() {
    const double earliest =
        std::ranges::min_element(parts_, {}, &Parts::delay)->delay - kTableArrival * rate_;
    const auto factor = static_cast<float>(kTablePower / std::max(MeanPower(), 1e-30));
    for (Parts& parts : parts_) {
        parts.delay -= earliest;
        for (float& power : parts.power) power *= factor;
    }
}

bool ResponseSetMaker::IsFarFromAll(const Vector3& direction, double degrees) const {
    const double nearest = std::cos(degrees * std::numbers::pi / 180);
    return std::none_of(directions_.begin(), directions_.end(),
                        [&](const Vector3& other) { return Dot(direction, other) > nearest; });
}

void ResponseSetMaker::CollectDirections() {
    for (const MeasuredDirection& measured : measured_.directions) {
        const Vector3 direction = VectorOf(measured.azimuth, measured.elevation);
        if (!IsFarFromAll(direction, kSameDirection)) continue;
        directions_.push_back(direction);
        ears_.push_back({measured.left, measured.right});
    }
}

std::uint32_t ResponseSetMaker::AddMean(std::span<const std::uint32_t> responses) {
    Parts mean;
    mean.power.resize(fft_.Size() / 2 + 1);
    const double share = 1 / static_cast<double>(responses.size());
    for (const std::uint32_t response : responses) {
        mean.delay += share * parts_[response].delay;
        for (std::size_t k = 0; k < mean.power.size(); ++k)
            mean.power[k] += static_cast<float>(share * parts_[response].power[k]);
    }
    parts_.push_back(std::move(mean));
    return static_cast<std::uint32_t>(parts_.size() - 1);
}

void ResponseSetMaker::CompletePole(double sign) {
    const Vector3 pole{0, 0, sign};
    if (!IsFarFromAll(pole, kOpenPole)) return;
    double edge = -1;
    for (const Vector3& direction : directions_) edge = std::max(edge, sign * direction.z);
    const double ringFrom = std::sin(std::asin(edge) - kRingWidth * std::numbers::pi / 180);
    std::array<std::vector<std::uint32_t>, 2> ring;
    for (std::size_t i = 0; i < directions_.size(); ++i) {
        if (sign * directions_[i].z < ringFrom) continue;
        for (const std::size_t ear : {0u, 1u}) ring[ear].push_back(ears_[i][ear]);
    }
    directions_.push_back(pole);
    const std::uint32_t left = AddMean(ring[0]);
    ears_.push_back({left, AddMean(ring[1])});
}

Result<std::shared_ptr<const ResponseSet>> ResponseSetMaker::Make(const PieceWatch& watch) try {
    CollectDirections();
    if (directions_.size() < kLeastDirections)
        return Failed("The responses are of too few directions.");
    if (Outcome analysed = Analyse(watch); !analysed) return analysed;
    if (measured_.scale == Scale::kOfItsOwn) MatchTable();
    CompletePole(-1);
    CompletePole(1);
    std::shared_ptr<ResponseSet> set(new ResponseSet(rate_, fft_.Size(), directions_, ears_));
    if (!set->Mesh().HasTriangles())
        return Failed("The directions of the responses span no part of the sphere.");
    std::size_t last = kFadedTaps;
    for (Parts& parts : parts_) {
        last = std::max(last, parts.lastTap);
        set->delays_.push_back(parts.delay);
        set->powers_.push_back(std::move(parts.power));
    }
    set->taps_ = std::min((last + kFadedTaps + 3) / 4 * 4, fft_.Size());
    return std::shared_ptr<const ResponseSet>(std::move(set));
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

double ResponseSetMaker::GreatestGap() {
    CollectDirections();
    return SphereMesh(directions_).GreatestGap();
}

double GreatestGap(const MeasuredResponses& measured) {
    return ResponseSetMaker(measured, measured.rate).GreatestGap();
}

Result<std::shared_ptr<const ResponseSet>> ResponseSet::Make(const MeasuredResponses& measured,
                                                             double rate, const PieceWatch& watch) {
    if (rate < kLowestResponseRate || rate > kHighestResponseRate)
        return Failed("The responses can be had at rates from 4000 to 384000 Hz only.");
    return ResponseSetMaker(measured, rate).Make(watch);
}

}  // namespace sonavel
