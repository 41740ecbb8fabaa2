#include "app/preferences/test_tone.h"

#include <cmath>
#include <numbers>

#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr std::uint32_t kRate = 44100;
constexpr std::uint32_t kFrames = kRate;
constexpr std::uint32_t kFadeFrames = kRate / 50;
constexpr double kHertz = 440;
constexpr double kLevel = 8192;  // a quarter of full scale

double Fade(std::uint32_t frame) {
    const std::uint32_t fromEdge = std::min(frame, kFrames - 1 - frame);
    return std::min(1.0, static_cast<double>(fromEdge) / kFadeFrames);
}

}  // namespace

TestTone::TestTone(WaveDevices& devices, QObject* parent)
    : QObject(parent), player_(prompts_, progress_, devices) {
    player_.SetObserver(this);
    prompts_.onNote = [this] { Q_EMIT Ended(); };
    MakeTone();
}

void TestTone::MakeTone() {
    if (!player_.Create(2, 16, kRate, kFrames)) return;
    constexpr double kStep = 2 * std::numbers::pi * kHertz / kRate;
    for (std::uint32_t frame = 0; frame < kFrames; ++frame) {
        const auto value =
            static_cast<int>(std::lround(kLevel * Fade(frame) * std::sin(kStep * frame)));
        player_.SetSample(0, frame, value);
        player_.SetSample(1, frame, value);
    }
}

bool TestTone::Start(int deviceId, int blockFrames) {
    prompts_.note.clear();
    player_.SetPlaybackDevice(deviceId);
    player_.SetPlaybackBlockFrames(blockFrames);
    return player_.Play(0);
}

void TestTone::Stop() {
    player_.Stop(CWavePlayer::StopReport::kSilent);
}

QString TestTone::Problem() const {
    return Utf8Text(prompts_.note);
}

}  // namespace sonavel
