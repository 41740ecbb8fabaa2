// The services that a host hands to the engine, in one bundle. The host owns them and keeps them
// alive longer than every document.
#pragma once

#include "platform/program_folder.h"
#include "platform/progress_window.h"
#include "platform/user_prompts.h"
#include "platform/wave_clipboard.h"
#include "platform/wave_device.h"

namespace sonavel {

class SoundCodecs;

struct HostServices {
    UserPrompts& prompts;
    ProgressFactory& progress;
    WaveClipboard& clipboard;
    WaveDevices& devices;
    const ProgramFolder& folder;
    // Decoders and encoders of foreign formats; null where there are none.
    const SoundCodecs* codecs = nullptr;
};

}  // namespace sonavel
