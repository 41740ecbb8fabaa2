#include "platform/headless/wave_pump.h"

#include <algorithm>
#include <limits>

namespace sonavel {

void WavePump::Remove(PumpedWaveDevice* device) {
    std::erase(devices_, device);
}

bool WavePump::PumpAll() {
    bool busy = false;
    const std::vector<PumpedWaveDevice*> devices = devices_;
    for (PumpedWaveDevice* const device : devices) {
        if (std::ranges::find(devices_, device) != devices_.end()) busy |= device->Pump();
    }
    return busy;
}

void WaveClock::Start(const WaveFormat& format) {
    bytesPerSecond_ = std::max(1.0, 1.0 * format.BlockAlign() * format.samplesPerSecond);
    blockStart_ = std::chrono::steady_clock::now();
}

std::size_t WaveClock::BlocksAPump() const {
    return pace_ == WavePace::kAsFastAsAsked ? 1 : std::numeric_limits<std::size_t>::max();
}

bool WaveClock::TakeIfDue(std::size_t blockBytes) {
    if (pace_ == WavePace::kAsFastAsAsked) return true;
    const std::chrono::duration<double> length(static_cast<double>(blockBytes) / bytesPerSecond_);
    const auto blockEnd =
        blockStart_ + std::chrono::duration_cast<std::chrono::steady_clock::duration>(length);
    if (std::chrono::steady_clock::now() < blockEnd) return false;
    blockStart_ = blockEnd;
    return true;
}

}  // namespace sonavel
