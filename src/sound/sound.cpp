#include "sound/sound.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "sound/sample_types.h"

namespace sonavel {
namespace {

template <class Type>
std::int32_t WholeValueOf(typename Type::Stored stored) {
    if constexpr (kHoldsWholeNumbers<Type>) return Type::ValueOf(stored);
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    const double value = std::clamp<double>(Type::ValueOf(stored), -kMost, kMost);
    return static_cast<std::int32_t>(std::lround(value));
}

}  // namespace

std::uint64_t MostSoundBytes(const PcmFormat& format) {
    if (AreWholeNumbers(format.bitsPerSample)) return kMaxSoundBytes;
    return std::uint64_t{std::numeric_limits<std::uint32_t>::max()} * format.blockAlign;
}

Sound::Sound(const PcmFormat& format, SoundBuffer samples, MarkerList markers)
    : format_(format), samples_(std::move(samples)), markers_(std::move(markers)) {}

Result<Sound> Sound::Copy() const {
    SoundBuffer samples;
    if (!samples.CopyFrom(samples_)) return Failed(failure::kMemory);
    return Sound(format_, std::move(samples), markers_);
}

bool Sound::Create(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond,
                   std::uint32_t frames) {
    const PcmFormat format = MakeSoundFormat(channels, bits, samplesPerSecond);
    const std::uint64_t bytes = std::uint64_t{frames} * format.blockAlign;
    if (bytes > MostSoundBytes(format) || !samples_.AllocBuffer(bytes)) return false;
    format_ = format;
    markers_.Clear();
    return true;
}

std::uint32_t Sound::GetFrameCount() const {
    return format_.blockAlign ? static_cast<std::uint32_t>(GetDataSize() / format_.blockAlign) : 0;
}

unsigned Sound::GetBytesPerSample() const {
    return format_.channels ? format_.blockAlign / format_.channels : 0;
}

double Sound::GetDuration() const {
    const bool known = format_.formatTag == kPcmFormatTag || format_.formatTag == kFloatFormatTag;
    if (!known || format_.averageBytesPerSecond == 0) return 0;
    return static_cast<double>(GetDataSize()) / format_.averageBytesPerSecond;
}

std::uint32_t Sound::GetRate() const {
    if (!HasData()) return format_.samplesPerSecond;
    return static_cast<std::uint32_t>(std::uint64_t{GetFrameCount()} *
                                      format_.averageBytesPerSecond / GetDataSize());
}

std::uint64_t Sound::ByteOffset(std::uint32_t frame) const {
    const std::uint32_t frames = GetFrameCount();
    if (frames == 0) return 0;
    if (GetDataSize() % format_.blockAlign == 0) return std::uint64_t{frame} * format_.blockAlign;
    return frame * GetDataSize() / frames;
}

std::int32_t Sound::GetSample(unsigned channel, std::uint32_t frame) const {
    const std::uint64_t offset =
        std::uint64_t{channel} * GetBytesPerSample() + std::uint64_t{frame} * format_.blockAlign;
    if (offset >= samples_.Size()) return 0;
    return VisitSampleType(format_.bitsPerSample, [&](auto type) {
        // What the end of the data cuts off reads as zeros.
        typename decltype(type)::Stored stored = 0;
        std::memcpy(&stored, samples_.Data() + offset,
                    std::min<std::size_t>(sizeof stored, samples_.Size() - offset));
        return WholeValueOf<decltype(type)>(stored);
    });
}

double Sound::GetShare(unsigned channel, std::uint32_t frame) const {
    const std::uint64_t offset =
        std::uint64_t{channel} * GetBytesPerSample() + std::uint64_t{frame} * format_.blockAlign;
    return VisitSampleType(format_.bitsPerSample, [&](auto type) {
        typename decltype(type)::Stored stored;
        if (offset + sizeof stored > samples_.Size()) return 0.0;
        std::memcpy(&stored, samples_.Data() + offset, sizeof stored);
        return static_cast<double>(type.ValueOf(stored)) / type.kHalfScale;
    });
}

void Sound::SetSample(unsigned channel, std::uint32_t frame, std::int32_t value) {
    VisitSampleType(format_.bitsPerSample, [&](auto type) {
        using Value = typename decltype(type)::Value;
        const auto stored = type.StoredOf(static_cast<Value>(value));
        const std::uint64_t offset =
            std::uint64_t{frame} * format_.blockAlign + sizeof stored * channel;
        if (offset + sizeof stored <= samples_.Size())
            std::memcpy(samples_.Data() + offset, &stored, sizeof stored);
    });
}

std::uint32_t Sound::GetMaxValue(unsigned bits) const {
    switch (bits ? bits : format_.bitsPerSample) {
        case 16:
            return 0xFFFF;
        case 32:
            return 0xFFFFFFFF;
        default:
            return 0xFF;
    }
}

bool Sound::InsertFrames(std::uint32_t frame, std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return true;
    frame = std::min(frame, GetFrameCount());
    // Behind the last frame means behind all data, a cut last frame included.
    const std::size_t oldSize = samples_.Size();
    const std::size_t offset = frame == GetFrameCount() ? oldSize : ByteOffset(frame);
    if (bytes.size() > MostSoundBytes(format_) - oldSize) return false;
    if (!samples_.ReAllocBuffer(oldSize + bytes.size())) return false;
    samples_.MoveWithin(offset, oldSize - offset, offset + bytes.size());
    std::memcpy(samples_.Data() + offset, bytes.data(), bytes.size());
    const std::size_t blockAlign = std::max<std::size_t>(format_.blockAlign, 1);
    markers_.ShiftForInsertion(frame, static_cast<std::uint32_t>(bytes.size() / blockAlign));
    return true;
}

bool Sound::RemoveFrames(std::uint32_t startFrame, std::uint32_t endFrame) {
    endFrame = std::min(endFrame, GetFrameCount());
    if (startFrame >= endFrame) return false;
    const std::size_t start = ByteOffset(startFrame);
    const std::size_t end = ByteOffset(endFrame);
    const std::size_t kept = samples_.Size() - (end - start);
    samples_.MoveWithin(end, samples_.Size() - end, start);
    if (!samples_.ReAllocBuffer(kept)) return false;
    markers_.ShiftForRemoval(startFrame, endFrame);
    return true;
}

bool Sound::GrowWithSilence(std::uint32_t frames) {
    const std::uint64_t bytes = std::uint64_t{frames} * format_.blockAlign;
    const std::size_t oldSize = samples_.Size();
    if (bytes <= oldSize) return true;
    if (bytes > MostSoundBytes(format_) || !samples_.ReAllocBuffer(bytes)) return false;
    FillWithSilence(samples_.Bytes().subspan(oldSize), format_.bitsPerSample);
    return true;
}

void MoveBytes(Sound& sound, std::uint64_t from, std::uint64_t count, std::uint64_t to) {
    sound.samples_.MoveWithin(from, count, to);
}

bool ExchangePiece(Sound& sound, std::uint64_t start, std::uint64_t length, SoundBuffer& piece,
                   PcmFormat& format) {
    if (!sound.samples_.ExchangePiece(start, length, piece)) return false;
    std::swap(sound.format_, format);
    return true;
}

std::uint32_t FrameOfByte(const Sound& sound, std::uint64_t byte) {
    const std::uint64_t size = sound.GetDataSize(), align = sound.GetBlockAlign();
    if (size == 0 || align == 0) return 0;
    // Of whole frames without the product, which is too great for the longest sounds.
    return static_cast<std::uint32_t>(size % align == 0 ? byte / align
                                                        : byte * sound.GetFrameCount() / size);
}

}  // namespace sonavel
