#include "catalogue/sample_facts.h"

#include <limits>

#include "exchange/sound_import.h"
#include "sound/file_formats.h"
#include "sound/foreign_extensions.h"
#include "sound/format_refusal.h"

namespace sonavel {
namespace {

constexpr std::string_view kNoSoundFile = "This is no sound file.";

// Folders with a dot in their name hold samples too, so the name's own extension decides here.
const FileFormat* FormatOf(const std::filesystem::path& path) {
    return FileFormatOfExtension(path.extension().string());
}

std::uint64_t SizeOf(const std::filesystem::path& path) {
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    return error ? 0 : bytes;
}

std::uint16_t Narrow(std::uint32_t number) {
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint16_t>::max();
    return static_cast<std::uint16_t>(number < kMost ? number : kMost);
}

// "WAV" for ".wav".
std::string ShortName(const FileFormat& format) {
    std::string name(format.extensions.front().substr(1));
    for (char& c : name) c = static_cast<char>(c - 'a' + 'A');
    return name;
}

SampleFacts FactsOf(const SoundFileInfo& info, const FileFormat& format) {
    return {.samplesPerSecond = info.format.samplesPerSecond,
            .frames = info.frames,
            .channels = info.format.channels,
            .bits = info.format.bitsPerSample,
            .format = ShortName(format)};
}

SampleFacts FactsOf(const SoundFileDescription& file) {
    return {.samplesPerSecond = file.rate,
            .frames = file.counted == FrameCount::kUnknown ? 0 : file.frames,
            .channels = Narrow(file.channels),
            .bits = file.depth == FileDepth::kNone ? std::uint16_t{0} : Narrow(file.bits),
            .format = file.coding.empty() ? file.format : file.format + ", " + file.coding};
}

Result<SampleFacts> ProbeForeign(const std::filesystem::path& path, const SoundCodecs* codecs,
                                 CodecWatcher& watcher) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return Failed(kNoSoundFile);
    const Result<SoundFileHead> head = ProbeImport(path, codecs, watcher);
    if (!head) return head.Ended();
    return FactsOf(head->description);
}

Result<SampleFacts> ProbeAny(const std::filesystem::path& path, const SoundCodecs* codecs,
                             CodecWatcher& watcher) {
    const FileFormat* known = FormatOf(path);
    if (!known) return ProbeForeign(path, codecs, watcher);
    const Result<SoundFileInfo> info = known->probe(path);
    if (info && IsEditable(info->format)) return FactsOf(*info, *known);
    Result<SampleFacts> foreign = ProbeForeign(path, codecs, watcher);
    if (foreign || foreign.Ended().IsCancelled()) return foreign;
    // The format's own header says something of compressed sound, too.
    if (info) return FactsOf(*info, *known);
    return info.Ended();
}

// As Open reads it, but by the extension behind the last dot.
Result<Sound> ReadOwn(const std::filesystem::path& path, const TransferHost& host) {
    const FileFormat* known = FormatOf(path);
    if (!known) return Failed(kNoSoundFile);
    const Result<SoundFileInfo> info = known->probe(path);
    if (!info) return info.Ended();
    return IsEditable(info->format) ? known->read(path, host) : Failed(FormatRefusal(info->format));
}

}  // namespace

double SampleFacts::Seconds() const {
    return samplesPerSecond ? static_cast<double>(frames) / samplesPerSecond : 0;
}

bool IsSoundFileName(const std::filesystem::path& path) {
    return IsSoundExtension(path.extension().string());
}

Result<SampleFacts> ProbeSample(const std::filesystem::path& path, const SoundCodecs* codecs,
                                CodecWatcher& watcher) {
    Result<SampleFacts> facts = ProbeAny(path, codecs, watcher);
    if (facts) facts->fileBytes = SizeOf(path);
    return facts;
}

Result<Sound> ReadSample(const std::filesystem::path& path, const SoundCodecs* codecs,
                         const TransferHost& host) {
    Result<Sound> own = ReadOwn(path, host);
    if (own || own.Ended().IsCancelled()) return own;
    Result<ImportedSound> imported = ImportSound(path, codecs, {}, host);
    if (!imported) return !codecs && FormatOf(path) ? own.Ended() : imported.Ended();
    return std::move(imported->sound);
}

}  // namespace sonavel
