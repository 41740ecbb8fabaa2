#include "platform/headless/headless_wave_devices.h"

#include <chrono>
#include <thread>
#include <utility>

#include "platform/headless/headless_wave_in.h"
#include "platform/headless/headless_wave_out.h"

namespace sonavel {

HeadlessWaveDevices::HeadlessWaveDevices(WavePace pace, std::filesystem::path playedFile)
    : pace_(pace), playedFile_(std::move(playedFile)), pump_(std::make_shared<WavePump>()) {}

std::unique_ptr<WaveOut> HeadlessWaveDevices::CreateOut() {
    std::unique_ptr<WaveSink> sink;
    if (playedFile_.empty()) {
        sink = std::make_unique<NullWaveSink>();
    } else {
        sink = std::make_unique<WavFileSink>(playedFile_);
    }
    return std::make_unique<HeadlessWaveOut>(pump_, pace_, std::move(sink));
}

std::unique_ptr<WaveIn> HeadlessWaveDevices::CreateIn() {
    return std::make_unique<HeadlessWaveIn>(pump_, pace_);
}

WaveDeviceList HeadlessWaveDevices::Outputs() const {
    return {{{0, playedFile_.empty() ? "No output" : playedFile_.string()}}, true};
}

WaveDeviceList HeadlessWaveDevices::Inputs() const {
    return {{{0, "Silence"}}, true};
}

void HeadlessWaveDevices::PumpUntilIdle() {
    while (Pump()) {
        if (pace_ == WavePace::kRealTime) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

}  // namespace sonavel
