// The chime of the logo, "logo.wav" in the program folder, else as shipped. A missing file or
// device means silence.
#pragma once

#include "audio/wave_player.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/silent_prompts.h"
#include "platform/program_folder.h"

namespace sonavel {

class LogoSound {
  public:
    LogoSound(WaveDevices& devices, const ProgramFolder& folder);

    // From the beginning, also while it plays.
    void Play();

  private:
    SilentPrompts prompts_;
    HeadlessProgress progress_;
    CWavePlayer player_;
};

}  // namespace sonavel
