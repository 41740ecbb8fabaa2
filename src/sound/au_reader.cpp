#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <string>

#include "platform/failure_texts.h"
#include "sound/au_file.h"
#include "sound/au_format.h"
#include "sound/byte_order.h"
#include "sound/companded_samples.h"
#include "sound/format_refusal.h"
#include "sound/sample_transfer.h"
#include "sound/sample_types.h"

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
    AuReader() : cursor_(file_) {}

    Outcome FindSound(const std::filesystem::path& path);
    Outcome ReadSamples();

    SoundFileInfo Info() const { return {format_, frames_}; }
    Sound TakeSound() { return {format_, std::move(samples_)}; }

  private:
    Outcome ReadHeader();
    Outcome CheckFormat();
    Outcome CheckSize();
    bool ReadCompanded(const ExpansionTable& table);

    bool IsCompanded() const {
        return header_.encoding == AuEncoding::kMuLaw || header_.encoding == AuEncoding::kALaw;
    }
    unsigned StoredBytesPerSample() const {
        return header_.encoding == AuEncoding::kLinear16 ? 2 : 1;
    }

    FileSource file_;
    ByteCursor cursor_;
    AuHeader header_;
    std::uint32_t frames_ = 0;
    PcmFormat format_;
    SoundBuffer samples_;
};

Outcome AuReader::ReadHeader() {
    std::uint8_t bytes[kAuHeaderBytes];
    if (!cursor_.ReadAll(bytes) || LoadBig32(bytes) != kAuMagic)
        return Failed("This is no Next/Sun audio file.");
    header_.dataOffset = LoadBig32(bytes + 4);
    header_.dataBytes = LoadBig32(bytes + 8);
    header_.encoding = AuEncoding{LoadBig32(bytes + 12)};
    header_.rate = LoadBig32(bytes + 16);
    header_.channels = LoadBig32(bytes + 20);
    return Done();
}

Outcome AuReader::CheckFormat() {
    if (!IsCompanded() && header_.encoding != AuEncoding::kLinear8 &&
        header_.encoding != AuEncoding::kLinear16)
        return Failed("This Next/Sun encoding cannot be edited: " +
                      std::to_string(static_cast<std::uint32_t>(header_.encoding)));
    if (header_.channels != 1 && header_.channels != 2)
        return Failed("This format cannot be edited: " + std::to_string(header_.channels) +
                      " channels");
    // The bytes per second must fit their field.
    if (header_.rate > std::numeric_limits<std::uint32_t>::max() / 4) header_.rate = 0;
    const unsigned bits = header_.encoding == AuEncoding::kLinear8 ? 8 : 16;
    format_ = MakePcmFormat(header_.channels, bits, header_.rate);
    return IsEditable(format_) ? Done() : Failed(FormatRefusal(format_));
}

Outcome AuReader::CheckSize() {
    cursor_.Seek(header_.dataOffset);
    if (header_.dataOffset < kAuHeaderBytes || header_.dataOffset > file_.Size())
        return Failed(failure::kReadData);
    std::uint64_t bytes = header_.dataBytes;
    if (bytes == kAuUnknownSize) bytes = cursor_.Remaining();
    if (bytes > cursor_.Remaining()) return Failed(failure::kReadData);
    const std::uint64_t frames = bytes / (StoredBytesPerSample() * header_.channels);
    if (frames * format_.blockAlign > kMaxSoundBytes) return Failed(failure::kMemory);
    frames_ = static_cast<std::uint32_t>(frames);
    return Done();
}

bool AuReader::ReadCompanded(const ExpansionTable& table) {
    std::array<std::uint8_t, 1 << 16> codes;
    std::span<WordSample::Stored> samples = SamplesOf<WordSample>(samples_.Bytes());
    while (!samples.empty()) {
        const std::size_t piece = std::min(samples.size(), codes.size());
        if (!cursor_.ReadAll({codes.data(), piece})) return false;
        for (std::size_t i = 0; i < piece; ++i) samples[i] = table[codes[i]];
        samples = samples.subspan(piece);
    }
    return true;
}

Outcome AuReader::ReadSamples() {
    if (!samples_.AllocBuffer(std::size_t{frames_} * format_.blockAlign))
        return Failed(failure::kMemory);
    bool complete = false;
    if (header_.encoding == AuEncoding::kMuLaw) {
        complete = ReadCompanded(MuLawTable());
    } else if (header_.encoding == AuEncoding::kALaw) {
        complete = ReadCompanded(ALawTable());
    } else {
        const bool bytes = header_.encoding == AuEncoding::kLinear8;
        complete = ReadTransformed(cursor_, samples_.Bytes(),
                                   bytes ? AddHalfRange : SwapBytePairs) == samples_.Size();
    }
    return complete ? Done() : Failed(failure::kReadData);
}

// Up to where the samples begin.
Outcome AuReader::FindSound(const std::filesystem::path& path) {
    if (!file_.Open(path)) return Failed(failure::kOpenFile);
    if (Outcome header = ReadHeader(); !header) return header;
    if (Outcome format = CheckFormat(); !format) return format;
    return CheckSize();
}

}  // namespace

Result<SoundFileInfo> ProbeAu(const std::filesystem::path& path) {
    AuReader reader;
    if (Outcome found = reader.FindSound(path); !found) return found;
    return reader.Info();
}

Result<Sound> ReadAu(const std::filesystem::path& path, const TransferHost&) try {
    AuReader reader;
    if (Outcome found = reader.FindSound(path); !found) return found;
    if (Outcome read = reader.ReadSamples(); !read) return read;
    return reader.TakeSound();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
