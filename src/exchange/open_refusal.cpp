#include "exchange/open_refusal.h"

#include <new>
#include <system_error>

#include "exchange/chunk_map.h"
#include "sound/file_formats.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kOpenEnd = 0xFFFFFFFF;

const FileFormat* FormatByFirstDot(const std::filesystem::path& path) {
    return FileFormatOfExtension(ExtensionFromFirstDot(path));
}

// Open takes a sound whole or not at all.
bool IsCutShort(const std::filesystem::path& path) try {
    BytesOfFile bytes;
    if (!bytes.Open(path)) return false;
    const ChunkMap map = MapChunks(bytes);
    const ChunkPlace* data =
        map.container == ChunkContainer::kRiff ? map.Find(kDataChunk) : nullptr;
    return data && data->statedBytes > data->sizeBytes && data->statedBytes != kOpenEnd;
} catch (const std::bad_alloc&) {
    return false;
}

bool HasOtherDepth(const SoundFileDescription& description) {
    return description.depth != FileDepth::kNone &&
           (description.depth == FileDepth::kFloat ||
            (description.bits != 8 && description.bits != 16));
}

}  // namespace

bool OpenRefuses(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return false;
    const FileFormat* format = FormatByFirstDot(path);
    if (!format) return true;
    const Result<SoundFileInfo> info = format->probe(path);
    if (!info || !IsEditable(info->format)) return true;
    return info->format.formatTag != kPcmFormatTag || IsCutShort(path);
}

std::string OpenRefusalReason(const std::filesystem::path& path,
                              const SoundFileDescription& description) {
    const FileFormat* format = FormatByFirstDot(path);
    if (!format && FileFormatOfExtension(path.extension().string()))
        return "the first dot in its path decides the format";
    if (!format) return description.format + " sound";
    if (!description.coding.empty()) return description.coding + " sound";
    if (HasOtherDepth(description))
        return BitsText(description.bits) +
               (description.depth == FileDepth::kFloat ? " float sound" : " sound");
    if (description.channels > 2) return "sound of " + ChannelsText(description.channels);
    if (IsCutShort(path)) return "its sound ends early";
    if (const auto info = format->probe(path); !info) return "its content is " + description.format;
    return description.format + " sound that Open does not know";
}

}  // namespace sonavel
