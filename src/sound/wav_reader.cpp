#include <algorithm>
#include <array>
#include <new>
#include <string>

#include "sound/byte_source.h"
#include "sound/failure_texts.h"
#include "sound/format_refusal.h"
#include "sound/riff.h"
#include "sound/transfer_progress.h"
#include "sound/wav_file.h"
#include "sound/wav_format.h"
#include "sound/wav_markers.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kUnknownSize = 0xFFFFFFFF;  // the data go up to the end of the file

// One reading of one file. Each step returns false after it has reported its failure.
class WavReader {
  public:
    explicit WavReader(CWave& wave) : wave_(wave), riff_(file_) {}

    bool FindFormatAndData(const std::filesystem::path& path);
    bool CheckEditable();
    bool ReadSamples();
    void ReadMarkerChunks();

    WavInfo Info() const;
    SoundCopy TakeSound() { return std::move(sound_); }

  private:
    bool Fail(std::string_view text);
    bool FailQuietly(std::string_view text);
    bool FindFormat();
    bool ReadFormat(const RiffChunk& chunk);
    bool Transfer(TransferProgress& progress);

    CWave& wave_;
    FileSource file_;
    RiffReader riff_;
    RiffChunk form_;
    RiffChunk data_;
    SoundCopy sound_;
};

bool WavReader::Fail(std::string_view text) {
    wave_.ReportError(text);
    return false;
}

bool WavReader::FailQuietly(std::string_view text) {
    wave_.ReportInStatus(text);
    return false;
}

bool WavReader::FindFormatAndData(const std::filesystem::path& path) {
    if (!file_.Open(path)) return Fail(failure::kOpenFile);
    if (!FindFormat()) return false;
    const std::optional<RiffChunk> data = riff_.Descend(kDataChunk, form_);
    if (!data) return FailQuietly("The file has no data chunk.");
    data_ = *data;
    // What writes into a pipe cannot know the size when it writes the header.
    if (data_.sizeBytes == kUnknownSize)
        data_.sizeBytes = static_cast<std::uint32_t>(riff_.Cursor().Remaining());
    return true;
}

bool WavReader::FindFormat() {
    const std::optional<RiffChunk> form = riff_.DescendForm(kRiffChunk, kWaveForm);
    if (!form) return FailQuietly("The file has no RIFF chunk of the form WAVE.");
    form_ = *form;
    const std::optional<RiffChunk> format = riff_.Descend(kFormatChunk, form_);
    if (!format) return FailQuietly("The file has no fmt chunk.");
    if (!ReadFormat(*format)) return false;
    riff_.Ascend(*format);
    return true;
}

bool WavReader::ReadFormat(const RiffChunk& chunk) {
    std::array<std::uint8_t, kWavExtensibleFormatBytes> bytes;
    const std::size_t wanted = std::min<std::size_t>(chunk.sizeBytes, bytes.size());
    const std::span there(bytes.data(), riff_.Cursor().Read({bytes.data(), wanted}));
    if (there.size() < kLeastWavFormatBytes) return Fail("Wave Format Read Failure.");
    sound_.format = ParseWavFormat(there);
    return sound_.format.formatTag != kPcmFormatTag || there.size() >= kWavPcmFormatBytes ||
           Fail("Data Read Failure.");
}

WavInfo WavReader::Info() const {
    const std::uint16_t blockAlign = sound_.format.blockAlign;
    return {sound_.format, data_.sizeBytes, blockAlign ? data_.sizeBytes / blockAlign : 0};
}

bool WavReader::CheckEditable() {
    if (IsEditable(sound_.format)) return true;
    const std::string text = FormatRefusal(sound_.format);
    return sound_.format.formatTag == kPcmFormatTag ? Fail(text) : FailQuietly(text);
}

bool WavReader::ReadSamples() {
    if (data_.sizeBytes > kMaxSoundBytes) return Fail(failure::kMemory);
    // Looked at before the memory is taken, so that a size that lies costs nothing.
    const bool complete = data_.sizeBytes <= riff_.Cursor().Remaining();
    if (complete && !sound_.buffer.AllocBuffer(data_.sizeBytes)) return Fail(failure::kMemory);
    TransferProgress progress(wave_.Progress(), "Read sound file", data_.sizeBytes);
    if (complete) return Transfer(progress);
    progress.Finish();
    return Fail(failure::kReadData);
}

bool WavReader::Transfer(TransferProgress& progress) {
    const std::span<std::uint8_t> bytes = sound_.buffer.Bytes();
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t piece = std::min(bytes.size() - done, kTransferPieceBytes);
        if (!riff_.Cursor().ReadAll(bytes.subspan(done, piece))) {
            progress.Finish();
            return Fail(failure::kReadData);
        }
        done += piece;
        if (!progress.Advance(done)) return FailQuietly(failure::kCancelled);
    }
    return true;
}

// Markers that cannot be read cost no sound: those read so far stay.
void WavReader::ReadMarkerChunks() {
    riff_.Ascend(data_);
    if (!ReadMarkers(riff_, form_, sound_.markers)) wave_.ReportError("마커 읽기 실패...");
}

}  // namespace

std::optional<WavInfo> ProbeWav(const std::filesystem::path& path, CWave& wave) {
    WavReader reader(wave);
    if (!reader.FindFormatAndData(path)) return std::nullopt;
    return reader.Info();
}

bool ReadWav(const std::filesystem::path& path, CWave& wave) try {
    WavReader reader(wave);
    if (!reader.FindFormatAndData(path) || !reader.CheckEditable() || !reader.ReadSamples())
        return false;
    reader.ReadMarkerChunks();
    wave.Adopt(reader.TakeSound());
    wave.SetModified(false);
    return true;
} catch (const std::bad_alloc&) {
    wave.ReportError(failure::kMemory);
    return false;
}

}  // namespace sonavel
