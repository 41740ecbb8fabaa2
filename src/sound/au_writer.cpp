#include <new>
#include <string_view>

#include "platform/replacing_file.h"
#include "sound/au_file.h"
#include "sound/au_format.h"
#include "sound/byte_order.h"
#include "sound/failure_texts.h"
#include "sound/format_refusal.h"
#include "sound/sample_transfer.h"

namespace sonavel {
namespace {

// Padded with zero bytes to a multiple of 8, of which the last ends the text.
constexpr std::string_view kAnnotation("Sonavel\0", 8);

std::vector<std::uint8_t> BuildHeader(const CWave& wave, std::uint32_t dataBytes) {
    const AuEncoding encoding = wave.GetBits() == 8 ? AuEncoding::kLinear8 : AuEncoding::kLinear16;
    ByteBuilder header;
    header.Big32(kAuMagic).Big32(kAuHeaderBytes + std::uint32_t{kAnnotation.size()});
    header.Big32(dataBytes).Big32(static_cast<std::uint32_t>(encoding));
    header.Big32(wave.GetSamplesPerSecond()).Big32(wave.GetChannels()).Text(kAnnotation);
    return header.Bytes();
}

bool WriteFile(ReplacingFile& file, const CWave& wave) {
    const std::uint32_t dataBytes = wave.GetFrameCount() * wave.GetBlockAlign();
    const ByteTransform transform = wave.GetBits() == 8 ? AddHalfRange : SwapBytePairs;
    return file.Write(BuildHeader(wave, dataBytes)) &&
           WriteTransformed(file, wave.Bytes().first(dataBytes), transform) && file.Commit();
}

bool Fail(CWave& wave, std::string_view text) {
    wave.ReportError(text);
    return false;
}

}  // namespace

bool WriteAu(const std::filesystem::path& path, CWave& wave) try {
    if (!IsEditable(wave.GetFormat())) return Fail(wave, FormatRefusal(wave.GetFormat()));
    ReplacingFile file;
    if (!file.Open(path)) return Fail(wave, failure::kOpenFile);
    if (!WriteFile(file, wave)) return Fail(wave, failure::kWriteData);
    wave.SetModified(false);
    return true;
} catch (const std::bad_alloc&) {
    return Fail(wave, failure::kMemory);
}

}  // namespace sonavel
