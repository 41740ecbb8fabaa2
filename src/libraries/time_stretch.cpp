#include "libraries/time_stretch.h"

#include <SoundTouch.h>

#include <algorithm>
#include <cstddef>
#include <exception>

namespace sonavel {
namespace {

// Rates between which the library's windows, which are milliseconds long, can be had. Beyond them
// they are shorter or longer than meant, and nothing else is different.
constexpr std::uint32_t kLeastRate = 8000;
constexpr std::uint32_t kGreatestRate = 192000;

constexpr std::size_t kFramesAtOnce = 8192;

}  // namespace

struct TimeStretch::State {
    soundtouch::SoundTouch touch;
    unsigned channels = 1;

    void TakeReady(std::vector<float>& to) {
        while (const unsigned ready = touch.numSamples()) {
            const std::size_t before = to.size();
            to.resize(before + std::size_t{ready} * channels);
            const unsigned taken = touch.receiveSamples(to.data() + before, ready);
            to.resize(before + std::size_t{taken} * channels);
            if (taken == 0) return;
        }
    }
};

TimeStretch::TimeStretch(unsigned channels, std::uint32_t samplesPerSecond, double tempo,
                         double pitch) {
    try {
        auto state = std::make_unique<State>();
        state->channels = channels;
        state->touch.setSampleRate(std::clamp(samplesPerSecond, kLeastRate, kGreatestRate));
        state->touch.setChannels(channels);
        state->touch.setTempo(tempo);
        state->touch.setPitch(pitch);
        // The full search takes twice the time of the whole, for a residue of tones that lies 0 to
        // 4 dB lower, at -35 to -45 dB.
        state->touch.setSetting(SETTING_USE_QUICKSEEK, 1);
        // Guards against aliases of another rate, and there is none where the pitch stays.
        if (pitch == 1) state->touch.setSetting(SETTING_USE_AA_FILTER, 0);
        state_ = std::move(state);
    } catch (const std::exception&) {
        // Without a state nothing can be added.
    }
}

TimeStretch::~TimeStretch() = default;

bool TimeStretch::Add(std::span<const float> frames, std::vector<float>& stretched) try {
    if (!state_) return false;
    const std::size_t piece = kFramesAtOnce * state_->channels;
    while (!frames.empty()) {
        const std::span<const float> some = frames.first(std::min(piece, frames.size()));
        state_->touch.putSamples(some.data(),
                                 static_cast<unsigned>(some.size() / state_->channels));
        state_->TakeReady(stretched);
        frames = frames.subspan(some.size());
    }
    return true;
} catch (const std::exception&) {
    return false;
}

bool TimeStretch::Finish(std::vector<float>& stretched) try {
    if (!state_) return false;
    state_->touch.flush();
    state_->TakeReady(stretched);
    return true;
} catch (const std::exception&) {
    return false;
}

}  // namespace sonavel
