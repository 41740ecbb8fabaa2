#include "platform/portaudio/portaudio_wave_devices.h"

#include <utility>

#include "platform/portaudio/portaudio_frame_out.h"
#include "platform/portaudio/portaudio_wave_in.h"
#include "platform/portaudio/portaudio_wave_out.h"

namespace sonavel {

PortAudioWaveDevices::PortAudioWaveDevices(std::function<void(std::function<void()>)> post)
    : session_(std::make_shared<PortAudioSession>(std::move(post))) {}

PortAudioWaveDevices::~PortAudioWaveDevices() = default;

std::unique_ptr<WaveOut> PortAudioWaveDevices::CreateOut() {
    return std::make_unique<PortAudioWaveOut>(session_);
}

std::unique_ptr<WaveIn> PortAudioWaveDevices::CreateIn() {
    return std::make_unique<PortAudioWaveIn>(session_);
}

std::unique_ptr<FrameOut> PortAudioWaveDevices::CreateFrameOut() {
    return std::make_unique<PortAudioFrameOut>(session_);
}

WaveDeviceList PortAudioWaveDevices::Outputs() const {
    return session_->Devices(StreamDirection::kOutput);
}

WaveDeviceList PortAudioWaveDevices::Inputs() const {
    return session_->Devices(StreamDirection::kInput);
}

void PortAudioWaveDevices::ListAnew() {
    session_->ListAnew();
}

PortAudioWaveDevices::Ending PortAudioWaveDevices::End() {
    session_->End();
    return session_->HasCallsLeft() ? Ending::kHangs : Ending::kClean;
}

}  // namespace sonavel
