// Plays a sound file without opening it.
#pragma once

#include <functional>

#include "audio/wave_player.h"
#include "catalogue/sample_facts.h"
#include "platform/program_folder.h"

namespace sonavel {

class SamplePreview : private PlayerObserver {
  public:
    // Foreign formats are played with `codecs` alone, which may be null.
    SamplePreview(UserPrompts& prompts, ProgressFactory& progress, WaveDevices& devices,
                  const SoundCodecs* codecs);

    // From the beginning, on the playback device that is chosen in the options. Not done when the
    // file cannot be read or played.
    Outcome Play(const std::filesystem::path& path, const ProgramFolder& folder);
    void Stop() { player_.Stop(CWavePlayer::StopReport::kSilent); }
    bool IsPlaying() const { return !player_.IsStopped(); }

    // Called when the sound has been heard to its end or was stopped.
    void SetOnStopped(std::function<void()> onStopped) { onStopped_ = std::move(onStopped); }

  private:
    void OnPlayPosition(std::uint64_t, std::uint64_t) override {}
    void OnPlayState(std::string_view, std::uint32_t) override {}
    void OnPeaks(std::int32_t, std::int32_t) override {}
    void OnStopped() override {
        if (onStopped_) onStopped_();
    }

    const SoundCodecs* codecs_;
    std::function<void()> onStopped_;
    CWavePlayer player_;
};

}  // namespace sonavel
