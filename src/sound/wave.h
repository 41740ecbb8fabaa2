// CWave: one sound held whole in memory, with its format, its markers, its file and its last error.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/progress_window.h"
#include "platform/user_prompts.h"
#include "sound/marker_list.h"
#include "sound/pcm_format.h"
#include "sound/sound_buffer.h"

namespace sonavel {

// The most that a sound may hold: its size is a signed 32-bit number in files and devices.
inline constexpr std::uint32_t kMaxSoundBytes = 0x7FFFFFFF;

// A sound apart from any document: what an undo step or a clip keeps.
struct SoundCopy {
    PcmFormat format;
    SoundBuffer buffer;
    MarkerList markers;
};

enum class WavOpenMode { kReadAll = 2, kProbe = 3 };

// Whether a WAV save writes the markers. kOff stands for "no active view, or its document's option
// is off", which makes the save report failure behind the data.
enum class MarkerSaving { kOff, kOn };

class CWave {
  public:
    // Messages and progress of the file operations go to these.
    CWave(UserPrompts& prompts, ProgressFactory& progress);
    virtual ~CWave();
    CWave(const CWave&) = delete;
    CWave& operator=(const CWave&) = delete;

    // --- The sound as a whole

    // Replaces the sound by `frames` frames of unspecified content without markers. False when the
    // memory cannot be had or would pass 2^31 - 1 bytes; the old sound is then kept.
    bool Create(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond,
                std::uint32_t frames);
    // Takes over a sound; marks nothing modified.
    void Adopt(SoundCopy&& sound);
    // Puts another sound in and gives back the one it held; copies no samples, marks nothing
    // modified.
    SoundCopy Exchange(SoundCopy&& sound) {
        SoundCopy old{format_, std::move(buffer_), std::move(markers_)};
        Adopt(std::move(sound));
        return old;
    }
    // Format, samples and markers; nothing when the memory cannot be had.
    std::optional<SoundCopy> CopySound() const;

    bool HasData() const { return buffer_.Size() != 0; }
    std::uint32_t GetFrameCount() const;
    std::uint32_t GetDataSize() const { return static_cast<std::uint32_t>(buffer_.Size()); }
    unsigned GetChannels() const { return format_.channels; }
    unsigned GetBits() const { return format_.bitsPerSample; }
    unsigned GetBlockAlign() const { return format_.blockAlign; }
    unsigned GetBytesPerSample() const;
    std::uint32_t GetSamplesPerSecond() const { return format_.samplesPerSecond; }
    double GetDuration() const;  // seconds; 0 for another tag than PCM
    // frames x bytes per second / data size, truncated; of an empty sound its samples per second.
    std::uint32_t GetRate() const;
    const PcmFormat& GetFormat() const { return format_; }

    std::span<const std::uint8_t> Bytes() const { return buffer_.Bytes(); }
    // Writing through it is an edit: the caller marks the sound modified.
    std::span<std::uint8_t> MutableBytes() { return buffer_.Bytes(); }
    // frame x data size / frame count, a 64-bit product; 0 for an empty sound.
    std::uint32_t ByteOffset(std::uint32_t frame) const;

    // --- Samples

    // Signed; 16-bit as stored, 8-bit as 128 - byte (-127..128). 0 at or beyond the end of the
    // data.
    std::int32_t GetSample(unsigned channel, std::uint32_t frame) const;
    // Stores the low bits (8-bit: the byte 128 - value). Ignored beyond the end of the data.
    void SetSample(unsigned channel, std::uint32_t frame, std::int32_t value);
    // The span of a sample width as a mask: 0xFF, 0xFFFF, 0xFFFFFFFF; 0xFF for any other width;
    // bits 0 stands for the sound's own.
    std::uint32_t GetMaxValue(unsigned bits = 0) const;

    // --- Changes of format; each marks the sound modified where it changes it

    // Only the rate: the frames are kept and play faster or slower.
    void SetRate(std::uint32_t samplesPerSecond);
    // Between 8 and 16 bits. False when the memory cannot be had; the sound is then unchanged.
    bool ConvertBits(unsigned bits);
    // Between 1 and 2 channels, likewise.
    bool ConvertChannels(unsigned channels, ChannelChoice choice);
    // Channels, then bits, as one change that comes about whole or not at all.
    bool ConvertFormat(unsigned channels, ChannelChoice choice, unsigned bits);

    // --- Changes of content; each marks the sound modified and moves the markers

    // Inserts whole frames of the sound's own format, which must not lie in this sound's own block.
    // False when the memory cannot be had.
    bool InsertFrames(std::uint32_t frame, std::span<const std::uint8_t> bytes);
    // False when the range holds no frame of the sound.
    bool RemoveFrames(std::uint32_t startFrame, std::uint32_t endFrame);
    // Makes the sound longer by silence (8-bit 128, 16-bit 0) up to `frames`; never shorter.
    bool GrowWithSilence(std::uint32_t frames);

    // --- Markers

    MarkerList& Markers() { return markers_; }
    const MarkerList& Markers() const { return markers_; }
    // Those of the list, by the names of the sound's own operations.
    std::uint32_t AddMarker(std::uint32_t position, std::string_view name, std::uint32_t length) {
        return markers_.Add(position, name, length);
    }
    bool SetMarker(std::uint32_t id, std::uint32_t position, std::string_view name,
                   std::uint32_t length) {
        return markers_.Set(id, position, name, length);
    }
    bool RemoveMarker(std::uint32_t id) { return markers_.Remove(id); }
    std::uint32_t GetMarkerBefore(std::uint32_t frame) const { return markers_.Before(frame); }
    std::uint32_t GetMarkerAfter(std::uint32_t frame) const;

    // --- Files

    // Reads a RIFF WAVE file, or with kProbe its format and sizes alone, which leaves the sound as
    // it is. On failure the sound is unchanged and LastError() says why.
    bool Open(const std::filesystem::path& path, WavOpenMode mode);
    // True when the file can be probed and holds PCM.
    bool IsPCM(const std::filesystem::path& path);
    // Writes the sound as a RIFF WAVE file: to a temporary file beside `path`, then renamed over
    // it. With MarkerSaving::kOff the file is written without markers and the save still fails.
    bool Save(const std::filesystem::path& path, MarkerSaving markers);

    bool GetModified() const { return modified_; }
    void SetModified(bool modified) { modified_ = modified; }

    const std::string& LastError() const { return lastError_; }
    void SetLastError(std::string_view text) { lastError_ = text; }
    // Stores the text as the last error and shows it in a message box.
    void ReportError(std::string_view text);
    // Likewise, but in the status bar, for failures that have no box of their own.
    void ReportInStatus(std::string_view text);
    // The text of a multimedia error code 1 to 20 becomes the last error; then the last error, when
    // there is one, is shown.
    void ReportDeviceError(int code);

    UserPrompts& Prompts() const { return prompts_; }
    ProgressFactory& Progress() const { return progress_; }

  private:
    void TakeConverted(const PcmFormat& format, SoundBuffer&& buffer);

    UserPrompts& prompts_;
    ProgressFactory& progress_;
    PcmFormat format_;
    SoundBuffer buffer_;
    MarkerList markers_;
    bool modified_ = false;
    std::string lastError_;
};

}  // namespace sonavel
