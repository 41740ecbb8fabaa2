#include "libraries/resampler.h"

#include <soxr.h>

#include <algorithm>
#include <cstddef>
#include <new>

namespace sonavel {
namespace {

// The input is handed over in pieces of this size, so that the output's room stays small.
constexpr std::size_t kFramesAtOnce = 32768;

}  // namespace

struct Resampler::State {
    soxr_t soxr = nullptr;
    unsigned channels = 1;
    std::vector<float> room;  // for what one piece can make ready

    ~State() { soxr_delete(soxr); }

    // `in` null tells that the sound has ended. Appends what comes; sets `done` to the frames
    // appended.
    bool Process(const float* in, std::size_t frames, std::vector<float>& out, std::size_t& done) {
        std::size_t taken = 0;
        const soxr_error_t error =
            soxr_process(soxr, in, frames, &taken, room.data(), room.size() / channels, &done);
        if (error != nullptr || taken != frames) return false;
        try {
            out.insert(out.end(), room.begin(),
                       room.begin() + static_cast<std::ptrdiff_t>(done * channels));
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }
};

Resampler::Resampler(unsigned channels, double fromRate, double toRate)
    : state_(std::make_unique<State>()) {
    state_->channels = channels;
    try {
        state_->room.resize((static_cast<std::size_t>(kFramesAtOnce * toRate / fromRate) + 16) *
                            channels);
    } catch (const std::bad_alloc&) {
        return;
    }
    const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, 0);
    const soxr_runtime_spec_t runtime = soxr_runtime_spec(0);  // a core for each channel
    soxr_error_t error = nullptr;
    state_->soxr = soxr_create(fromRate, toRate, channels, &error, &io, &quality, &runtime);
}

Resampler::~Resampler() = default;

bool Resampler::Add(std::span<const float> frames, std::vector<float>& resampled) {
    if (!state_->soxr) return false;
    const std::size_t piece = kFramesAtOnce * state_->channels;
    while (!frames.empty()) {
        const std::span<const float> some = frames.first(std::min(piece, frames.size()));
        std::size_t done = 0;
        if (!state_->Process(some.data(), some.size() / state_->channels, resampled, done))
            return false;
        frames = frames.subspan(some.size());
    }
    return true;
}

bool Resampler::Finish(std::vector<float>& resampled) {
    if (!state_->soxr) return false;
    std::size_t done = 0;
    do {
        if (!state_->Process(nullptr, 0, resampled, done)) return false;
    } while (done > 0);
    return true;
}

}  // namespace sonavel
