// CWave: a sound with its files, its modified mark and its last error.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "platform/progress_window.h"
#include "platform/user_prompts.h"
#include "sound/sound.h"
#include "sound/transfer_host.h"

namespace sonavel {

enum class WavOpenMode { kReadAll = 2, kProbe = 3 };

// Its own changes mark the sound modified; those through a Sound& do not.
class CWave : public Sound {
  public:
    // Messages and progress of the file operations go to these.
    CWave(UserPrompts& prompts, ProgressFactory& progress);
    virtual ~CWave();
    CWave(const CWave&) = delete;
    CWave& operator=(const CWave&) = delete;

    // Takes over a sound; marks nothing modified.
    void Adopt(Sound&& sound) { static_cast<Sound&>(*this) = std::move(sound); }
    // Puts another sound in and gives back the one it held; copies no samples, marks nothing
    // modified.
    Sound Exchange(Sound&& sound) {
        return std::exchange(static_cast<Sound&>(*this), std::move(sound));
    }

    // --- Changes, which mark the sound modified where they change it

    void SetRate(std::uint32_t samplesPerSecond);
    bool ConvertBits(unsigned bits);
    bool ConvertChannels(unsigned channels, ChannelChoice choice);
    bool ConvertFormat(unsigned channels, ChannelChoice choice, unsigned bits);
    bool InsertFrames(std::uint32_t frame, std::span<const std::uint8_t> bytes);
    bool RemoveFrames(std::uint32_t startFrame, std::uint32_t endFrame);
    bool GrowWithSilence(std::uint32_t frames);

    // --- Markers: those of the list, by the names of the sound's own operations

    std::uint32_t AddMarker(std::uint32_t position, std::string_view name, std::uint32_t length) {
        return Markers().Add(position, name, length);
    }
    bool SetMarker(std::uint32_t id, std::uint32_t position, std::string_view name,
                   std::uint32_t length) {
        return Markers().Set(id, position, name, length);
    }
    bool RemoveMarker(std::uint32_t id) { return Markers().Remove(id); }
    std::uint32_t GetMarkerBefore(std::uint32_t frame) const { return Markers().Before(frame); }
    std::uint32_t GetMarkerAfter(std::uint32_t frame) const {
        return Markers().After(frame, GetFrameCount());
    }

    // --- Files

    // Reads a RIFF WAVE file, or with kProbe its format and sizes alone, which leaves the sound as
    // it is. On failure the sound is unchanged and LastError() says why.
    bool Open(const std::filesystem::path& path, WavOpenMode mode);
    // True when the file can be probed and holds PCM.
    bool IsPCM(const std::filesystem::path& path);
    // Writes the sound as a RIFF WAVE file: to a temporary file beside `path`, then renamed over
    // it. With MarkerSaving::kOff the file is written without markers and the save still fails.
    bool Save(const std::filesystem::path& path, MarkerSaving markers);
    // Takes over what was read from a file, as it is there, or reports why nothing was.
    bool Take(Result<Sound>&& read);
    // True when it is done; else its reason becomes the last error and is shown: in a message box,
    // or in the status bar when the person cancelled or the failure has no box of its own.
    bool ReportOutcome(const Outcome& outcome);
    // Shows progress and warnings as this sound's own; must not outlive it.
    TransferHost FileHost();

    bool GetModified() const { return modified_; }
    void SetModified(bool modified) { modified_ = modified; }

    const std::string& LastError() const { return lastError_; }
    void SetLastError(std::string_view text) { lastError_ = text; }
    // Stores the text as the last error and shows it in a message box.
    void ReportError(std::string_view text);
    // The text of a multimedia error code 1 to 20 becomes the last error; then the last error, when
    // there is one, is shown.
    void ReportDeviceError(int code);

    UserPrompts& Prompts() const { return prompts_; }
    ProgressFactory& Progress() const { return progress_; }

  private:
    bool Changed(bool done) { return (modified_ |= done, done); }

    UserPrompts& prompts_;
    ProgressFactory& progress_;
    bool modified_ = false;
    std::string lastError_;
};

}  // namespace sonavel
