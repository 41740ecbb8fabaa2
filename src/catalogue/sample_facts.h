// What a catalogue knows of a sound file, read from its header.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "sound/wave.h"

namespace sonavel {

struct SampleFacts {
    std::uint32_t samplesPerSecond = 0;
    std::uint64_t frames = 0;
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;  // of one sample; 0 for compressed sound
    std::uint64_t fileBytes = 0;

    double Seconds() const;  // 0 when the rate is not known
    bool operator==(const SampleFacts&) const = default;
};

// By its extension alone.
bool IsSoundFileName(const std::filesystem::path& path);

// Failures are reported through the sound, which is otherwise left as it is.
std::optional<SampleFacts> ProbeSample(const std::filesystem::path& path, CWave& wave);

// Replaces the sound by the file's. On failure the sound is unchanged and the failure reported
// through it.
bool ReadSample(const std::filesystem::path& path, CWave& wave);

}  // namespace sonavel
