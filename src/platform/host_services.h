// The services that a host hands to the engine, in one bundle. The host owns them and keeps them
// alive longer than every document.
#pragma once

#include <cstdint>
#include <filesystem>

#include "platform/program_folder.h"
#include "platform/progress_window.h"
#include "platform/user_prompts.h"
#include "platform/wave_clipboard.h"
#include "platform/wave_device.h"

namespace sonavel {

class SoundCodecs;

// Where the undo steps of each sound lie.
struct UndoStorage {
    // Memory, where the settings name no other; what is beyond it lies in this folder, in files
    // that nobody sees. Without a folder the oldest steps are given up instead.
    std::uint64_t memoryBytes = std::uint64_t{1} << 30;
    std::filesystem::path folder = {};

    // A quarter of the memory that is available now, at least 256 MB, and the folder of the
    // person's unsaved work.
    static UndoStorage OfThisSystem();
};

struct HostServices {
    UserPrompts& prompts;
    ProgressFactory& progress;
    WaveClipboard& clipboard;
    WaveDevices& devices;
    const ProgramFolder& folder;
    // Decoders and encoders of foreign formats; null where there are none.
    const SoundCodecs* codecs = nullptr;
    UndoStorage undo = {};
};

}  // namespace sonavel
