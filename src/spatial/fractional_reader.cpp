#include "spatial/fractional_reader.h"

#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

constexpr int kPlaces = 512;
constexpr double kWindowShape = 8.5;  // side lobes of about -85 dB

// The modified Bessel function of the first kind of order 0, by its series.
double BesselI0(double x) {
    double sum = 1;
    double term = 1;
    for (int k = 1; k < 60 && term > 1e-12 * sum; ++k) {
        term *= (x / (2 * k)) * (x / (2 * k));
        sum += term;
    }
    return sum;
}

double Kernel(double t) {
    const double inside = 1 - std::pow(2 * t / kReaderTaps, 2);
    if (inside < 0) return 0;
    const double window = BesselI0(kWindowShape * std::sqrt(inside)) / BesselI0(kWindowShape);
    const double angle = std::numbers::pi * t;
    return window * (std::abs(t) < 1e-9 ? 1 : std::sin(angle) / angle);
}

class KernelTable {
  public:
    static const KernelTable& Get() {
        static const KernelTable table;
        return table;
    }
    // The taps for a place so many 512ths behind a frame, 0 to 512.
    const float* Taps(int place) const {
        return taps_.data() + static_cast<std::ptrdiff_t>(place) * kReaderTaps;
    }

  private:
    KernelTable() {
        for (int place = 0; place <= kPlaces; ++place) {
            double taps[kReaderTaps];
            double sum = 0;
            for (int i = 0; i < kReaderTaps; ++i)
                sum += taps[i] = Kernel(i - kReaderBefore - double{1} * place / kPlaces);
            for (const double tap : taps) taps_.push_back(static_cast<float>(tap / sum));
        }
    }

    std::vector<float> taps_;
};

typedef float Lanes __attribute__((vector_size(32)));
constexpr int kLanes = sizeof(Lanes) / sizeof(float);

[[gnu::always_inline]] inline void Load(const float* from, Lanes& lanes) {
    std::memcpy(&lanes, from, sizeof lanes);
}

// The taps of both neighbouring places of the table, blended, over the frames from `from` on.
[[gnu::always_inline]] inline float Weigh(const float* from, const float* lower, const float* upper,
                                          float share) {
    Lanes sum = {};
    Lanes low, high, frames;
    for (int i = 0; i < kReaderTaps; i += kLanes) {
        Load(lower + i, low);
        Load(upper + i, high);
        Load(from + i, frames);
        sum += (low + share * (high - low)) * frames;
    }
    return ((sum[0] + sum[4]) + (sum[1] + sum[5])) + ((sum[2] + sum[6]) + (sum[3] + sum[7]));
}

SONAVEL_VECTOR_CLONES
void Read(const KernelTable& table, std::span<const float> frames, std::span<const double> places,
          std::span<float> out) {
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double floor = std::floor(places[i]);
        const double fine = (places[i] - floor) * kPlaces;
        const int place = static_cast<int>(fine);
        const float share = static_cast<float>(fine - place);
        const float* from = frames.data() + static_cast<std::ptrdiff_t>(floor) - kReaderBefore;
        // A place rounded up to the next frame has no further one in the table.
        const int next = place < kPlaces ? place + 1 : place;
        out[i] = Weigh(from, table.Taps(place), table.Taps(next), share);
    }
}

}  // namespace

void ReadBetweenFrames(std::span<const float> frames, std::span<const double> places,
                       std::span<float> out) {
    Read(KernelTable::Get(), frames, places, out);
}

}  // namespace sonavel
