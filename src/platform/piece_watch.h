// What a long computation says between two of its pieces: how far it is. The answer says whether it
// is still wanted.
#pragma once

#include <functional>

#include "platform/parallel.h"

namespace sonavel {

// `done`: the share of the work that is done, 0 to 1. Cheap enough for every few milliseconds.
using PieceWatch = std::function<Onward(double done)>;

inline Onward Unwatched(double) {
    return Onward::kGoOn;
}

// For a part of what `whole` watches, from one share of it to another; lives no longer than it.
inline PieceWatch PartOf(const PieceWatch& whole, double from, double to) {
    return [&whole, from, to](double done) { return whole(from + (to - from) * done); };
}

}  // namespace sonavel
