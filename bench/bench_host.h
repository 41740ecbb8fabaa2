// The services and sounds that the benchmarks run on.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "platform/headless/headless_progress.h"
#include "platform/headless/headless_wave_devices.h"
#include "platform/headless/memory_clipboard.h"
#include "platform/headless/silent_prompts.h"
#include "platform/host_services.h"
#include "sound/wave.h"

namespace sonavel::bench {

struct Host {
    SilentPrompts prompts;
    HeadlessProgress progress;
    MemoryClipboard clipboard;
    HeadlessWaveDevices devices{WavePace::kAsFastAsAsked};
    ProgramFolder folder{std::filesystem::temp_directory_path()};
    HostServices services{prompts, progress, clipboard, devices, folder};
};

// Fills a sound with noise that no loop can take a short way through.
inline void FillWithNoise(CWave& wave) {
    std::uint32_t state = 1;
    for (std::uint8_t& byte : wave.MutableBytes()) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
}

inline std::unique_ptr<CWave> MakeNoise(Host& host, unsigned channels, unsigned bits,
                                        std::uint32_t seconds) {
    auto wave = std::make_unique<CWave>(host.prompts, host.progress);
    wave->Create(channels, bits, 44100, 44100 * seconds);
    FillWithNoise(*wave);
    return wave;
}

}  // namespace sonavel::bench
