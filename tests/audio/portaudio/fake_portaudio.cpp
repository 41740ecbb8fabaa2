#include "fake_portaudio.h"

#include <algorithm>
#include <utility>

namespace sonavel {

FakePortAudio& FakePortAudio::Get() {
    static FakePortAudio library;
    return library;
}

void FakePortAudio::Reset() {
    const std::lock_guard lock(mutex_);
    failures_.clear();
    hanging_.clear();
    calls_.clear();
    devices_ = 1;
    listed_ = 0;
}

void FakePortAudio::SetDevices(int count) {
    const std::lock_guard lock(mutex_);
    devices_ = count;
}

void FakePortAudio::Fail(const std::string& call, PaError error) {
    const std::lock_guard lock(mutex_);
    failures_[call] = error;
}

void FakePortAudio::Hang(const std::string& call) {
    const std::lock_guard lock(mutex_);
    hanging_.insert(call);
}

void FakePortAudio::Release() {
    const std::lock_guard lock(mutex_);
    hanging_.clear();
    released_.notify_all();
}

FakePortAudio::Heard FakePortAudio::CallBack(const std::vector<std::uint8_t>& in,
                                             PaStreamCallbackFlags flags) {
    constexpr unsigned long kFrames = 10;
    Heard heard;
    heard.bytes.assign(kFrames * outputFrameBytes, 0xEE);
    const PaStreamCallbackTimeInfo time{};
    heard.result = last_->callback(in.empty() ? nullptr : in.data(), heard.bytes.data(),
                                   in.empty() ? kFrames : in.size(), &time, flags, last_->userData);
    return heard;
}

void FakePortAudio::Finish() {
    last_->over = true;
    last_->finished(last_->userData);
}

int FakePortAudio::CountOf(const std::string& call) {
    const std::lock_guard lock(mutex_);
    return calls_[call];
}

int FakePortAudio::OpenStreams() {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(open_.size());
}

PaError FakePortAudio::Call(const std::string& name) {
    std::unique_lock lock(mutex_);
    ++calls_[name];
    released_.wait(lock, [&] { return !hanging_.contains(name); });
    const auto failure = failures_.find(name);
    return failure == failures_.end() ? paNoError : failure->second;
}

FakePortAudio::Stream* FakePortAudio::Open(PaStreamCallback* callback, void* userData) {
    const std::lock_guard lock(mutex_);
    last_ = new Stream{.callback = callback, .userData = userData};
    open_.push_back(last_);
    return last_;
}

void FakePortAudio::Close(Stream* stream) {
    const std::lock_guard lock(mutex_);
    std::erase(open_, stream);
    delete stream;
}

int FakePortAudio::ListedDevices() {
    const std::lock_guard lock(mutex_);
    return listed_;
}

void FakePortAudio::List() {
    const std::lock_guard lock(mutex_);
    listed_ = devices_;
}

bool FakePortAudio::IsStopped(Stream* stream) {
    const std::lock_guard lock(mutex_);
    return stream->stopped;
}

void FakePortAudio::SetStopped(Stream* stream, bool stopped) {
    const std::lock_guard lock(mutex_);
    stream->stopped = stopped;
}

}  // namespace sonavel

// --- The functions of the library that the program calls

using sonavel::FakePortAudio;

namespace {

FakePortAudio& Library() {
    return FakePortAudio::Get();
}

FakePortAudio::Stream* Of(PaStream* stream) {
    return static_cast<FakePortAudio::Stream*>(stream);
}

}  // namespace

PaError Pa_Initialize() {
    const PaError error = Library().Call("Pa_Initialize");
    if (error == paNoError) Library().List();
    return error;
}

PaError Pa_Terminate() {
    return Library().Call("Pa_Terminate");
}

PaDeviceIndex Pa_GetDeviceCount() {
    return Library().ListedDevices();
}

PaDeviceIndex Pa_GetDefaultInputDevice() {
    return Library().ListedDevices() > 0 ? 0 : paNoDevice;
}

PaDeviceIndex Pa_GetDefaultOutputDevice() {
    return Library().ListedDevices() > 0 ? 0 : paNoDevice;
}

const PaDeviceInfo* Pa_GetDeviceInfo(PaDeviceIndex device) {
    static const PaDeviceInfo info = [] {
        PaDeviceInfo both{};
        both.name = "card";
        both.maxInputChannels = 2;
        both.maxOutputChannels = 2;
        return both;
    }();
    return device < Library().ListedDevices() ? &info : nullptr;
}

PaError Pa_OpenStream(PaStream** stream, const PaStreamParameters*, const PaStreamParameters*,
                      double, unsigned long, PaStreamFlags, PaStreamCallback* callback,
                      void* userData) {
    const PaError error = Library().Call("Pa_OpenStream");
    if (error == paNoError) *stream = Library().Open(callback, userData);
    return error;
}

PaError Pa_SetStreamFinishedCallback(PaStream* stream, PaStreamFinishedCallback* finished) {
    Of(stream)->finished = finished;
    return paNoError;
}

PaError Pa_StartStream(PaStream* stream) {
    const PaError error = Library().Call("Pa_StartStream");
    if (error == paNoError) Library().SetStopped(Of(stream), false);
    return error;
}

PaError Pa_IsStreamStopped(PaStream* stream) {
    return Library().IsStopped(Of(stream)) ? 1 : 0;
}

PaError Pa_AbortStream(PaStream* stream) {
    const PaError error = Library().Call("Pa_AbortStream");
    Library().SetStopped(Of(stream), true);
    if (!std::exchange(Of(stream)->over, true)) Of(stream)->finished(Of(stream)->userData);
    return error;
}

PaError Pa_CloseStream(PaStream* stream) {
    const PaError error = Library().Call("Pa_CloseStream");
    Library().Close(Of(stream));
    return error;
}
