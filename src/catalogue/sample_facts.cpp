#include "catalogue/sample_facts.h"

#include "sound/file_formats.h"

namespace sonavel {
namespace {

constexpr std::string_view kNoSoundFile = "This is no sound file.";

// Folders with a dot in their name hold samples too, so the name's own extension decides here.
const FileFormat* FormatOf(const std::filesystem::path& path) {
    return FileFormatOfExtension(path.extension().string());
}

}  // namespace

double SampleFacts::Seconds() const {
    return samplesPerSecond ? static_cast<double>(frames) / samplesPerSecond : 0;
}

bool IsSoundFileName(const std::filesystem::path& path) {
    return FormatOf(path) != nullptr;
}

Result<SampleFacts> ProbeSample(const std::filesystem::path& path) {
    const FileFormat* known = FormatOf(path);
    if (!known) return Failed(kNoSoundFile);
    const Result<SoundFileInfo> info = known->probe(path);
    if (!info) return info.Ended();
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    const PcmFormat& format = info->format;
    return SampleFacts{format.samplesPerSecond, info->frames, format.channels, format.bitsPerSample,
                       error ? 0 : bytes};
}

Result<Sound> ReadSample(const std::filesystem::path& path, const TransferHost& host) {
    const FileFormat* known = FormatOf(path);
    return known ? known->read(path, host) : Failed(kNoSoundFile);
}

}  // namespace sonavel
