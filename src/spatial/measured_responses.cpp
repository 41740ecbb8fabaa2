#include "spatial/measured_responses.h"

#include "spatial/hrir_table.h"

namespace sonavel {
namespace {

void AddRing(int ring, std::vector<MeasuredDirection>& directions) {
    constexpr double kLowest = -40;
    constexpr double kRingStep = 10;
    const int first = kRingStart[ring];
    const int count = kRingStart[ring + 1] - first;
    for (int i = 0; i < count; ++i)
        directions.push_back({kAzimuthStep[ring] * i, kLowest + kRingStep * ring,
                              static_cast<std::uint32_t>(first + i),
                              static_cast<std::uint32_t>(first + (count - i) % count)});
}

}  // namespace

MeasuredResponses TableResponses() {
    MeasuredResponses measured;
    measured.name = "KEMAR, 1994";
    measured.taps = kHrirTaps;
    for (int i = 0; i < kHrirResponses; ++i)
        for (const double tap : HrirTable::Get().Response(i))
            measured.values.push_back(static_cast<float>(tap));
    for (int ring = 0; ring < kHrirRings; ++ring) AddRing(ring, measured.directions);
    return measured;
}

}  // namespace sonavel
