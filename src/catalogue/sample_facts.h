// What a catalogue knows of a sound file, read from its header.
#pragma once

#include <cstdint>
#include <filesystem>

#include "sound/file_format.h"

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

// Reads the header alone.
Result<SampleFacts> ProbeSample(const std::filesystem::path& path);

Result<Sound> ReadSample(const std::filesystem::path& path, const TransferHost& host);

}  // namespace sonavel
