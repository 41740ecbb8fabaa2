#include <new>
#include <string_view>

#include "platform/failure_texts.h"
#include "platform/replacing_file.h"
#include "sound/au_file.h"
#include "sound/au_format.h"
#include "sound/byte_order.h"
#include "sound/format_refusal.h"
#include "sound/sample_transfer.h"
#include "sound/write_beside.h"

namespace sonavel {
namespace {

// Padded with zero bytes to a multiple of 8, of which the last ends the text.
constexpr std::string_view kAnnotation("Sonavel\0", 8);

std::vector<std::uint8_t> BuildHeader(const Sound& sound, std::uint32_t dataBytes) {
    const AuEncoding encoding = sound.GetBits() == 8 ? AuEncoding::kLinear8 : AuEncoding::kLinear16;
    ByteBuilder header;
    header.Big32(kAuMagic).Big32(kAuHeaderBytes + std::uint32_t{kAnnotation.size()});
    header.Big32(dataBytes).Big32(static_cast<std::uint32_t>(encoding));
    header.Big32(sound.GetSamplesPerSecond()).Big32(sound.GetChannels()).Text(kAnnotation);
    return header.Bytes();
}

bool WriteFile(ReplacingFile& file, const Sound& sound) {
    const std::uint32_t dataBytes = sound.GetFrameCount() * sound.GetBlockAlign();
    const ByteTransform transform = sound.GetBits() == 8 ? AddHalfRange : SwapBytePairs;
    return file.Write(BuildHeader(sound, dataBytes)) &&
           WriteTransformed(file, sound.Bytes().first(dataBytes), transform);
}

}  // namespace

Outcome WriteAu(const Sound& sound, const std::filesystem::path& path, MarkerSaving,
                const TransferHost& host) try {
    if (Outcome fits = CheckSavedFormat(sound.GetFormat()); !fits) return fits;
    if (!IsEditable(sound.GetFormat())) return Failed(FormatRefusal(sound.GetFormat()));
    ReplacingFile file;
    if (!file.Open(path)) return Failed(failure::kOpenFile);
    return WriteBeside(file, host, [&] { return WriteFile(file, sound); });
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

SaveLoss LossInAu(const Sound& sound, const SavedForm&) {
    return {sound.Markers().Empty() ? "" : "A Next/Sun file holds no markers."};
}

}  // namespace sonavel
