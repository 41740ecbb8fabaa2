// Levels of samples in decibels.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

namespace sonavel {

// 20 log10 (|value| / reference); nothing for silence or without a reference.
inline std::optional<double> LevelInDecibels(double value, std::int32_t reference) {
    if (value == 0 || reference <= 0) return std::nullopt;
    return 20 * std::log10(std::abs(value) / reference);
}

}  // namespace sonavel
