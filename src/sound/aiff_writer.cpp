#include <algorithm>
#include <array>
#include <new>

#include "platform/failure_texts.h"
#include "platform/replacing_file.h"
#include "sound/aiff_file.h"
#include "sound/byte_order.h"
#include "sound/extended_float.h"
#include "sound/format_refusal.h"
#include "sound/sample_transfer.h"
#include "sound/write_beside.h"

namespace sonavel {
namespace {

std::vector<std::uint8_t> BuildHeader(const Sound& sound) {
    const std::uint32_t soundBytes = sound.GetFrameCount() * sound.GetBlockAlign();
    ByteBuilder header;
    header.Text("FORM").Big32(soundBytes + 46).Text("AIFF");
    header.Text("COMM").Big32(18).Big16(sound.GetChannels()).Big32(sound.GetFrameCount());
    header.Big16(sound.GetBits());
    for (const std::uint8_t byte : ExtendedFromInteger(sound.GetRate())) header.Byte(byte);
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

bool Write8BitSamples(ReplacingFile& file, const Sound& sound) {
    const std::size_t bytes = std::size_t{sound.GetFrameCount()} * sound.GetChannels();
    return WriteTransformed(file, sound.Bytes().first(bytes), AddHalfRange);
}

// Exactly one second, whatever the length of the sound: intended, and why the document stays
// modified.
bool Write16BitSamples(ReplacingFile& file, const Sound& sound) {
    const std::uint64_t bytes = std::uint64_t{sound.GetRate()} * 2 * sound.GetChannels();
    if (bytes > kMaxSoundBytes) return false;
    const std::size_t present = std::min<std::uint64_t>(bytes, sound.GetDataSize());
    return WriteTransformed(file, sound.Bytes().first(present), SwapBytePairs) &&
           WriteZeros(file, bytes - present);
}

bool WriteFile(ReplacingFile& file, const Sound& sound) {
    if (!file.Write(BuildHeader(sound))) return false;
    return sound.GetBits() == 8 ? Write8BitSamples(file, sound) : Write16BitSamples(file, sound);
}

}  // namespace

Outcome WriteAiff(const Sound& sound, const std::filesystem::path& path, MarkerSaving,
                  const TransferHost& host) try {
    if (Outcome fits = CheckSavedFormat(sound.GetFormat()); !fits) return fits;
    ReplacingFile file;
    if (!file.Open(path)) return Failed(failure::kOpenFile);
    if (sound.GetBits() != 8 && sound.GetBits() != 16)
        return Failed("unsupported output style/size for AIFF header");
    return WriteBeside(file, host, [&] { return WriteFile(file, sound); });
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

SaveLoss LossInAiff(const Sound& sound, const SavedForm& form) {
    SaveLoss loss;
    loss.cutsSound = form.bits == 16 && sound.GetFrameCount() > sound.GetRate();
    if (loss.cutsSound)
        loss.Add("Only the first second of a 16-bit sound is written to an AIFF file.");
    if (!sound.Markers().Empty()) loss.Add("An AIFF file holds no markers.");
    return loss;
}

}  // namespace sonavel
