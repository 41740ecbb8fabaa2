#include "platform/portaudio/portaudio_session.h"

#include <utility>

namespace sonavel {

PortAudioSession::PortAudioSession(PostToUi post, DeviceTimes times)
    : calls_(times.answer), notifier_(std::move(post), times.watch) {}

PortAudioSession::~PortAudioSession() {
    End();
}

void PortAudioSession::End() {
    calls_.Run(
        Scope::kLibrary, [library = library_] { library->End(); }, nullptr);
}

// The answer is shared with the job, which may give it when nobody is there any more.
WaveResult PortAudioSession::Ask(Scope scope, std::function<WaveResult()> call,
                                 DeviceThread::Job afterwards) {
    const auto answer = std::make_shared<WaveResult>(kWaveNoAnswer);
    const auto job = [answer, call = std::move(call)] { *answer = call(); };
    return calls_.Run(scope, job, std::move(afterwards)) ? *answer : kWaveNoAnswer;
}

WaveDeviceList PortAudioSession::Devices(StreamDirection direction) {
    const auto list = std::make_shared<WaveDeviceList>();
    WaveDeviceList& known = known_[direction == StreamDirection::kInput ? 0 : 1];
    const auto job = [library = library_, list, direction] { *list = library->Devices(direction); };
    if (calls_.Run(Scope::kLibrary, job, nullptr)) known = *list;
    return known;
}

void PortAudioSession::ListAnew() {
    calls_.Run(
        Scope::kLibrary, [library = library_] { library->ListAnew(); }, nullptr);
}

WaveResult PortAudioSession::Open(const std::shared_ptr<PortAudioStream>& stream,
                                  const StreamRequest& request) {
    return Ask(
        Scope::kLibrary,
        [library = library_, stream, request] { return library->Open(*stream, request); },
        ClosingOf(stream));
}

WaveResult PortAudioSession::Start(const std::shared_ptr<PortAudioStream>& stream) {
    return Ask(
        Scope::kStream, [library = library_, stream] { return library->Start(*stream); },
        ClosingOf(stream));
}

WaveResult PortAudioSession::Close(const std::shared_ptr<PortAudioStream>& stream) {
    return Ask(Scope::kStream, [library = library_, stream] { return library->Close(*stream); });
}

void PortAudioSession::CloseLost(const std::shared_ptr<PortAudioStream>& stream) {
    calls_.Leave(ClosingOf(stream));
}

DeviceThread::Job PortAudioSession::ClosingOf(
    const std::shared_ptr<PortAudioStream>& stream) const {
    return [library = library_, stream] {
        library->Close(*stream);
        library->DoubtList();
    };
}

}  // namespace sonavel
