#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <optional>

#include "platform/failure_texts.h"
#include "sound/aiff_file.h"
#include "sound/byte_order.h"
#include "sound/extended_float.h"
#include "sound/format_refusal.h"
#include "sound/sample_transfer.h"
#include "sound/transfer_progress.h"

namespace sonavel {
namespace {

using ChunkId = std::array<std::uint8_t, 4>;

constexpr std::string_view kCutChunk = "unexpected EOF in AIFF chunk";

bool Is(const ChunkId& id, const char* text) {
    return std::memcmp(id.data(), text, 4) == 0;
}

class AiffReader {
  public:
    explicit AiffReader(const TransferHost& host) : host_(host), cursor_(file_) {}

    Outcome FindSound(const std::filesystem::path& path);
    // Checks what was announced against what can be edited. The sound begins as zeros.
    Outcome Prepare();
    Outcome ReadSamples();

    SoundFileInfo Info() const { return {Format(), common_->frames}; }
    Sound TakeSound() { return {Format(), std::move(samples_)}; }

  private:
    // What the chunk COMM says; a number that cannot be one of the editor's is 0.
    struct Common {
        unsigned channels = 0;
        std::uint32_t frames = 0;
        unsigned bits = 0;
        std::uint32_t rate = 0;
    };

    PcmFormat Format() const {
        return MakePcmFormat(common_->channels, common_->bits, common_->rate);
    }
    void WarnOfEnd(std::string_view text);
    std::optional<std::uint32_t> ReadNumber();
    void SkipOrWarn(std::uint64_t bytes, std::string_view warning);
    Outcome ReadForm();
    Outcome WalkToSound();
    Outcome ReadCommon();
    void SkipUnknown();
    void EnterSound();
    void TellOfSilence();
    bool ReadPresent(std::span<std::uint8_t> bytes, TransferProgress& progress);
    bool FillUp(std::span<std::uint8_t> bytes, TransferProgress& progress);

    const TransferHost& host_;
    FileSource file_;
    ByteCursor cursor_;
    std::optional<Common> common_;
    SoundBuffer samples_;
    bool endTold_ = false;  // the file ends too early, and the person has been told
};

std::optional<std::uint32_t> AiffReader::ReadNumber() {
    std::uint8_t bytes[4];
    if (!cursor_.ReadAll(bytes)) return std::nullopt;
    return LoadBig32(bytes);
}

void AiffReader::WarnOfEnd(std::string_view text) {
    host_.Warn(text);
    endTold_ = true;
}

void AiffReader::SkipOrWarn(std::uint64_t bytes, std::string_view warning) {
    if (bytes > cursor_.Remaining()) WarnOfEnd(warning);
    cursor_.Skip(bytes);
}

Outcome AiffReader::ReadForm() {
    ChunkId id;
    if (!cursor_.ReadAll(id) || !Is(id, "FORM"))
        return Failed("AIFF header does not begin with magic word FORM");
    cursor_.Skip(4);
    if (!cursor_.ReadAll(id) || !Is(id, "AIFF"))
        return Failed("AIFF 'FORM' chunk does specify 'AIFF' as type");
    return Done();
}

// Goes through the chunks up to the sound, or to the end of a file without one. Pad bytes behind
// chunks of odd size are not skipped: intended, files without pad bytes are read.
Outcome AiffReader::WalkToSound() {
    ChunkId id;
    // Zeros are no chunks, and there may be gigabytes of them.
    while (cursor_.ReadAll(id) && id != ChunkId{}) {
        if (Is(id, "SSND")) {
            EnterSound();
            return Done();
        }
        if (!Is(id, "COMM"))
            SkipUnknown();
        else if (Outcome read = ReadCommon(); !read)
            return read;
    }
    WarnOfEnd("Missing SSND chunk in AIFF file");
    // Also where zeros ended the search: nothing that follows is sound.
    cursor_.Seek(file_.Size());
    return Done();
}

Outcome AiffReader::ReadCommon() {
    if (ReadNumber() != 18u) host_.Warn("AIFF COMM chunk has bad size");
    std::uint8_t fields[8];
    ExtendedFloat rate;
    if (!cursor_.ReadAll(fields) || !cursor_.ReadAll(rate))
        return Failed("EOF while reading IEEE extended number");
    Common common{LoadBig16(fields), LoadBig32(fields + 2), LoadBig16(fields + 6), 0};
    const double value = DoubleFromExtended(rate);
    // Both comparisons are false for NaN.
    constexpr std::uint32_t kGreatestRate = std::numeric_limits<std::uint32_t>::max() / 4;
    if (value >= 1 && value <= kGreatestRate) common.rate = static_cast<std::uint32_t>(value);
    common_ = common;
    return Done();
}

void AiffReader::SkipUnknown() {
    if (const std::optional<std::uint32_t> size = ReadNumber())
        SkipOrWarn(*size, kCutChunk);
    else
        WarnOfEnd(kCutChunk);
}

void AiffReader::EnterSound() {
    cursor_.Skip(4);
    const std::optional<std::uint32_t> offset = ReadNumber();
    const std::optional<std::uint32_t> blockSize = ReadNumber();
    if (blockSize.value_or(0) != 0) host_.Warn("AIFF header specifies nonzero blocksize?");
    const std::uint64_t missing = blockSize ? 0 : 1;
    SkipOrWarn(offset.value_or(0) + missing, "unexpected EOF while skipping AIFF offset");
}

Outcome AiffReader::Prepare() {
    const PcmFormat format = Format();
    if (!IsEditable(format)) return Failed(FormatRefusal(format));
    const std::uint64_t bytes = std::uint64_t{common_->frames} * format.blockAlign;
    if (bytes > kMaxSoundBytes || !samples_.AllocZeros(bytes)) return Failed(failure::kMemory);
    return Done();
}

void AiffReader::TellOfSilence() {
    host_.Note("The file ends before its sound does; the rest is silence.");
    if (!endTold_) WarnOfEnd(kCutChunk);
}

bool AiffReader::ReadPresent(std::span<std::uint8_t> bytes, TransferProgress& progress) {
    // 128 - b for a signed byte b turns the sign round against what the writer does: intended, both
    // directions are kept as they are.
    const ByteTransform transform = common_->bits == 8 ? SubtractFromHalfRange : SwapBytePairs;
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t piece = std::min(bytes.size() - done, kTransferPieceBytes);
        if (ReadTransformed(cursor_, bytes.subspan(done, piece), transform) < piece && !endTold_)
            TellOfSilence();
        done += piece;
        if (!progress.Advance(done)) return false;
    }
    return true;
}

// Fills the end of an 8-bit sound. The zeros of a 16-bit sound are silence as they are, and cost no
// memory as long as nobody touches them.
bool AiffReader::FillUp(std::span<std::uint8_t> bytes, TransferProgress& progress) {
    if (common_->bits != 8) return true;
    const std::size_t before = samples_.Size() - bytes.size();
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t piece = std::min(bytes.size() - done, kTransferPieceBytes);
        std::memset(&bytes[done], 128, piece);
        done += piece;
        if (!progress.Advance(before + done)) return false;
    }
    return true;
}

Outcome AiffReader::ReadSamples() {
    const std::span<std::uint8_t> bytes = samples_.Bytes();
    const auto present = std::min<std::uint64_t>(bytes.size(), cursor_.Remaining());
    if (present < bytes.size()) TellOfSilence();
    TransferProgress progress(host_, "Read sound file", bytes.size());
    // The half of a word that the file ends with is read with the half that it lacks.
    const auto read = std::min<std::uint64_t>(bytes.size(), present + present % 2);
    if (ReadPresent(bytes.first(read), progress) && FillUp(bytes.subspan(read), progress))
        return Done();
    return Cancelled();
}

Outcome AiffReader::FindSound(const std::filesystem::path& path) {
    if (!file_.Open(path)) return Failed(failure::kOpenFile);
    if (Outcome form = ReadForm(); !form) return form;
    if (Outcome walked = WalkToSound(); !walked) return walked;
    return common_ ? Done() : Failed("Missing COMM chunk in AIFF file");
}

}  // namespace

Result<SoundFileInfo> ProbeAiff(const std::filesystem::path& path) {
    const TransferHost nobody;
    AiffReader reader(nobody);
    if (Outcome found = reader.FindSound(path); !found) return found;
    return reader.Info();
}

Result<Sound> ReadAiff(const std::filesystem::path& path, const TransferHost& host) try {
    AiffReader reader(host);
    if (Outcome found = reader.FindSound(path); !found) return found;
    if (Outcome prepared = reader.Prepare(); !prepared) return prepared;
    if (Outcome read = reader.ReadSamples(); !read) return read;
    return reader.TakeSound();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
