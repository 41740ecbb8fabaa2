#include <algorithm>
#include <array>
#include <new>

#include "platform/replacing_file.h"
#include "sound/aiff_file.h"
#include "sound/byte_order.h"
#include "sound/extended_float.h"
#include "sound/failure_texts.h"
#include "sound/sample_transfer.h"

namespace sonavel {
namespace {

std::vector<std::uint8_t> BuildHeader(const CWave& wave) {
    const std::uint32_t soundBytes = wave.GetFrameCount() * wave.GetBlockAlign();
    ByteBuilder header;
    header.Text("FORM").Big32(soundBytes + 46).Text("AIFF");
    header.Text("COMM").Big32(18).Big16(wave.GetChannels()).Big32(wave.GetFrameCount());
    header.Big16(wave.GetBits());
    for (const std::uint8_t byte : ExtendedFromInteger(wave.GetRate())) header.Byte(byte);
    header.Text("SSND").Big32(soundBytes + 8).Big32(0).Big32(0);
    return header.Bytes();
}

bool WriteZeros(ReplacingFile& file, std::uint64_t count) {
    static constexpr std::array<std::uint8_t, 4096> kZeros{};
    for (; count > 0; count -= std::min<std::uint64_t>(count, kZeros.size()))
        if (!file.Write({kZeros.data(), std::min<std::uint64_t>(count, kZeros.size())}))
            return false;
    return true;
}

bool Write8BitSamples(ReplacingFile& file, const CWave& wave) {
    const std::size_t bytes = std::size_t{wave.GetFrameCount()} * wave.GetChannels();
    return WriteTransformed(file, wave.Bytes().first(bytes), AddHalfRange);
}

// Exactly one second, whatever the length of the sound: intended, the files keep the size that they
// always had, and the document stays modified because of it.
bool Write16BitSamples(ReplacingFile& file, const CWave& wave) {
    const std::uint64_t bytes = std::uint64_t{wave.GetRate()} * 2 * wave.GetChannels();
    if (bytes > kMaxSoundBytes) return false;
    const std::size_t present = std::min<std::uint64_t>(bytes, wave.GetDataSize());
    return WriteTransformed(file, wave.Bytes().first(present), SwapBytePairs) &&
           WriteZeros(file, bytes - present);
}

bool WriteFile(ReplacingFile& file, const CWave& wave) {
    if (!file.Write(BuildHeader(wave))) return false;
    const bool written =
        wave.GetBits() == 8 ? Write8BitSamples(file, wave) : Write16BitSamples(file, wave);
    return written && file.Commit();
}

bool Fail(CWave& wave, std::string_view text) {
    wave.ReportError(text);
    return false;
}

}  // namespace

bool WriteAiff(const std::filesystem::path& path, CWave& wave) try {
    ReplacingFile file;
    if (!file.Open(path)) return Fail(wave, failure::kOpenFile);
    if (wave.GetBits() != 8 && wave.GetBits() != 16)
        return Fail(wave, "unsupported output style/size for AIFF header");
    return WriteFile(file, wave) || Fail(wave, failure::kWriteData);
} catch (const std::bad_alloc&) {
    return Fail(wave, failure::kMemory);
}

}  // namespace sonavel
