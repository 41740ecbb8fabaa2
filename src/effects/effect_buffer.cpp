#include "effects/effect_buffer.h"

#include "effects/quantizer.h"
#include "sound/sample_io.h"

namespace sonavel {

CEffectBuffer::CEffectBuffer(const CWave& sound, std::uint32_t maxFrames)
    : sampleRate_(sound.GetSamplesPerSecond()),
      bitsPerSample_(sound.GetBits()),
      channels_(sound.GetChannels()),
      left_(maxFrames),
      right_(channels_ == 2 ? maxFrames : 0) {}

void CEffectBuffer::Load(const CWave& sound, EffectRange range) {
    range_ = range;
    ReadChannel(sound, 0, range.start, Left(), EightBitReading::kSignedByte);
    if (channels_ == 2) ReadChannel(sound, 1, range.start, Right(), EightBitReading::kSignedByte);
}

void CEffectBuffer::Store(CWave& sound) {
    QuantizeInPlace(Left());
    WriteTruncated(sound, 0, range_.start, Left());
    if (channels_ != 2) return;
    QuantizeInPlace(Right());
    WriteTruncated(sound, 1, range_.start, Right());
}

}  // namespace sonavel
