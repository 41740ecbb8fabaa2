#include "platform/portaudio/portaudio_library.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

namespace sonavel {
namespace {

// Below it, an ordinary desktop's scheduling shows as clicks.
constexpr PaTime kLeastLatencySeconds = 0.1;
constexpr PaTime kShortLatencySeconds = 0.05;

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
    // Of a device that is listed and cannot be opened, as when its sound server has gone.
    {paBadIODeviceCombination, kWaveNoDriver},
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

PaTime LatencyOf(const PaDeviceInfo& info, StreamDirection direction, StreamLatency latency) {
    if (latency == StreamLatency::kShort)
        return std::max(kShortLatencySeconds, info.defaultLowOutputLatency);
    return std::max(kLeastLatencySeconds, direction == StreamDirection::kOutput
                                              ? info.defaultHighOutputLatency
                                              : info.defaultHighInputLatency);
}

bool IsForLackOfADevice(WaveResult result) {
    return result == kWaveNoDriver || result == kWaveBadDeviceId || result == kWaveNotEnabled;
}

PaDeviceIndex DefaultDevice(StreamDirection direction) {
    return direction == StreamDirection::kOutput ? Pa_GetDefaultOutputDevice()
                                                 : Pa_GetDefaultInputDevice();
}

// Floats are converted by the library, clipped and dithered, where the device takes none.
PaSampleFormat SampleFormatOf(const WaveFormat& format) {
    if (format.bitsPerSample == 32) return paFloat32;
    return format.bitsPerSample == 8 ? paUInt8 : paInt16;
}

}  // namespace

WaveResult ToWaveResult(PaError error) {
    if (error >= 0) return kWaveSuccess;
    const auto* const found = std::ranges::find(kErrors, error, &ErrorPair::error);
    return found == std::end(kErrors) ? kWaveUnexpectedError : found->result;
}

PaError PortAudioLibrary::EnsureStarted() {
    if (started_) return paNoError;
    const SilencedStandardError silenced;
    const PaError error = Pa_Initialize();
    started_ = error == paNoError;
    doubtful_ = false;
    return error;
}

// False when nothing new can be learnt now.
bool PortAudioLibrary::Restart() {
    if (openStreams_ > 0) return false;
    if (started_) Pa_Terminate();
    started_ = false;
    return EnsureStarted() == paNoError;
}

WaveDeviceList PortAudioLibrary::Devices(StreamDirection direction) {
    const std::lock_guard lock(mutex_);
    WaveDeviceList list;
    if (EnsureStarted() != paNoError) return list;
    for (PaDeviceIndex id = 0; id < Pa_GetDeviceCount(); ++id) {
        const PaDeviceInfo* const info = Pa_GetDeviceInfo(id);
        if (info && ChannelsOf(*info, direction) > 0) list.devices.push_back({id, info->name});
    }
    list.hasDefault = DefaultDevice(direction) != paNoDevice;
    return list;
}

void PortAudioLibrary::ListAnew() {
    const std::lock_guard lock(mutex_);
    Restart();
}

void PortAudioLibrary::DoubtList() {
    const std::lock_guard lock(mutex_);
    doubtful_ = true;
}

WaveResult PortAudioLibrary::Open(PortAudioStream& stream, const StreamRequest& request) {
    const std::lock_guard lock(mutex_);
    const bool fresh = !started_;
    WaveResult result = ToWaveResult(EnsureStarted());
    if (result != kWaveSuccess) return result;
    bool listed = fresh || (doubtful_ && Restart());
    result = TryOpen(stream, request);
    if (IsForLackOfADevice(result) && !listed && Restart()) result = TryOpen(stream, request);
    return result;
}

WaveResult PortAudioLibrary::TryOpen(PortAudioStream& stream, const StreamRequest& request) {
    const StreamDirection direction = request.direction;
    const bool wantsDefault = request.deviceId == kDefaultWaveDevice;
    const PaDeviceIndex id = wantsDefault ? DefaultDevice(direction) : request.deviceId;
    const PaDeviceInfo* const info = id >= 0 ? Pa_GetDeviceInfo(id) : nullptr;
    if (!info || ChannelsOf(*info, direction) == 0)
        return wantsDefault ? kWaveNoDriver : kWaveBadDeviceId;
    PaStreamParameters parameters{};
    parameters.device = id;
    parameters.channelCount = request.format.channels;
    parameters.sampleFormat = SampleFormatOf(request.format);
    parameters.suggestedLatency = LatencyOf(*info, direction, request.latency);
    const bool isInput = direction == StreamDirection::kInput;
    const PaError error = Pa_OpenStream(
        &stream.handle, isInput ? &parameters : nullptr, isInput ? nullptr : &parameters,
        request.format.samplesPerSecond, paFramesPerBufferUnspecified,
        parameters.sampleFormat == paFloat32 ? paNoFlag : paClipOff | paDitherOff, request.callback,
        &stream);
    if (error != paNoError) {
        stream.handle = nullptr;
        return ToWaveResult(error);
    }
    Pa_SetStreamFinishedCallback(stream.handle, request.finished);
    ++openStreams_;
    return kWaveSuccess;
}

WaveResult PortAudioLibrary::Start(PortAudioStream& stream) {
    stream.running = true;
    const PaError error = Pa_StartStream(stream.handle);
    if (error == paNoError) return kWaveSuccess;
    stream.running = false;
    DoubtList();
    return ToWaveResult(error);
}

WaveResult PortAudioLibrary::Close(PortAudioStream& stream) {
    if (!stream.handle) return kWaveSuccess;
    stream.running = false;
    // Outside the lock: this is what hangs with the device.
    PaError stopped = paNoError;
    if (Pa_IsStreamStopped(stream.handle) == 0) stopped = Pa_AbortStream(stream.handle);
    const std::lock_guard lock(mutex_);
    const PaError closed = Pa_CloseStream(stream.handle);
    stream.handle = nullptr;
    --openStreams_;
    return ToWaveResult(stopped != paNoError ? stopped : closed);
}

void PortAudioLibrary::End() {
    const std::lock_guard lock(mutex_);
    if (!started_ || openStreams_ > 0) return;
    Pa_Terminate();
    started_ = false;
}

}  // namespace sonavel
