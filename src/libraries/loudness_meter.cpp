#include "libraries/loudness_meter.h"

#include <ebur128.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace sonavel {

struct LoudnessMeter::State {
    ebur128_state* meter = nullptr;
    unsigned channels = 1;

    ~State() {
        if (meter != nullptr) ebur128_destroy(&meter);
    }

    // Of all channels.
    double Greatest(int (*peakOf)(ebur128_state*, unsigned, double*)) const {
        double peak = 0;
        for (unsigned channel = 0; meter && channel < channels; ++channel) {
            double found = 0;
            if (peakOf(meter, channel, &found) == EBUR128_SUCCESS) peak = std::max(peak, found);
        }
        return peak;
    }
};

LoudnessMeter::LoudnessMeter(Finds finds, unsigned channels, std::uint32_t samplesPerSecond)
    : state_(std::make_unique<State>()) {
    state_->channels = channels;
    const int mode = finds == Finds::kLoudness ? EBUR128_MODE_I | EBUR128_MODE_LRA
                                               : static_cast<int>(EBUR128_MODE_TRUE_PEAK);
    state_->meter = ebur128_init(channels, samplesPerSecond, mode);
}

LoudnessMeter::~LoudnessMeter() = default;

bool LoudnessMeter::Add(std::span<const float> frames) {
    if (!state_->meter) return false;
    return ebur128_add_frames_float(state_->meter, frames.data(),
                                    frames.size() / state_->channels) == EBUR128_SUCCESS;
}

std::optional<double> LoudnessMeter::Integrated() const {
    double loudness = 0;
    if (!state_->meter || ebur128_loudness_global(state_->meter, &loudness) != EBUR128_SUCCESS ||
        !std::isfinite(loudness))
        return std::nullopt;
    return loudness;
}

double LoudnessMeter::Range() const {
    double range = 0;
    if (!state_->meter || ebur128_loudness_range(state_->meter, &range) != EBUR128_SUCCESS)
        return 0;
    return range;
}

double LoudnessMeter::TruePeak() const {
    return state_->Greatest(ebur128_true_peak);
}

double LoudnessMeter::TruePeakOfLast() const {
    return state_->Greatest(ebur128_prev_true_peak);
}

}  // namespace sonavel
