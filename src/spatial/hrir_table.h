// HrirTable: 361 head-related impulse responses of 256 taps, all of the listener's left ear,
// arranged on rings of equal elevation from -40 to 90 degrees. They come from the measurements of a
// KEMAR dummy head with normal pinna by W. G. Gardner and K. D. Martin, MIT Media Lab, 1994.
#pragma once

#include <cstdint>
#include <span>

namespace sonavel {

inline constexpr int kHrirResponses = 361;
inline constexpr int kHrirTaps = 256;
inline constexpr int kHrirRings = 14;

// The first response of each ring, and behind them the number of responses.
inline constexpr int kRingStart[kHrirRings + 1] = {0,   30,  60,  96,  132, 168, 204, 240,
                                                   270, 300, 324, 342, 354, 360, 361};
// Degrees between the azimuths of a ring, which begin at 0, straight ahead, and run clockwise.
inline constexpr double kAzimuthStep[kHrirRings] = {12, 12, 10, 10, 10, 10, 10,
                                                    12, 12, 15, 20, 30, 60, 360};

// The measurements as 16-bit integers, one response after another.
extern const std::int16_t kHrirIntegers[kHrirResponses * kHrirTaps];

class HrirTable {
  public:
    // The one table of the program.
    static const HrirTable& Get();

    // The 256 taps of a response, 0 to 360: integers / 32768, rounded to seven decimals.
    std::span<const double, kHrirTaps> Response(int index) const {
        return std::span<const double, kHrirTaps>(values_ + index * kHrirTaps, kHrirTaps);
    }

  private:
    HrirTable();

    double values_[kHrirResponses * kHrirTaps];
};

}  // namespace sonavel
