// How long tests wait for what has to come: so long that also on a slow or busy machine nothing but
// a fault exceeds it.
#pragma once

#include <chrono>

namespace sonavel {

inline constexpr std::chrono::seconds kPatience{60};
inline constexpr int kPatienceMs = 60000;  // for the toolkit's waits

}  // namespace sonavel
