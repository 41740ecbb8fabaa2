// Samples of a sound to floats and back, a channel at a time. The loops are written per sample
// width, so that the compiler vectorises them; the values are those of GetSample and SetSample, of
// sounds of floats in units of 16 bits without rounding.
#pragma once

#include <cstdint>
#include <span>

#include "sound/sample_types.h"
#include "sound/sound.h"

namespace sonavel {

// Brings 8-bit samples to the range of 16-bit ones: 32767 / 127.
inline constexpr float kEightBitScale = 258.00787f;

// Brings values beyond the limits of samples of this width to the nearer of them.
void HoldWithinLimits(std::span<float> values, unsigned bits);

enum class EightBitReading {
    kFull,        // -127 to 128, as GetSample gives it
    kSignedByte,  // the value 128 (byte 0) wraps to -128
};

// Reads out.size() frames of one channel from startFrame on; 0 beyond the end of the data.
void ReadChannel(const Sound& sound, unsigned channel, std::uint32_t startFrame,
                 std::span<float> out, EightBitReading reading);
// Both channels of a stereo sound likewise, in one go over its samples; left and right are equally
// long.
void ReadBothChannels(const Sound& sound, std::uint32_t startFrame, std::span<float> left,
                      std::span<float> right, EightBitReading reading);
// Reads the samples of all channels as they are interleaved; out holds whole frames.
void ReadInterleaved(const Sound& sound, std::uint32_t startFrame, std::span<float> out);

// Writes one channel from startFrame on, each value truncated toward zero and stored in its low 8
// or 16 bits, or as it is in a sound of floats; frames beyond the end of the data are left out.
// Values for whole numbers must lie within +-2^31.
void WriteTruncated(Sound& sound, unsigned channel, std::uint32_t startFrame,
                    std::span<const float> values);
// Both channels of a stereo sound likewise.
void WriteBothTruncated(Sound& sound, std::uint32_t startFrame, std::span<const float> left,
                        std::span<const float> right);
// Likewise for interleaved samples of all channels.
void WriteInterleaved(Sound& sound, std::uint32_t startFrame, std::span<const float> values);

}  // namespace sonavel
