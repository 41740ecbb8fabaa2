#include "platform/portaudio/portaudio_session.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace sonavel {
namespace {

// Below it, an ordinary desktop's scheduling shows as clicks.
constexpr PaTime kLeastLatencySeconds = 0.1;

// The sound libraries report every device that they do not find on the standard error stream.
class SilencedStandardError {
  public:
    SilencedStandardError() : saved_(dup(STDERR_FILENO)) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (saved_ >= 0 && nowhere >= 0) dup2(nowhere, STDERR_FILENO);
        if (nowhere >= 0) close(nowhere);
    }
    ~SilencedStandardError() {
        if (saved_ < 0) return;
        dup2(saved_, STDERR_FILENO);
        close(saved_);
    }
    SilencedStandardError(const SilencedStandardError&) = delete;
    SilencedStandardError& operator=(const SilencedStandardError&) = delete;

  private:
    int saved_;
};

struct ErrorPair {
    PaError error;
    WaveResult result;
};

constexpr ErrorPair kErrors[] = {
    {paNoError, kWaveSuccess},
    {paNotInitialized, kWaveNotEnabled},
    {paUnanticipatedHostError, kWaveNotEnabled},
    {paInvalidChannelCount, kWaveNotSupported},
    {paInvalidSampleRate, kWaveNotSupported},
    {paInvalidDevice, kWaveBadDeviceId},
    {paInvalidFlag, 10},
    {paSampleFormatNotSupported, kWaveNotSupported},
    {paBadIODeviceCombination, kWaveNotSupported},
    {paInsufficientMemory, kWaveNoMemory},
    {paBufferTooBig, 9},
    {paBufferTooSmall, 9},
    {paNullCallback, 11},
    {paBadStreamPtr, kWaveInvalidHandle},
    {paTimedOut, 20},
    {paDeviceUnavailable, kWaveAllocated},
    {paIncompatibleHostApiSpecificStreamInfo, 11},
    {paStreamIsStopped, 12},
    {paStreamIsNotStopped, 12},
    {paHostApiNotFound, kWaveNoDriver},
    {paInvalidHostApi, kWaveNoDriver},
    {paBadBufferPtr, 11},
};

int ChannelsOf(const PaDeviceInfo& info, StreamDirection direction) {
    return direction == StreamDirection::kOutput ? info.maxOutputChannels : info.maxInputChannels;
}

PaTime LatencyOf(const PaDeviceInfo& info, StreamDirection direction) {
    return std::max(kLeastLatencySeconds, direction == StreamDirection::kOutput
                                              ? info.defaultHighOutputLatency
                                              : info.defaultHighInputLatency);
}

PaDeviceIndex DefaultDevice(StreamDirection direction) {
    return direction == StreamDirection::kOutput ? Pa_GetDefaultOutputDevice()
                                                 : Pa_GetDefaultInputDevice();
}

}  // namespace

WaveResult ToWaveResult(PaError error) {
    if (error >= 0) return kWaveSuccess;
    const auto* const found = std::ranges::find(kErrors, error, &ErrorPair::error);
    return found == std::end(kErrors) ? kWaveUnexpectedError : found->result;
}

PortAudioSession::PortAudioSession(PostToUi post) : notifier_(std::move(post)) {}

PortAudioSession::~PortAudioSession() {
    if (started_) Pa_Terminate();
}

PaError PortAudioSession::Start() {
    if (started_) return paNoError;
    const SilencedStandardError silenced;
    const PaError error = Pa_Initialize();
    started_ = error == paNoError;
    return error;
}

std::vector<WaveDeviceInfo> PortAudioSession::Devices(StreamDirection direction) {
    std::vector<WaveDeviceInfo> devices;
    if (Start() != paNoError) return devices;
    for (PaDeviceIndex id = 0; id < Pa_GetDeviceCount(); ++id) {
        const PaDeviceInfo* const info = Pa_GetDeviceInfo(id);
        if (info && ChannelsOf(*info, direction) > 0) devices.push_back({id, info->name});
    }
    return devices;
}

PortAudioSession::StreamSettings PortAudioSession::Settings(int deviceId, const WaveFormat& format,
                                                            StreamDirection direction) {
    StreamSettings settings;
    settings.result = ToWaveResult(Start());
    if (settings.result != kWaveSuccess) return settings;
    const PaDeviceIndex id = deviceId == kDefaultWaveDevice ? DefaultDevice(direction) : deviceId;
    const PaDeviceInfo* const info = id >= 0 ? Pa_GetDeviceInfo(id) : nullptr;
    if (!info || ChannelsOf(*info, direction) == 0) {
        settings.result = deviceId == kDefaultWaveDevice ? kWaveNoDriver : kWaveBadDeviceId;
        return settings;
    }
    settings.parameters.device = id;
    settings.parameters.channelCount = format.channels;
    settings.parameters.sampleFormat = format.bitsPerSample == 8 ? paUInt8 : paInt16;
    settings.parameters.suggestedLatency = LatencyOf(*info, direction);
    return settings;
}

void AbortStream(PaStream* stream) {
    if (Pa_IsStreamStopped(stream) == 0) Pa_AbortStream(stream);
}

WaveResult EnsureStarted(PaStream* stream) {
    if (Pa_IsStreamActive(stream) == 1) return kWaveSuccess;
    AbortStream(stream);
    return ToWaveResult(Pa_StartStream(stream));
}

}  // namespace sonavel
