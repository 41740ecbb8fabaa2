#include "sound/wave.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "sound/multimedia_errors.h"

namespace sonavel {

CWave::CWave(UserPrompts& prompts, ProgressFactory& progress)
    : prompts_(prompts), progress_(progress) {}

CWave::~CWave() = default;

bool CWave::Create(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond,
                   std::uint32_t frames) {
    const PcmFormat format = MakePcmFormat(channels, bits, samplesPerSecond);
    const std::uint64_t bytes = std::uint64_t{frames} * format.blockAlign;
    if (bytes > kMaxSoundBytes || !buffer_.AllocBuffer(bytes)) return false;
    format_ = format;
    markers_.Clear();
    return true;
}

void CWave::Adopt(SoundCopy&& sound) {
    format_ = sound.format;
    buffer_ = std::move(sound.buffer);
    markers_ = std::move(sound.markers);
    // What the move left behind may be the old sound, which nobody needs any more.
    sound.buffer.FreeBuffer();
}

std::optional<SoundCopy> CWave::CopySound() const {
    SoundCopy copy{format_, {}, markers_};
    if (!copy.buffer.CopyFrom(buffer_)) return std::nullopt;
    return copy;
}

std::uint32_t CWave::GetFrameCount() const {
    return format_.blockAlign ? GetDataSize() / format_.blockAlign : 0;
}

unsigned CWave::GetBytesPerSample() const {
    return format_.channels ? format_.blockAlign / format_.channels : 0;
}

double CWave::GetDuration() const {
    if (format_.formatTag != kPcmFormatTag || format_.averageBytesPerSecond == 0) return 0;
    return static_cast<double>(GetDataSize()) / format_.averageBytesPerSecond;
}

std::uint32_t CWave::GetRate() const {
    if (!HasData()) return format_.samplesPerSecond;
    return static_cast<std::uint32_t>(std::uint64_t{GetFrameCount()} *
                                      format_.averageBytesPerSecond / GetDataSize());
}

std::uint32_t CWave::ByteOffset(std::uint32_t frame) const {
    const std::uint32_t frames = GetFrameCount();
    if (frames == 0) return 0;
    return static_cast<std::uint32_t>(std::uint64_t{frame} * GetDataSize() / frames);
}

std::int32_t CWave::GetSample(unsigned channel, std::uint32_t frame) const {
    const std::uint64_t offset =
        std::uint64_t{channel} * GetBytesPerSample() + std::uint64_t{frame} * format_.blockAlign;
    if (offset >= buffer_.Size()) return 0;
    const std::uint8_t* sample = buffer_.Data() + offset;
    if (format_.bitsPerSample == 8) return 128 - *sample;
    const unsigned high = offset + 1 < buffer_.Size() ? sample[1] : 0u;
    return static_cast<std::int16_t>(sample[0] | high << 8);
}

void CWave::SetSample(unsigned channel, std::uint32_t frame, std::int32_t value) {
    const unsigned bits = format_.bitsPerSample;
    const std::uint64_t offset =
        std::uint64_t{frame} * format_.blockAlign + std::uint64_t{bits} * channel / 8;
    if (offset + bits / 8 > buffer_.Size()) return;
    const auto stored = static_cast<std::uint32_t>(bits == 8 ? 128 - std::int64_t{value} : value);
    for (unsigned byte = 0; byte < bits / 8; ++byte)
        buffer_.Data()[offset + byte] = static_cast<std::uint8_t>(stored >> 8 * byte);
}

std::uint32_t CWave::GetMaxValue(unsigned bits) const {
    switch (bits ? bits : format_.bitsPerSample) {
        case 16:
            return 0xFFFF;
        case 32:
            return 0xFFFFFFFF;
        default:
            return 0xFF;
    }
}

bool CWave::InsertFrames(std::uint32_t frame, std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return true;
    frame = std::min(frame, GetFrameCount());
    // Behind the last frame means behind all data, a cut last frame included.
    const std::size_t oldSize = buffer_.Size();
    const std::size_t offset = frame == GetFrameCount() ? oldSize : ByteOffset(frame);
    if (bytes.size() > kMaxSoundBytes - oldSize) return false;
    if (!buffer_.ReAllocBuffer(oldSize + bytes.size())) return false;
    std::uint8_t* gap = buffer_.Data() + offset;
    std::memmove(gap + bytes.size(), gap, oldSize - offset);
    std::memcpy(gap, bytes.data(), bytes.size());
    const std::size_t blockAlign = std::max<std::size_t>(format_.blockAlign, 1);
    markers_.ShiftForInsertion(frame, static_cast<std::uint32_t>(bytes.size() / blockAlign));
    modified_ = true;
    return true;
}

bool CWave::RemoveFrames(std::uint32_t startFrame, std::uint32_t endFrame) {
    endFrame = std::min(endFrame, GetFrameCount());
    if (startFrame >= endFrame) return false;
    const std::size_t start = ByteOffset(startFrame);
    const std::size_t end = ByteOffset(endFrame);
    const std::size_t kept = buffer_.Size() - (end - start);
    std::memmove(buffer_.Data() + start, buffer_.Data() + end, buffer_.Size() - end);
    if (!buffer_.ReAllocBuffer(kept)) return false;
    markers_.ShiftForRemoval(startFrame, endFrame);
    modified_ = true;
    return true;
}

bool CWave::GrowWithSilence(std::uint32_t frames) {
    const std::uint64_t bytes = std::uint64_t{frames} * format_.blockAlign;
    const std::size_t oldSize = buffer_.Size();
    if (bytes <= oldSize) return true;
    if (bytes > kMaxSoundBytes || !buffer_.ReAllocBuffer(bytes)) return false;
    std::memset(buffer_.Data() + oldSize, format_.bitsPerSample == 8 ? 128 : 0, bytes - oldSize);
    modified_ = true;
    return true;
}

std::uint32_t CWave::GetMarkerAfter(std::uint32_t frame) const {
    return markers_.After(frame, GetFrameCount());
}

void CWave::ReportError(std::string_view text) {
    lastError_ = text;
    prompts_.ShowMessage(text);
}

void CWave::ReportInStatus(std::string_view text) {
    lastError_ = text;
    prompts_.ShowStatus(text);
}

void CWave::ReportDeviceError(int code) {
    if (const std::string_view text = MultimediaErrorText(code); !text.empty()) lastError_ = text;
    if (!lastError_.empty()) prompts_.ShowMessage(lastError_);
}

}  // namespace sonavel
