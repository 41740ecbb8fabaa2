// What a catalogue knows of a sound file, read from its header: of the editor's own formats here,
// of all others as Import reads them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "sound/file_format.h"
#include "sound/sound_codecs.h"

namespace sonavel {

struct SampleFacts {
    std::uint32_t samplesPerSecond = 0;
    std::uint64_t frames = 0;
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;  // of one sample; 0 for compressed sound
    std::uint64_t fileBytes = 0;
    std::string format{};  // "FLAC", "WAV, IMA ADPCM"; empty while it is not known

    double Seconds() const;  // 0 when the rate is not known
    bool operator==(const SampleFacts&) const = default;
};

// By its extension alone.
bool IsSoundFileName(const std::filesystem::path& path);

// Reads the header alone. Without `codecs` only plain samples are known. Cancelled when the watcher
// says so.
Result<SampleFacts> ProbeSample(const std::filesystem::path& path, const SoundCodecs* codecs,
                                CodecWatcher& watcher);

Result<Sound> ReadSample(const std::filesystem::path& path, const SoundCodecs* codecs,
                         const TransferHost& host);

}  // namespace sonavel
