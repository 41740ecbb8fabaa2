#include "catalogue/sample_facts.h"

#include "document/file_kind.h"
#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "sound/wav_file.h"

namespace sonavel {
namespace {

// Folders with a dot in their name hold samples too, so the name's own extension decides here.
FileKind KindOf(const std::filesystem::path& path) {
    return FileKindOfExtension(path.extension().string());
}

SampleFacts FactsFrom(const PcmFormat& format, std::uint64_t frames) {
    return {format.samplesPerSecond, frames, format.channels, format.bitsPerSample, 0};
}

std::optional<SampleFacts> ProbeWavSample(const std::filesystem::path& path, CWave& wave) {
    const std::optional<WavInfo> info = ProbeWav(path, wave);
    if (!info) return std::nullopt;
    const PcmFormat& format = info->format;
    if (format.formatTag == kPcmFormatTag || format.averageBytesPerSecond == 0)
        return FactsFrom(format, info->frames);
    // A block of compressed sound holds many frames.
    return FactsFrom(format, std::uint64_t{info->dataBytes} * format.samplesPerSecond /
                                 format.averageBytesPerSecond);
}

std::optional<SampleFacts> FactsFrom(const std::optional<SoundFileInfo>& info) {
    if (!info) return std::nullopt;
    return FactsFrom(info->format, info->frames);
}

std::optional<SampleFacts> ProbeByKind(const std::filesystem::path& path, CWave& wave) {
    switch (KindOf(path)) {
        case FileKind::kWav:
            return ProbeWavSample(path, wave);
        case FileKind::kNextSun:
            return FactsFrom(ProbeAu(path, wave));
        case FileKind::kAiff:
            return FactsFrom(ProbeAiff(path, wave));
        case FileKind::kUnknown:
            break;
    }
    wave.ReportError("This is no sound file.");
    return std::nullopt;
}

}  // namespace

double SampleFacts::Seconds() const {
    return samplesPerSecond ? static_cast<double>(frames) / samplesPerSecond : 0;
}

bool IsSoundFileName(const std::filesystem::path& path) {
    return KindOf(path) != FileKind::kUnknown;
}

std::optional<SampleFacts> ProbeSample(const std::filesystem::path& path, CWave& wave) {
    std::optional<SampleFacts> facts = ProbeByKind(path, wave);
    if (!facts) return std::nullopt;
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    facts->fileBytes = error ? 0 : bytes;
    return facts;
}

bool ReadSample(const std::filesystem::path& path, CWave& wave) {
    switch (KindOf(path)) {
        case FileKind::kWav:
            return ReadWav(path, wave);
        case FileKind::kNextSun:
            return ReadAu(path, wave);
        case FileKind::kAiff:
            return ReadAiff(path, wave);
        case FileKind::kUnknown:
            break;
    }
    wave.ReportError("This is no sound file.");
    return false;
}

}  // namespace sonavel
