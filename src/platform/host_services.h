// The services that a host hands to the engine, in one bundle. The host owns them and keeps them
// alive longer than every document.
#pragma once

#include "platform/program_folder.h"
#include "platform/progress_window.h"
#include "platform/user_prompts.h"
#include "platform/wave_clipboard.h"
#include "platform/wave_device.h"

namespace sonavel {

struct HostServices {
    UserPrompts& prompts;
    ProgressFactory& progress;
    WaveClipboard& clipboard;
    WaveDevices& devices;
    const ProgramFolder& folder;
};

}  // namespace sonavel
