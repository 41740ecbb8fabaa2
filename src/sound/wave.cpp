#include "sound/wave.h"

#include "sound/multimedia_errors.h"

namespace sonavel {

CWave::CWave(UserPrompts& prompts, ProgressFactory& progress)
    : prompts_(prompts), progress_(progress) {}

CWave::~CWave() = default;

// --- Changes

void CWave::SetRate(std::uint32_t samplesPerSecond) {
    modified_ |= samplesPerSecond != GetSamplesPerSecond();
    Sound::SetRate(samplesPerSecond);
}

bool CWave::ConvertBits(unsigned bits) {
    return bits == GetBits() || Changed(Sound::ConvertBits(bits));
}

bool CWave::ConvertChannels(unsigned channels, ChannelChoice choice) {
    return channels == GetChannels() || Changed(Sound::ConvertChannels(channels, choice));
}

bool CWave::ConvertFormat(unsigned channels, ChannelChoice choice, unsigned bits) {
    const bool same = channels == GetChannels() && bits == GetBits();
    return same || Changed(Sound::ConvertFormat(channels, choice, bits));
}

bool CWave::InsertFrames(std::uint32_t frame, std::span<const std::uint8_t> bytes) {
    return bytes.empty() || Changed(Sound::InsertFrames(frame, bytes));
}

bool CWave::RemoveFrames(std::uint32_t startFrame, std::uint32_t endFrame) {
    return Changed(Sound::RemoveFrames(startFrame, endFrame));
}

bool CWave::GrowWithSilence(std::uint32_t frames) {
    const std::uint64_t before = GetDataSize();
    const bool grown = Sound::GrowWithSilence(frames);
    modified_ |= GetDataSize() != before;
    return grown;
}

// --- Reports

bool CWave::ReportOutcome(const Outcome& outcome) {
    if (outcome) return true;
    lastError_ = outcome.Reason();
    if (outcome.IsCancelled() || outcome.IsQuiet())
        prompts_.ShowStatus(lastError_);
    else
        prompts_.ShowMessage(lastError_);
    return false;
}

void CWave::ReportError(std::string_view text) {
    lastError_ = text;
    prompts_.ShowMessage(text);
}

void CWave::ReportDeviceError(int code) {
    if (const std::string_view text = MultimediaErrorText(code); !text.empty()) lastError_ = text;
    if (!lastError_.empty()) prompts_.ShowMessage(lastError_);
}

}  // namespace sonavel
