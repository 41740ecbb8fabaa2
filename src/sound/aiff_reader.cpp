#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <optional>

#include "sound/aiff_file.h"
#include "sound/byte_order.h"
#include "sound/extended_float.h"
#include "sound/failure_texts.h"
#include "sound/format_refusal.h"
#include "sound/sample_transfer.h"

namespace sonavel {
namespace {

using ChunkId = std::array<std::uint8_t, 4>;

// Silence that may stand for sound which the file lacks: this much in any file, in larger ones a
// multiple of the sound that is there. More of it is a header that lies.
constexpr std::uint64_t kMostSilenceBytes = std::uint64_t{1} << 20;
constexpr std::uint64_t kMostSilenceFactor = 16;

bool Is(const ChunkId& id, const char* text) {
    return std::memcmp(id.data(), text, 4) == 0;
}

class AiffReader {
  public:
    explicit AiffReader(CWave& wave) : wave_(wave), cursor_(file_) {}

    bool Read(const std::filesystem::path& path);
    std::optional<SoundFileInfo> Probe(const std::filesystem::path& path);

  private:
    // What the chunk COMM says; a number that cannot be one of the editor's is 0.
    struct Common {
        unsigned channels = 0;
        std::uint32_t frames = 0;
        unsigned bits = 0;
        std::uint32_t rate = 0;
    };

    bool Fail(std::string_view text);
    void Warn(std::string_view text) { wave_.ReportError(text); }
    std::optional<std::uint32_t> ReadNumber();
    void SkipOrWarn(std::uint64_t bytes, std::string_view warning);
    bool ReadForm();
    bool FindSound();
    bool ReadCommon();
    void SkipUnknown();
    void EnterSound();
    bool Prepare();
    void ReadSamples();

    CWave& wave_;
    FileSource file_;
    ByteCursor cursor_;
    std::optional<Common> common_;
    SoundCopy sound_;
};

bool AiffReader::Fail(std::string_view text) {
    wave_.ReportError(text);
    return false;
}

std::optional<std::uint32_t> AiffReader::ReadNumber() {
    std::uint8_t bytes[4];
    if (!cursor_.ReadAll(bytes)) return std::nullopt;
    return LoadBig32(bytes);
}

void AiffReader::SkipOrWarn(std::uint64_t bytes, std::string_view warning) {
    if (bytes > cursor_.Remaining()) Warn(warning);
    cursor_.Skip(bytes);
}

bool AiffReader::ReadForm() {
    ChunkId id;
    if (!cursor_.ReadAll(id) || !Is(id, "FORM"))
        return Fail("AIFF header does not begin with magic word FORM");
    cursor_.Skip(4);
    if (!cursor_.ReadAll(id) || !Is(id, "AIFF"))
        return Fail("AIFF 'FORM' chunk does specify 'AIFF' as type");
    return true;
}

// Goes through the chunks up to the sound, or to the end of a file without one. Pad bytes behind
// chunks of odd size are not skipped: intended, files read as they always did.
bool AiffReader::FindSound() {
    ChunkId id;
    while (cursor_.ReadAll(id)) {
        if (Is(id, "SSND")) {
            EnterSound();
            return true;
        }
        if (!Is(id, "COMM"))
            SkipUnknown();
        else if (!ReadCommon())
            return false;
    }
    Warn("Missing SSND chunk in AIFF file");
    return true;
}

bool AiffReader::ReadCommon() {
    if (ReadNumber() != 18u) Warn("AIFF COMM chunk has bad size");
    std::uint8_t fields[8];
    ExtendedFloat rate;
    if (!cursor_.ReadAll(fields) || !cursor_.ReadAll(rate))
        return Fail("EOF while reading IEEE extended number");
    Common common{LoadBig16(fields), LoadBig32(fields + 2), LoadBig16(fields + 6), 0};
    const double value = DoubleFromExtended(rate);
    // Both comparisons are false for NaN.
    constexpr std::uint32_t kGreatestRate = std::numeric_limits<std::uint32_t>::max() / 4;
    if (value >= 1 && value <= kGreatestRate) common.rate = static_cast<std::uint32_t>(value);
    common_ = common;
    return true;
}

void AiffReader::SkipUnknown() {
    constexpr std::string_view kWarning = "unexpected EOF in AIFF chunk";
    if (const std::optional<std::uint32_t> size = ReadNumber())
        SkipOrWarn(*size, kWarning);
    else
        Warn(kWarning);
}

void AiffReader::EnterSound() {
    cursor_.Skip(4);
    const std::optional<std::uint32_t> offset = ReadNumber();
    const std::optional<std::uint32_t> blockSize = ReadNumber();
    if (blockSize.value_or(0) != 0) Warn("AIFF header specifies nonzero blocksize?");
    const std::uint64_t missing = blockSize ? 0 : 1;
    SkipOrWarn(offset.value_or(0) + missing, "unexpected EOF while skipping AIFF offset");
}

// Checks what was announced against what can be edited and against what is there.
bool AiffReader::Prepare() {
    if (!common_) return Fail("Missing COMM chunk in AIFF file");
    sound_.format = MakePcmFormat(common_->channels, common_->bits, common_->rate);
    if (!IsEditable(sound_.format)) return Fail(FormatRefusal(sound_.format));
    const std::uint64_t bytes = std::uint64_t{common_->frames} * sound_.format.blockAlign;
    if (bytes > kMaxSoundBytes) return Fail(failure::kMemory);
    const std::uint64_t present = std::min(bytes, cursor_.Remaining());
    if (bytes - present > std::max(kMostSilenceBytes, present * kMostSilenceFactor))
        return Fail("unexpected EOF in AIFF chunk");
    return sound_.buffer.AllocBuffer(bytes) || Fail(failure::kMemory);
}

void AiffReader::ReadSamples() {
    // 128 - b for a signed byte b turns the sign round against what the writer does: intended, both
    // directions are kept as they are.
    const ByteTransform transform = common_->bits == 8 ? SubtractFromHalfRange : SwapBytePairs;
    if (ReadTransformed(cursor_, sound_.buffer.Bytes(), transform) < sound_.buffer.Size())
        wave_.Prompts().ShowStatus("The file ends before its sound does; the rest is silence.");
}

bool AiffReader::Read(const std::filesystem::path& path) {
    if (!file_.Open(path)) return Fail(failure::kOpenFile);
    if (!ReadForm() || !FindSound() || !Prepare()) return false;
    ReadSamples();
    wave_.Adopt(std::move(sound_));
    wave_.SetModified(false);
    return true;
}

std::optional<SoundFileInfo> AiffReader::Probe(const std::filesystem::path& path) {
    const bool found = file_.Open(path) ? ReadForm() && FindSound() : Fail(failure::kOpenFile);
    if (!found || (!common_ && !Fail("Missing COMM chunk in AIFF file"))) return std::nullopt;
    return SoundFileInfo{MakePcmFormat(common_->channels, common_->bits, common_->rate),
                         common_->frames};
}

}  // namespace

std::optional<SoundFileInfo> ProbeAiff(const std::filesystem::path& path, CWave& wave) {
    return AiffReader(wave).Probe(path);
}

bool ReadAiff(const std::filesystem::path& path, CWave& wave) try {
    return AiffReader(wave).Read(path);
} catch (const std::bad_alloc&) {
    wave.ReportError(failure::kMemory);
    return false;
}

}  // namespace sonavel
