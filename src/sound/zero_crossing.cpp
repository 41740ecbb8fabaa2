#include "sound/zero_crossing.h"

#include <algorithm>

namespace sonavel {
namespace {

double Mean(const Sound& sound, std::uint32_t frame) {
    double sum = 0;
    for (unsigned channel = 0; channel < sound.GetChannels(); ++channel)
        sum += sound.GetShare(channel, frame);
    return sum;
}

bool CrossesAt(const Sound& sound, std::uint32_t frame) {
    if (frame == 0 || frame >= sound.GetFrameCount()) return true;
    const double before = Mean(sound, frame - 1), here = Mean(sound, frame);
    return here == 0 || (before < 0) != (here < 0);
}

}  // namespace

std::uint32_t NearestZeroCrossing(const Sound& sound, std::uint32_t frame, std::uint32_t reach) {
    const std::uint32_t frames = sound.GetFrameCount();
    const std::uint32_t start = std::min(frame, frames);
    for (std::uint32_t away = 0; away <= reach; ++away) {
        if (away <= start && CrossesAt(sound, start - away)) return start - away;
        if (away <= frames - start && CrossesAt(sound, start + away)) return start + away;
    }
    return start;
}

}  // namespace sonavel
