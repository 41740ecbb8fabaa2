// The nearest whole number, of two the even one, as loops over samples compute it: std::lrint() is
// a call for each number and keeps a loop from being vectorised.
#pragma once

namespace sonavel {

// Beside a number of this size there is no room for a fraction. Up to +-2^22.
constexpr float Nearest(float value) {
    constexpr float kNoFractions = 0x1.8p23F;
    return (value + kNoFractions) - kNoFractions;
}

// Up to +-2^51.
constexpr double Nearest(double value) {
    constexpr double kNoFractions = 0x1.8p52;
    return (value + kNoFractions) - kNoFractions;
}

}  // namespace sonavel
