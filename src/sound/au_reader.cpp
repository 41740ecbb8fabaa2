#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <optional>
#include <string>

#include "sound/au_file.h"
#include "sound/au_format.h"
#include "sound/byte_order.h"
#include "sound/companded_samples.h"
#include "sound/failure_texts.h"
#include "sound/format_refusal.h"
#include "sound/sample_transfer.h"
#include "sound/typed_samples.h"

namespace sonavel {
namespace {

struct AuHeader {
    std::uint32_t dataOffset = 0;
    std::uint32_t dataBytes = 0;
    AuEncoding encoding{};
    std::uint32_t rate = 0;
    std::uint32_t channels = 0;
};

class AuReader {
  public:
    explicit AuReader(CWave& wave) : wave_(wave), cursor_(file_) {}

    bool Read(const std::filesystem::path& path);
    std::optional<SoundFileInfo> Probe(const std::filesystem::path& path);

  private:
    bool Fail(std::string_view text);
    bool ReadHeader();
    bool CheckFormat();
    bool CheckSize();
    bool ReadSamples();
    bool ReadCompanded(const ExpansionTable& table);

    bool IsCompanded() const {
        return header_.encoding == AuEncoding::kMuLaw || header_.encoding == AuEncoding::kALaw;
    }
    unsigned StoredBytesPerSample() const {
        return header_.encoding == AuEncoding::kLinear16 ? 2 : 1;
    }

    CWave& wave_;
    FileSource file_;
    ByteCursor cursor_;
    AuHeader header_;
    std::uint32_t frames_ = 0;
    SoundCopy sound_;
};

bool AuReader::Fail(std::string_view text) {
    wave_.ReportError(text);
    return false;
}

bool AuReader::ReadHeader() {
    std::uint8_t bytes[kAuHeaderBytes];
    if (!cursor_.ReadAll(bytes) || LoadBig32(bytes) != kAuMagic)
        return Fail("This is no Next/Sun audio file.");
    header_.dataOffset = LoadBig32(bytes + 4);
    header_.dataBytes = LoadBig32(bytes + 8);
    header_.encoding = AuEncoding{LoadBig32(bytes + 12)};
    header_.rate = LoadBig32(bytes + 16);
    header_.channels = LoadBig32(bytes + 20);
    return true;
}

bool AuReader::CheckFormat() {
    if (!IsCompanded() && header_.encoding != AuEncoding::kLinear8 &&
        header_.encoding != AuEncoding::kLinear16)
        return Fail("This Next/Sun encoding cannot be edited: " +
                    std::to_string(static_cast<std::uint32_t>(header_.encoding)));
    if (header_.channels != 1 && header_.channels != 2)
        return Fail("This format cannot be edited: " + std::to_string(header_.channels) +
                    " channels");
    // The bytes per second must fit their field.
    if (header_.rate > std::numeric_limits<std::uint32_t>::max() / 4) header_.rate = 0;
    const unsigned bits = header_.encoding == AuEncoding::kLinear8 ? 8 : 16;
    sound_.format = MakePcmFormat(header_.channels, bits, header_.rate);
    return IsEditable(sound_.format) || Fail(FormatRefusal(sound_.format));
}

bool AuReader::CheckSize() {
    cursor_.Seek(header_.dataOffset);
    if (header_.dataOffset < kAuHeaderBytes || header_.dataOffset > file_.Size())
        return Fail(failure::kReadData);
    std::uint64_t bytes = header_.dataBytes;
    if (bytes == kAuUnknownSize) bytes = cursor_.Remaining();
    if (bytes > cursor_.Remaining()) return Fail(failure::kReadData);
    const std::uint64_t frames = bytes / (StoredBytesPerSample() * header_.channels);
    if (frames * sound_.format.blockAlign > kMaxSoundBytes) return Fail(failure::kMemory);
    frames_ = static_cast<std::uint32_t>(frames);
    return true;
}

bool AuReader::ReadCompanded(const ExpansionTable& table) {
    std::array<std::uint8_t, 1 << 16> codes;
    std::span<std::int16_t> samples = Words(sound_.buffer.Bytes());
    while (!samples.empty()) {
        const std::size_t piece = std::min(samples.size(), codes.size());
        if (!cursor_.ReadAll({codes.data(), piece})) return false;
        for (std::size_t i = 0; i < piece; ++i) samples[i] = table[codes[i]];
        samples = samples.subspan(piece);
    }
    return true;
}

bool AuReader::ReadSamples() {
    if (!sound_.buffer.AllocBuffer(std::size_t{frames_} * sound_.format.blockAlign))
        return Fail(failure::kMemory);
    bool complete = false;
    if (header_.encoding == AuEncoding::kMuLaw) {
        complete = ReadCompanded(MuLawTable());
    } else if (header_.encoding == AuEncoding::kALaw) {
        complete = ReadCompanded(ALawTable());
    } else {
        const bool bytes = header_.encoding == AuEncoding::kLinear8;
        complete = ReadTransformed(cursor_, sound_.buffer.Bytes(),
                                   bytes ? AddHalfRange : SwapBytePairs) == sound_.buffer.Size();
    }
    return complete || Fail(failure::kReadData);
}

bool AuReader::Read(const std::filesystem::path& path) {
    if (!file_.Open(path)) return Fail(failure::kOpenFile);
    if (!ReadHeader() || !CheckFormat() || !CheckSize() || !ReadSamples()) return false;
    wave_.Adopt(std::move(sound_));
    wave_.SetModified(false);
    return true;
}

std::optional<SoundFileInfo> AuReader::Probe(const std::filesystem::path& path) {
    const bool found =
        file_.Open(path) ? ReadHeader() && CheckFormat() && CheckSize() : Fail(failure::kOpenFile);
    if (!found) return std::nullopt;
    return SoundFileInfo{sound_.format, frames_};
}

}  // namespace

std::optional<SoundFileInfo> ProbeAu(const std::filesystem::path& path, CWave& wave) {
    return AuReader(wave).Probe(path);
}

bool ReadAu(const std::filesystem::path& path, CWave& wave) try {
    return AuReader(wave).Read(path);
} catch (const std::bad_alloc&) {
    wave.ReportError(failure::kMemory);
    return false;
}

}  // namespace sonavel
