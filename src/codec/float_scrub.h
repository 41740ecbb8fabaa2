// Takes out of floats what no sound can use.
#pragma once

#include <cstdint>
#include <span>

namespace sonavel {

// Sets what is infinite or not a number to 0. Returns how many there were.
std::uint64_t SilenceNonFinite(std::span<float> values);

}  // namespace sonavel
