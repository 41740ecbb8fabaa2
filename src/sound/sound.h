// Sound: one sound as a value, with its format, its samples and its markers. It is what a file
// holds, a clip, an undo step and a document.
#pragma once

#include <cstdint>
#include <span>

#include "platform/outcome.h"
#include "platform/user_prompts.h"
#include "sound/marker_list.h"
#include "sound/pcm_format.h"
#include "sound/sound_buffer.h"

namespace sonavel {

// The most that a sound of whole numbers may hold: its size is a signed 32-bit number in files and
// devices.
inline constexpr std::uint64_t kMaxSoundBytes = 0x7FFFFFFF;
// The most that a sound of this format may hold: that, or 2^32 - 1 frames of floats.
std::uint64_t MostSoundBytes(const PcmFormat& format);

// Can be moved; Copy() is the only way to copy the samples.
class Sound {
  public:
    Sound() = default;
    // Of samples as they lie in memory; the last frame may be cut.
    Sound(const PcmFormat& format, SoundBuffer samples, MarkerList markers = {});

    // Format, samples and markers; fails when the memory cannot be had.
    Result<Sound> Copy() const;
    // Replaces the sound by `frames` frames of unspecified content without markers. False when the
    // memory cannot be had or would pass MostSoundBytes(); the old sound is then kept.
    bool Create(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond,
                std::uint32_t frames);

    bool HasData() const { return samples_.Size() != 0; }
    std::uint32_t GetFrameCount() const;
    std::uint64_t GetDataSize() const { return samples_.Size(); }  // bytes
    unsigned GetChannels() const { return format_.channels; }
    unsigned GetBits() const { return format_.bitsPerSample; }
    unsigned GetBlockAlign() const { return format_.blockAlign; }
    unsigned GetBytesPerSample() const;
    std::uint32_t GetSamplesPerSecond() const { return format_.samplesPerSecond; }
    double GetDuration() const;  // seconds; 0 for a tag of neither PCM nor float
    // frames x bytes per second / data size, truncated; of an empty sound its samples per second.
    std::uint32_t GetRate() const;
    const PcmFormat& GetFormat() const { return format_; }

    std::span<const std::uint8_t> Bytes() const { return samples_.Bytes(); }
    // Of a sound whose block lends bytes, to be written after SettleLent() of them alone.
    std::span<std::uint8_t> MutableBytes() { return samples_.Bytes(); }
    // frame x data size / frame count, a 64-bit product; 0 for an empty sound.
    std::uint64_t ByteOffset(std::uint32_t frame) const;
    MarkerList& Markers() { return markers_; }
    const MarkerList& Markers() const { return markers_; }

    // --- Samples

    // Signed; 16-bit as stored, 8-bit as 128 - byte (-127..128), floats rounded to units of 16
    // bits. 0 at or beyond the end of the data.
    std::int32_t GetSample(unsigned channel, std::uint32_t frame) const;
    // The sample as a share of full scale: a float as it is, else GetSample / 2^15 or / 2^7. 0 for
    // what the end of the data cuts off.
    double GetShare(unsigned channel, std::uint32_t frame) const;
    // Stores the low bits (8-bit: the byte 128 - value), or the float of a value in units of 16
    // bits. Ignored beyond the end of the data.
    void SetSample(unsigned channel, std::uint32_t frame, std::int32_t value);
    // The span of a sample width as a mask: 0xFF, 0xFFFF, 0xFFFFFFFF; 0xFF for any other width;
    // bits 0 stands for the sound's own.
    std::uint32_t GetMaxValue(unsigned bits = 0) const;

    // --- Changes of format

    // Only the rate: the frames are kept and play faster or slower.
    void SetRate(std::uint32_t samplesPerSecond);
    // Between 8, 16 and 32 bits. Floats become whole numbers exactly where they fit, else with
    // triangular dither, and are held at full scale. False when the memory cannot be had; the sound
    // is then unchanged.
    bool ConvertBits(unsigned bits);
    // Between 1 and 2 channels, likewise.
    bool ConvertChannels(unsigned channels, ChannelChoice choice);
    // Channels, then bits, as one change that comes about whole or not at all.
    bool ConvertFormat(unsigned channels, ChannelChoice choice, unsigned bits);

    // --- Changes of content, which move the markers

    // Inserts whole frames of the sound's own format, which must not lie in this sound's own block.
    // False when the memory cannot be had.
    bool InsertFrames(std::uint32_t frame, std::span<const std::uint8_t> bytes);
    // False when the range holds no frame of the sound.
    bool RemoveFrames(std::uint32_t startFrame, std::uint32_t endFrame);
    // Makes the sound longer by silence up to `frames`; never shorter.
    bool GrowWithSilence(std::uint32_t frames);

  private:
    friend const SoundBuffer& BlockOf(const Sound& sound) { return sound.samples_; }
    friend void MoveBytes(Sound& sound, std::uint64_t from, std::uint64_t count, std::uint64_t to);
    friend bool ExchangePiece(Sound& sound, std::uint64_t start, std::uint64_t length,
                              SoundBuffer& piece, PcmFormat& format);

    PcmFormat format_;
    SoundBuffer samples_;
    MarkerList markers_;
};

// The bytes as they lie in memory: to be copied or lent.
const SoundBuffer& BlockOf(const Sound& sound);
// Within the sound; they may overlap. The markers stay as they are.
void MoveBytes(Sound& sound, std::uint64_t from, std::uint64_t count, std::uint64_t to);
// Puts `piece` in the place of `length` bytes from `start` on, which must be there, and these into
// `piece`; moves what lies behind them and nothing else. The formats are exchanged with it, the
// markers stay as they are. False, with all as it was, when the memory cannot be had.
bool ExchangePiece(Sound& sound, std::uint64_t start, std::uint64_t length, SoundBuffer& piece,
                   PcmFormat& format);

// What ConvertFormat would make of the sound, as another one; fails where it would.
Result<Sound> Converted(const Sound& sound, unsigned channels, ChannelChoice choice, unsigned bits);

// The frame that a byte of a sound belongs to: byte x frame count / data size; 0 for an empty
// sound.
std::uint32_t FrameOfByte(const Sound& sound, std::uint64_t byte);

}  // namespace sonavel
